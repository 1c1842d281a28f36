// SPDX-License-Identifier: GPL-3.0-or-later
// Digital radio status, events and time.
#include "frontend/reports.h"
#include "tests/support.h"

namespace {

// Bits of reply bytes 4 and 5 in the order of the report's lines.
using Bits = std::vector<std::pair<size_t, size_t>>;

class Flags : public Tuned_to_33 {
 protected:
  void expect_lines(const char* command, const Bits& bits, const std::function<void()>& report) {
    size_t line = 0;
    for (const auto& [byte, bit] : bits) {
      board.clear_faults();
      Byte_string reply = zeros(19);
      reply[byte] = static_cast<uint8_t>(1 << bit);
      board.fault({.command = command, .reply = reply});
      EXPECT_EQ(lines_not_zero(output_of(report)), std::vector<size_t>{++line}) << command;
    }
  }
};

TEST_F(Flags, ShowInTheirLineAlone) {
  expect_lines("DAB_DIGRAD_STATUS", {{0, 4}, {0, 3}, {0, 2}, {0, 1}, {0, 0}, {1, 4}, {1, 3}, {1, 2}, {1, 0}},
               [] { print_digrad_status(); });
  expect_lines("DAB_GET_EVENT_STATUS", {{0, 7}, {0, 6}, {0, 3}, {0, 1}, {0, 0}, {1, 1}, {1, 0}},
               [] { print_event_status(); });
}

TEST_F(Tuned_to_33, TimeSaysHowLongItsLineIsAndCanBeCleared) {
  board.fault({.command = "DAB_GET_TIME", .reply = Byte_string{0xE0, 0x07, 3, 7, 9, 5, 0}});
  Si468x_time time;
  EXPECT_EQ(time.get_ensembletime(), 0);
  EXPECT_EQ(output_of([&] { EXPECT_EQ(time.print_data(), 16); }), "2016-3-7T9:5:0Z\n");
  time.clean();
  EXPECT_EQ(output_of([&] { time.print_data(); }), "0-0-0T0:0:0Z\n");
}

}  // namespace
