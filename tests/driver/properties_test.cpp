// SPDX-License-Identifier: GPL-3.0-or-later
#include "frontend/audio.h"
#include "frontend/reports.h"
#include "tests/support.h"

namespace {

using Property = Dab_running;

TEST_F(Property, EachFailureOfAWriteHasItsCode) {
  const uint16_t property[2] = {Si468x_audio_volume, 41};
  const struct {
    sim::Fault fault;
    int16_t result;
    uint32_t code;
  } cases[] = {
      {{.command = "SET_PROPERTY", .property_not_kept = true}, -6, 218},
      {{.command = "SET_PROPERTY", .status_bits = {0x40}}, -2, 18},
      {{.command = "GET_PROPERTY", .status_bits = {0, 0, 0, 0x02}}, -1, 118},
      {{.command = "GET_PROPERTY", .reply = Byte_string{41, 1}}, -6, 218},
  };
  for (const auto& c : cases) {
    board.clear_faults();
    board.fault(c.fault);
    EXPECT_EQ(Si468x_set_property(property), c.result);
    EXPECT_EQ(Si468x_ErrorCode, c.code);
  }
}

TEST_F(Property, RefusedWritesOfTheFrontEnd) {
  board.fault({.command = "SET_PROPERTY", .status_bits = {0x40}});
  EXPECT_EQ(set_properties_output(1), -1);
  EXPECT_EQ(get_rds_status(), -2);
  EXPECT_EQ(output_of([] { EXPECT_EQ(set_volume(41), 0); }), "Setting volume to 41\n\n");
}

TEST_F(Property, IsReadAsWrittenAndUnchangedByAFailedRead) {
  const uint16_t written[2] = {Si468x_audio_volume, 41};
  EXPECT_EQ(Si468x_set_property(written), 0);
  uint16_t read[2] = {Si468x_audio_volume, 0};
  EXPECT_EQ(Si468x_get_property(read), 0);
  EXPECT_EQ(read[1], 41);
  uint16_t unknown[2] = {0x7777, 0xABCD};
  EXPECT_EQ(Si468x_get_property(unknown), -2);
  EXPECT_EQ(Si468x_ErrorCode, 17U);
  EXPECT_EQ(unknown[1], 0xABCD);
}

}  // namespace
