// SPDX-License-Identifier: GPL-3.0-or-later
#include "frontend/reports.h"
#include "tests/support.h"

namespace {

using Chip = Dab_running;

TEST_F(Chip, StatusBitsAreReadWithoutACommand) {
  const struct {
    std::array<uint8_t, 4> status;
    uint8_t Si468x_chip_info::*field;
    uint8_t value;
  } cases[] = {
      {{0x80, 0, 0, 0}, &Si468x_chip_info::clear_to_send, 1},
      {{0x40, 0, 0, 0}, &Si468x_chip_info::command_error, 1},
      {{0x20, 0, 0, 0}, &Si468x_chip_info::digital_radio_link_change_int, 1},
      {{0x10, 0, 0, 0}, &Si468x_chip_info::data_component_int, 1},
      {{0x01, 0, 0, 0}, &Si468x_chip_info::seek_tune_complete, 1},
      {{0, 0x20, 0, 0}, &Si468x_chip_info::digital_radio_event_change_int, 1},
      {{0, 0, 0, 0x40}, &Si468x_chip_info::powerup_state, 1},
      {{0, 0, 0, 0xC0}, &Si468x_chip_info::powerup_state, 3},
      {{0, 0, 0, 0x10}, &Si468x_chip_info::dsp_frame_overrun, 1},
      {{0, 0, 0, 0x08}, &Si468x_chip_info::read_reply_data_dropped, 1},
      {{0, 0, 0, 0x04}, &Si468x_chip_info::command_write_data_dropped, 1},
      {{0, 0, 0, 0x02}, &Si468x_chip_info::arbiter_error, 1},
      {{0, 0, 0, 0x01}, &Si468x_chip_info::non_recoverable_error, 1},
  };
  for (const auto& c : cases) {
    board.clear_faults();
    board.clear_record();
    board.fault({.command = "RD_REPLY", .occurrence = 1, .status = c.status});
    Si468x_chip_info info;
    EXPECT_EQ(info.get_status(), 0);
    int set = 0;
    for (const auto& other : cases) set += info.*other.field != 0 && other.field != &Si468x_chip_info::powerup_state;
    EXPECT_EQ(info.*c.field, c.value);
    EXPECT_EQ(set, c.field == &Si468x_chip_info::powerup_state ? 0 : 1);
    EXPECT_EQ(board.sent(), Frames{zeros(7)});
  }
}

TEST_F(Chip, ReportShowsEveryFieldInItsPlace) {
  board.fault({.command = "RD_REPLY", .occurrence = 1, .status = {{0xB0, 0x20, 0, 0xD4}}});
  board.fault({.command = "GET_PART_INFO", .reply = Byte_string{17, 34, 9, 9, 0x83, 0x12, 9}});
  board.fault({.command = "GET_SYS_STATE", .reply = Byte_string{3, 9}});
  board.fault({.command = "GET_FUNC_INFO", .reply = Byte_string{5, 6, 7, 0x23, 0x0D, 0x0C, 0x0B, 0xFA}});
  EXPECT_EQ(output_of([] { print_chip_info(); }), expected("chip_info.txt"));
  EXPECT_EQ(board.sent(), (Frames{zeros(7),
                                  {0x08, 0x00},
                                  zeros(7),
                                  zeros(24),
                                  {0x09, 0x00},
                                  zeros(7),
                                  zeros(7),
                                  {0x12, 0x00},
                                  zeros(7),
                                  zeros(13)}));
}

TEST_F(Chip, ImagesHaveNames) {
  const std::pair<uint8_t, const char*> names[] = {{0, "Bootloader"}, {1, "FMHD"},    {2, "DAB"},
                                                   {4, "FMHD Demod"}, {5, "AMHD"},    {6, "AMHD Demod"},
                                                   {7, "DAB Demod"},  {8, "unknown"}, {255, "unknown"}};
  for (const auto& [image, name] : names) {
    Si468x_chip_info info;
    info.image = image;
    const std::string text = output_of([&] { info.print_data(); });
    EXPECT_NE(text.find(std::string("sysstate CMD:    ") + name + "\nRevision"), std::string::npos) << name;
  }
}

TEST_F(Chip, WithoutVersionControlTheRevisionFieldsKeepTheirValues) {
  board.fault({.command = "GET_FUNC_INFO", .reply = Byte_string{5, 6, 7, 0xB0, 1, 2, 3, 4}});
  Si468x_chip_info info;
  info.build_location = 1;
  info.svn_id = 77;
  EXPECT_EQ(info.get_func_info(), 0);
  EXPECT_EQ(info.no_svn_info, 1);
  EXPECT_EQ(info.build_location, 1);
  EXPECT_EQ(info.svn_id, 77U);
}

TEST_F(Chip, RefusedCommandsLeaveTheirFieldsAndTheirCodes) {
  const struct {
    const char* command;
    int16_t (Si468x_chip_info::*method)();
    uint32_t code;
  } cases[] = {{"GET_PART_INFO", &Si468x_chip_info::get_part_info, 21},
               {"GET_SYS_STATE", &Si468x_chip_info::get_sys_state, 12},
               {"GET_FUNC_INFO", &Si468x_chip_info::get_func_info, 13}};
  for (const auto& c : cases) {
    board.fault({.command = c.command, .status_bits = {0x40}});
    Si468x_chip_info info;
    EXPECT_EQ((info.*c.method)(), -2);
    EXPECT_EQ(Si468x_ErrorCode, c.code);
    EXPECT_EQ(info.part_number + info.image + info.revision_major, 0);
  }
}

}  // namespace
