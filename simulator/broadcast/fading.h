// SPDX-License-Identifier: GPL-3.0-or-later
// How a signal changes with time.
#pragma once

#include <chrono>
#include <cstdint>
#include <vector>

namespace sim {

/// The signal at one moment; from one point to the next it changes linearly.
struct Fade_point {
  uint32_t at_s = 0;
  int8_t rssi = 0;      ///< dBµV
  int8_t snr = 0;       ///< dB
  uint8_t quality = 0;  ///< DAB: FIC quality, 0 to 100; FM: multipath
};

/// Points in the order of their times, the first at 0 s; the last one ends a round, and the next begins. Empty: the
/// signal does not change.
using Fading = std::vector<Fade_point>;

/// The signal after `time` of a fading that is not empty.
Fade_point signal_at(const Fading& fading, std::chrono::nanoseconds time);

}  // namespace sim
