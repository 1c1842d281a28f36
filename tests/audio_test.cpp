// SPDX-License-Identifier: GPL-3.0-or-later
// Properties, and what sets the audio with them.
#include "frontend/audio.h"

#include "tests/support.h"

namespace {

using Audio = Dab_running;

// The transactions that write and verify one property.
Frames writes(std::initializer_list<std::array<uint16_t, 2>> properties) {
  Frames frames;
  for (const auto& [id, value] : properties) {
    const auto low = static_cast<uint8_t>(id);
    const auto high = static_cast<uint8_t>(id >> 8);
    frames.push_back({0x13, 0x00, low, high, static_cast<uint8_t>(value), static_cast<uint8_t>(value >> 8)});
    frames.push_back(zeros(7));
    frames.push_back({0x14, 0x01, low, high});
    frames.push_back(zeros(7));
    frames.push_back(zeros(7));
  }
  return frames;
}

TEST_F(Audio, PropertyIsWrittenReadBackAndCompared) {
  uint16_t property[2] = {0x0202, 0x1234};
  EXPECT_EQ(Si468x_set_property(property), 0);
  EXPECT_EQ(Si468x_set_property(property), 0);  // no memory of it on the host
  EXPECT_EQ(board.sent(), writes({{0x0202, 0x1234}, {0x0202, 0x1234}}));

  uint16_t read[2] = {0x0202, 0};
  EXPECT_EQ(Si468x_get_property(read), 0);
  EXPECT_EQ(read[1], 0x1234);
}

TEST_F(Audio, EachWayAPropertyFailsHasItsCode) {
  uint16_t property[2] = {0x0300, 41};
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
  uint16_t unknown[2] = {0x7777, 0xABCD};
  EXPECT_EQ(Si468x_get_property(unknown), -2);
  EXPECT_EQ(Si468x_ErrorCode, 17U);
  EXPECT_EQ(unknown[1], 0xABCD);
}

TEST_F(Audio, VolumeIsSaidAndSet) {
  EXPECT_EQ(output_of([] { EXPECT_EQ(set_volume(63), 0); }), "Setting volume to 63\n\n");
  EXPECT_EQ(output_of([] { EXPECT_EQ(set_volume(0), 0); }), "Setting volume to 0\n\n");
  EXPECT_EQ(board.sent(), writes({{0x0300, 63}, {0x0300, 0}}));
  board.clear_record();
  for (const uint32_t level : {64U, 0xFFFFFFFFU})
    EXPECT_EQ(output_of([&] { EXPECT_EQ(set_volume(level), 0); }),
              "Illegal value for volume. Volume must be an integer between 0 and 63\n\n");
  EXPECT_EQ(board.sent(), Frames{});
}

TEST_F(Audio, OutputIsRoutedInThreeWrites) {
  const std::string text = output_of([] {
    EXPECT_EQ(set_properties_output(0), 0);
    EXPECT_EQ(set_properties_output(200), 0);
  });
  EXPECT_EQ(text, "");
  EXPECT_EQ(board.sent(),
            writes({{0x0200, 0x8000}, {0x0800, 1}, {0x0202, 0x1000}, {0x0200, 0x8000}, {0x0800, 2}, {0x0202, 0x1000}}));
}

TEST_F(Audio, RoutingStopsAtTheFirstFailure) {
  board.fault({.command = "SET_PROPERTY", .occurrence = 2, .property_not_kept = true});
  EXPECT_EQ(set_properties_output(1), -1);
  EXPECT_EQ(board.sent(), writes({{0x0200, 0x8000}, {0x0800, 2}}));
}

}  // namespace
