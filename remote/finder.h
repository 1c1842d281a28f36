// SPDX-License-Identifier: GPL-3.0-or-later
// "Find stations": every frequency of the chip's list, as a scan visits them.
#pragma once

#include <functional>
#include <string>

#include "live/board.h"

namespace remote {

/// One step, when it is done.
struct Find_step {
  unsigned step = 0, of = 0;  ///< from 1
  unsigned index = 0;         ///< in the chip's frequency list
  unsigned khz = 0;
  unsigned services = 0;
  int rssi = 0;  ///< dBµV
  int snr = 0;   ///< dB
};

/// The text of a scan file, as far as the steps went.
struct Found {
  live::Outcome failure{};
  bool complete = false;  ///< neither failed nor given up
  std::string text{};
};

/// Visits the frequencies of a chip that runs DAB, each with the board for itself, so that other programs get their
/// turn in between. Gives up when `goes_on` returns false, which it asks before each step.
Found find_stations(const std::function<void(const Find_step&)>& report, const std::function<bool()>& goes_on);

}  // namespace remote
