// SPDX-License-Identifier: GPL-3.0-or-later
#include "frontend/reports.h"
#include "tests/support.h"

namespace {

using Fm = Fm_running;
using Flags = std::array<uint8_t, 4>;

TEST_F(Fm, SeekThatNeverEndsGivesTheLastLook) {
  board.fault({.command = "FM_SEEK_START", .stc_never = true});
  EXPECT_EQ(Si468x_tune_next_station(), 0);
  EXPECT_EQ(Si468x_ErrorCode, 160U);
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

}  // namespace
