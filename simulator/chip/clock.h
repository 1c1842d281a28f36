// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>

namespace sim {

/// Simulated time and spans of it; time counts from the moment the board was made.
using Time = std::chrono::nanoseconds;

/// The board's clock. It moves only when a byte goes over the wire or the host waits, so that every run repeats
/// exactly.
class Clock {
 public:
  Time now() const { return now_; }

  void advance(Time span) {
    now_ += span;
    if (realtime_) sleep(span);
  }

  /// With `on`, time that passes on the board passes for the caller too.
  void set_realtime(bool on) { realtime_ = on; }

 private:
  void sleep(Time span);

  Time now_{};
  Time owed_{};  // passed on the board, not yet slept
  bool realtime_ = false;
};

}  // namespace sim
