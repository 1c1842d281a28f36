// SPDX-License-Identifier: GPL-3.0-or-later
// What is received: the states of a signal, and its changes with the board's time.
#include "tests/support.h"

namespace {

class Fading_signal : public Tuned_to_33 {
 protected:
  void fade(sim::Fading fading) {
    for (sim::Ensemble& ensemble : board.air().ensembles)
      if (ensemble.index == 33) ensemble.fading = std::move(fading);
  }
  // RSSI, SNR, FIC quality, valid, acquired, muted, acquisition changed.
  std::vector<int> status_after(std::chrono::milliseconds wait) {
    board.wait(wait);
    Si468x_DAB_digrad_status status;
    EXPECT_EQ(status.get_new_status(), 0);
    return {status.rssi, status.snr, status.FIC_quality, status.valid, status.acq, status.hardmute, status.acqINT};
  }
};

TEST_F(Fading_signal, ChangesEvenlyIsLostAndFoundAndBeginsAgain) {
  fade({{0, 60, 20, 100}, {10, 20, 0, 0}, {20, 60, 20, 100}});
  EXPECT_EQ(status_after(0ms), (std::vector<int>{60, 20, 100, 1, 1, 0, 0}));
  EXPECT_EQ(status_after(5000ms), (std::vector<int>{40, 10, 50, 1, 1, 0, 0}));
  EXPECT_EQ(status_after(2500ms), (std::vector<int>{30, 5, 25, 1, 0, 1, 1}));
  EXPECT_EQ(status_after(10000ms), (std::vector<int>{50, 15, 75, 1, 1, 0, 1}));
  EXPECT_EQ(status_after(7500ms), (std::vector<int>{40, 10, 50, 1, 1, 0, 1}));
}

TEST_F(Fading_signal, GoesOnInTheNextRun) {
  fade({{0, 60, 20, 100}, {10, 10, 10, 50}});
  board.wait(4s);
  const sim::Board_state kept = board.state();
  EXPECT_EQ(kept.on_air_ms, 4000U);
  board.wait(3s);
  board.restore(kept);
  EXPECT_EQ(status_after(0ms), (std::vector<int>{40, 16, 80, 1, 1, 0, 0}));
  EXPECT_EQ(status_after(5000ms), (std::vector<int>{15, 11, 55, 0, 0, 0, 1}));
}

// A board that is tuned to the one FM station on the air.
class Fm_station : public testing::Test {
 protected:
  Si468x_FM_rsq_status status_of(const sim::Fm_station& station, sim::Time wait) {
    sim::Broadcast air = sim::default_broadcast();
    air.fm.stations = {station};
    sim::Board board(air);
    sim::use_board(&board);
    board.restore({.chip = {.mode = sim::Mode::fm, .fm = {.khz = station.khz}}});
    EXPECT_EQ(Si468x_bus_init(), 0);
    board.wait(wait);
    Si468x_FM_rsq_status status;
    EXPECT_EQ(status.get_new_status(), 0);
    sim::use_board(nullptr);
    return status;
  }
};

TEST_F(Fm_station, FadesWithItsMultipath) {
  const Si468x_FM_rsq_status status =
      status_of({.khz = 98500, .signal = {.valid = true}, .fading = {{0, 40, 20, 10}, {10, 20, 10, 110}}}, 5s);
  EXPECT_EQ((std::vector<int>{status.rssi, status.snr, status.multipath}), (std::vector<int>{30, 15, 60}));
}

TEST_F(Fm_station, ReportsEachStateOfItsSignalAlone) {
  constexpr std::pair<bool sim::Fm_signal::*, uint8_t Si468x_FM_rsq_status::*> states[] = {
      {&sim::Fm_signal::valid, &Si468x_FM_rsq_status::valid},
      {&sim::Fm_signal::afc_railed, &Si468x_FM_rsq_status::afc_railed},
      {&sim::Fm_signal::hd_detected, &Si468x_FM_rsq_status::hd_detected},
      {&sim::Fm_signal::hd_detected_filtered, &Si468x_FM_rsq_status::hd_detected_filtered},
  };
  for (const auto& [set, reported] : states) {
    sim::Fm_signal signal;
    signal.*set = true;
    const Si468x_FM_rsq_status status = status_of({.khz = 98500, .signal = signal}, 0s);
    for (const auto& [other, bit] : states) EXPECT_EQ(status.*bit, bit == reported ? 1 : 0);
  }
}

}  // namespace
