// SPDX-License-Identifier: GPL-3.0-or-later
#include "frontend/reports.h"
#include "tests/support.h"

namespace {

using Fm = Fm_running;
using Flags = std::array<uint8_t, 4>;

TEST_F(Fm, SeekWaitsForCompletion) {
  board.air().fm_stations = {{.khz = 87600, .signal = {.rssi = 40, .valid = true}},
                             {.khz = 107900, .signal = {.rssi = 30, .valid = true}}};
  EXPECT_EQ(Si468x_tune_next_station(), 0);
  EXPECT_EQ(board.sent()[0], (Byte_string{0x31, 0x00, 0x01, 0x00, 0x00, 0x00}));
  EXPECT_GT(board.waits().size(), 0U);
  EXPECT_EQ(board.waits(), Waits(board.sent().size() - 3, 100ms));
  EXPECT_EQ(board.state().fm.khz, 107900U);  // down from 87.5 MHz, round the band's limit
}

TEST_F(Fm, SeekThatNeverEnds) {
  board.fault({.command = "FM_SEEK_START", .stc_never = true});
  EXPECT_EQ(Si468x_tune_next_station(), 0);
  EXPECT_EQ(Si468x_ErrorCode, 160U);
  EXPECT_EQ(board.waits(), Waits(100, 100ms));
}

TEST_F(Fm, QualityFieldsComeFromTheirBits) {
  const Byte_string reply{0x0A, 0xA2, 0x3E, 0x22, 0x85, 0x2A, 0x1B, 0x0C, 0xCD, 0xAB, 0xEE, 0x11, 0x12};
  board.fault({.command = "FM_RSQ_STATUS", .reply = reply});
  Si468x_FM_rsq_status rsq;
  EXPECT_EQ(output_of([&] { EXPECT_EQ(rsq.get_status(), 0); }),
            "00 80 00 00 c0 0a a2 3e 22 85 2a 1b 0c cd ab ee 11 12 00 00 00 00 00 \n");
  EXPECT_EQ((std::array{rsq.snr_high_int, rsq.snr_low_int, rsq.rssi_high_int, rsq.rssi_low_int}), (Flags{1, 0, 1, 0}));
  EXPECT_EQ((std::array{rsq.band_limit, rsq.hd_detected, rsq.hd_detected_filtered, rsq.afc_railed}),
            (Flags{1, 1, 0, 1}));
  EXPECT_EQ(rsq.valid, 0);
  EXPECT_EQ((std::vector<int>{rsq.frequency, rsq.frequency_offset, rsq.rssi, rsq.snr, rsq.multipath, rsq.antenna_cap,
                              rsq.hd_level, rsq.hd_level_filtered}),
            (std::vector<int>{0x223E, 0x85, 0x2A, 0x1B, 0x0C, 0xABCD, 0x11, 0x12}));
  board.clear_faults();
  board.fault({.command = "FM_RSQ_STATUS", .reply = Byte_string{0x05, 0x11}});
  output_of([&] { rsq.get_status(); });
  EXPECT_EQ(rsq.snr_low_int + rsq.rssi_low_int + rsq.hd_detected_filtered + rsq.valid, 4);
  EXPECT_EQ(rsq.snr_high_int + rsq.rssi_high_int + rsq.band_limit + rsq.hd_detected + rsq.afc_railed, 0);
}

TEST_F(Fm, RdsReportIsTwoLinesOfRawBytes) {
  board.fault({.command = "FM_RSQ_STATUS", .reply = Byte_string(18, 0xAB)});
  board.fault({.command = "FM_RDS_STATUS", .reply = Byte_string(16, 0x1C)});
  std::string quality = "00 80 00 00 c0 ";
  std::string rds = quality;
  for (int i = 0; i < 18; ++i) quality += "ab ";
  for (int i = 0; i < 16; ++i) rds += "1c ";
  EXPECT_EQ(output_of([] { EXPECT_EQ(get_rds_status(), 0); }), quality + "\n" + rds + "\n");
  EXPECT_EQ(board.sent()[0], (Byte_string{0x13, 0x00, 0x02, 0x3C, 0x01, 0x00}));
  EXPECT_EQ(board.sent()[5], (Byte_string{0x13, 0x00, 0x00, 0x39, 0x00, 0x39}));
  EXPECT_EQ(Frames(board.sent().begin() + 10, board.sent().end()),
            (Frames{{0x32, 0x09}, zeros(7), zeros(23), {0x34, 0x00}, zeros(7), zeros(21)}));
}

TEST_F(Fm, RdsReportPrintsWhatItCouldRead) {
  board.fault({.command = "FM_RSQ_STATUS", .status_bits = {0x40}});
  EXPECT_EQ(output_of([] { EXPECT_EQ(get_rds_status(), 0); }).size(), 64U);
  EXPECT_EQ(Si468x_ErrorCode, 61U);
  board.fault({.command = "FM_RDS_STATUS", .cts_never = true});
  EXPECT_EQ(output_of([] { EXPECT_EQ(get_rds_status(), 0); }), "");
  EXPECT_EQ(Si468x_ErrorCode, 62U);
  board.clear_faults();
  for (const uint32_t write : {2U, 1U}) {
    board.fault({.command = "SET_PROPERTY", .occurrence = write, .status_bits = {0x40}});
    board.clear_record();
    EXPECT_EQ(output_of([] { EXPECT_EQ(get_rds_status(), -2); }), "");
    EXPECT_EQ(board.totals().commands.at("SET_PROPERTY"), write);
    board.clear_faults();
  }
}

}  // namespace
