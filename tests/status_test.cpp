// SPDX-License-Identifier: GPL-3.0-or-later
// Digital radio status, events and time: every field from its bits, every report byte for byte.
#include <unistd.h>

#include "frontend/reports.h"
#include "tests/support.h"

namespace {

using Status = Tuned_to_33;

// Bytes 4 and 5, then every measure with a value of its own; 239200 kHz.
Byte_string digrad_reply(uint8_t interrupts, uint8_t states) {
  return Byte_string{interrupts, states} + bytes("F6 81 63 15 03 04 60 A6 03 00 21 FE 9C 01 AC 02 07");
}

// Bits of reply bytes 4 and 5 in the order of the report's lines.
using Bits = std::vector<std::pair<size_t, size_t>>;

class Flags : public Status {
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

TEST_F(Status, DigradReports) {
  board.fault({.command = "DAB_DIGRAD_STATUS", .reply = digrad_reply(0x06, 0x15)});
  EXPECT_EQ(output_of([] { print_digrad_status(); }), expected("digrad_status.txt"));
  EXPECT_EQ(board.sent(), (Frames{{0xB2, 0x00}, zeros(7), zeros(24)}));
  EXPECT_EQ(output_of([] { print_digrad_status_json(); }), expected("digrad_status.json"));
}

TEST_F(Status, JsonReportIsOutBeforeTheNextActionStarts) {
  output_of([] {
    print_digrad_status_json();
    EXPECT_GT(lseek(STDOUT_FILENO, 0, SEEK_CUR), 0);
  });
}

TEST_F(Status, FailedDigradReadPrintsZeros) {
  board.fault({.command = "DAB_DIGRAD_STATUS", .status_bits = {0x40}});
  EXPECT_EQ(output_of([] { print_digrad_status_json(); }), expected("digrad_status_zero.json"));
  EXPECT_EQ(Si468x_ErrorCode, 22U);
}

TEST_F(Status, EventReport) {
  board.fault({.command = "DAB_GET_EVENT_STATUS", .reply = Byte_string{0x89, 0x02, 0x34, 0x12}});
  EXPECT_EQ(output_of([] { print_event_status(); }), expected("event_status.txt"));
  EXPECT_EQ(board.sent(), (Frames{{0xB3, 0x01}, zeros(7), zeros(9)}));
}

TEST_F(Dab_running, EventsShowOnceAndAreAcknowledged) {
  Si468x_DAB_tune_freq(33);
  board.wait(2s);
  Si468x_DAB_event_status events;
  EXPECT_EQ(events.get_new_status(), 0);
  EXPECT_EQ(events.new_service_list, 1);
  EXPECT_EQ(events.get_new_status(), 0);
  EXPECT_EQ(events.new_service_list, 0);
  EXPECT_EQ(events.service_list_available, 1);
}

TEST_F(Status, Time) {
  board.fault({.command = "DAB_GET_TIME", .reply = Byte_string{0xE0, 0x07, 3, 7, 9, 5, 0}});
  EXPECT_EQ(output_of([] { print_ensembletime(); }), "2016-3-7T9:5:0Z\n");
  EXPECT_EQ(output_of([] { print_ensembletime_json(); }),
            "\"ensembleTime\": {\n\"year\": 2016,\n\"month\": 3,\n\"day\": 7,\n\"hour\": 9,\n\"minute\": 5,\n"
            "\"second\": 0\n}\n");
  EXPECT_EQ(board.sent()[0], (Byte_string{0xBC, 0x01}));
  EXPECT_EQ(board.sent()[2], zeros(12));
  Si468x_time time;
  EXPECT_EQ(time.get_ensembletime(), 0);
  EXPECT_EQ(output_of([&] { EXPECT_EQ(time.print_data(), 16); }), "2016-3-7T9:5:0Z\n");
  time.clean();
  EXPECT_EQ(output_of([&] { time.print_data(); }), "0-0-0T0:0:0Z\n");
}

TEST_F(Dab_running, TimeThatCannotBeReadPrintsAsZeros) {
  EXPECT_EQ(output_of([] { print_ensembletime(); }), "0-0-0T0:0:0Z\n");  // no ensemble, no time
  EXPECT_EQ(Si468x_ErrorCode, 35U);
  EXPECT_EQ(output_of([] { print_ensembletime_json(); }),
            "\"ensembleTime\": {\n\"year\": 0,\n\"month\": 0,\n\"day\": 0,\n\"hour\": 0,\n\"minute\": 0,\n"
            "\"second\": 0\n}\n");
}

}  // namespace
