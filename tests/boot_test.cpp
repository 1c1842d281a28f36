// SPDX-License-Identifier: GPL-3.0-or-later
// The boot operation: its order, waits, pins and texts.
#include "frontend/boot.h"

#include "firmware/firmware.h"
#include "tests/support.h"

namespace {

// The image bytes that went out in a row of load frames.
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

class Boot : public Board_test {
 protected:
  Boot() { board.add_log(story); }
  ~Boot() override { board.remove_log(story); }
  std::string boot(uint8_t dab, int16_t result) {
    return output_of([&] { EXPECT_EQ(power_up_and_load_fw(dab), result); });
  }
  // What happened to the chip, without the reads; repeated downloads are one step. Pin 8 stands for the link's five.
  std::vector<std::string> steps() const {
    std::vector<std::string> steps;
    for (const auto& line : story.lines)
      if (line != "RD_REPLY" && (!line.starts_with("pin") || line.starts_with("pin 23") || line.starts_with("pin 8")) &&
          (steps.empty() || steps.back() != line))
        steps.push_back(line);
    return steps;
  }
  Story story;
};

TEST_F(Boot, DabImageGoesOutWholeAndNotOneByteMore) {
  EXPECT_EQ(boot(1, 1), "Boot up successful\n\n");
  const Frames& sent = board.sent();
  ASSERT_EQ(sent.size(), 270U);
  EXPECT_EQ(sent[0].size(), 16U);
  EXPECT_EQ(sent[3], (Byte_string{0x06, 0x00}));
  EXPECT_EQ(image_in(sent, 5, 2), bytes_of(fw_rom00_patch016bin));
  EXPECT_EQ(sent[9], (Byte_string{0x06, 0x00}));
  EXPECT_EQ(image_in(sent, 11, 128), bytes_of(fw_dab_radio_5_0_5bin));
  EXPECT_EQ(sent[267], (Byte_string{0x07, 0x00}));
  EXPECT_EQ(board.totals().bytes, 528734U);
  EXPECT_EQ(board.totals().waited, 400ms);
  EXPECT_EQ(board.state().mode, sim::Mode::dab);
  EXPECT_EQ(steps(), (std::vector<std::string>{"pin 8 alternate 0", "pin 23 low", "wait 200 ms", "pin 23 high",
                                               "wait 50 ms", "POWER_UP", "LOAD_INIT", "HOST_LOAD", "wait 50 ms",
                                               "LOAD_INIT", "HOST_LOAD", "wait 100 ms", "BOOT"}));
}

TEST_F(Boot, FmImageFollowsTheSamePatch) {
  EXPECT_EQ(boot(0, 1), "Boot up successful\n\n");
  EXPECT_EQ(image_in(board.sent(), 5, 2), bytes_of(fw_rom00_patch016bin));
  EXPECT_EQ(image_in(board.sent(), 11, 130), bytes_of(fw_fmhd_radio_5_0_4bin));
  EXPECT_EQ(board.totals().transactions, 274U);
  EXPECT_EQ(board.state().mode, sim::Mode::fm);
}

TEST_F(Boot, FailedPowerUpSendsNoImageAndLeavesTheLinkRunning) {
  board.fault({.command = "POWER_UP", .status_bits = {0x40}});
  EXPECT_EQ(boot(1, 0), "Could not power up the Si468x\n");
  EXPECT_EQ(board.sent().size(), 2U);
  EXPECT_TRUE(board.spi_running());
  EXPECT_TRUE(board.pin(23));
}

TEST_F(Boot, FailedPatchHoldsTheChipInResetBeforeItSpeaks) {
  board.fault({.command = "HOST_LOAD", .occurrence = 2, .status_bits = {0, 0, 0, 0x04}});
  EXPECT_EQ(boot(1, 0), "Patch not transmitted successfully\n\n");
  EXPECT_EQ(steps(), (std::vector<std::string>{"pin 8 alternate 0", "pin 23 low", "wait 200 ms", "pin 23 high",
                                               "wait 50 ms", "POWER_UP", "LOAD_INIT", "HOST_LOAD", "pin 23 low",
                                               "pin 8 input", "wait 2000 ms"}));
  EXPECT_EQ(story.printed, 0);
  EXPECT_FALSE(board.spi_running());
}

TEST_F(Boot, FailedImageSpeaksBeforeItHoldsTheChipInReset) {
  board.fault({.command = "HOST_LOAD", .occurrence = 3, .cts_never = true});
  EXPECT_EQ(boot(0, 0), "Firmware not transmitted successfully\n\n");
  const std::vector<std::string> all = steps();
  EXPECT_EQ(std::vector<std::string>(all.end() - 3, all.end()),
            (std::vector<std::string>{"pin 23 low", "pin 8 input", "wait 2000 ms"}));
  EXPECT_GT(story.printed, 0);
  EXPECT_EQ(board.totals().commands.at("HOST_LOAD"), 3U);
  EXPECT_FALSE(board.spi_running());
}

TEST_F(Boot, ChipThatDoesNotStartTheApplicationIsReported) {
  board.fault({.command = "BOOT", .status = {{0x80, 0, 0, 0x80}}});
  EXPECT_EQ(boot(1, 0), "Boot up failed\n\n");
  EXPECT_EQ(Si468x_ErrorCode, 110U);
  EXPECT_TRUE(board.spi_running());
}

TEST_F(Boot, BusyChipIsAwaited) {
  board.air().always_ready = false;
  EXPECT_EQ(boot(1, 1), "Boot up successful\n\n");
  EXPECT_EQ(board.refusals(), std::vector<std::string>{});
}

}  // namespace
