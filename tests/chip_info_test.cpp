// SPDX-License-Identifier: GPL-3.0-or-later
#include "frontend/reports.h"
#include "tests/support.h"

namespace {

using Chip = Dab_running;

TEST_F(Chip, EachStatusBitShowsInItsLineAlone) {
  const size_t bits[][2] = {{0, 7}, {0, 6}, {0, 5}, {0, 4}, {0, 0}, {1, 5},
                            {3, 6}, {3, 4}, {3, 3}, {3, 2}, {3, 1}, {3, 0}};
  size_t line = 0;
  for (const auto& [byte, bit] : bits) {
    board.clear_record();
    std::array<uint8_t, 4> status{};
    status[byte] = static_cast<uint8_t>(1 << bit);
    board.fault({.command = "RD_REPLY", .occurrence = 1, .status = status});
    Si468x_chip_info info;
    EXPECT_EQ(info.get_status(), 0);
    EXPECT_EQ(board.sent(), Frames{zeros(7)});
    info.image = 255;  // its line shows a name in any case
    EXPECT_EQ(lines_not_zero(output_of([&] { info.print_data(); })), (std::vector<size_t>{++line, 16, 17}));
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

}  // namespace
