// SPDX-License-Identifier: GPL-3.0-or-later
// The images sent by a boot.
#include "frontend/boot.h"

#include "firmware/firmware.h"
#include "tests/support.h"

namespace {

// The image bytes of a row of load frames.
Byte_string image_in(const Frames& frames, size_t first, size_t count) {
  Byte_string image;
  for (size_t i = first; i < first + 2 * count; i += 2) {
    EXPECT_EQ(Byte_string(frames[i].begin(), frames[i].begin() + 4), (Byte_string{0x04, 0, 0, 0}));
    image.insert(image.end(), frames[i].begin() + 4, frames[i].end());
    EXPECT_EQ(frames[i + 1], zeros(7));
  }
  return image;
}

template <size_t length>
Byte_string bytes_of(const uint8_t (&image)[length]) {
  return {image, image + length};
}

std::string boot(uint8_t dab) {
  return output_of([&] { EXPECT_EQ(power_up_and_load_fw(dab), 1); });
}

TEST_F(Board_test, DabImageGoesOutWholeAndNotOneByteMore) {
  EXPECT_EQ(boot(1), "Boot up successful\n\n");
  EXPECT_EQ(image_in(board.sent(), 5, 2), bytes_of(fw_rom00_patch016bin));
  EXPECT_EQ(image_in(board.sent(), 11, 128), bytes_of(fw_dab_radio_5_0_5bin));
  EXPECT_EQ(board.state().chip.mode, sim::Mode::dab);
}

TEST_F(Board_test, FmImageFollowsTheSamePatch) {
  EXPECT_EQ(boot(0), "Boot up successful\n\n");
  EXPECT_EQ(image_in(board.sent(), 5, 2), bytes_of(fw_rom00_patch016bin));
  EXPECT_EQ(image_in(board.sent(), 11, 130), bytes_of(fw_fmhd_radio_5_0_4bin));
  EXPECT_EQ(board.state().chip.mode, sim::Mode::fm);
}

}  // namespace
