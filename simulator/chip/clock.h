// SPDX-License-Identifier: GPL-3.0-or-later
// The board's clock.
#pragma once

#include "trace/observer.h"

namespace sim {

/// Simulated time; it counts from the moment the board was made.
using trace::Time;

/// The board's clock. It moves only when a byte goes over the wire or the host waits, so that every run repeats
/// exactly.
class Clock {
 public:
  Time now() const { return now_; }
  /// Time on the air: it goes on from run to run.
  Time on_air() const { return earlier_ + now_; }
  void set_on_air(Time time) { earlier_ = time - now_; }

  void advance(Time span) {
    now_ += span;
    if (realtime_) sleep(span);
  }

  /// With `on`, simulated time takes real time.
  void set_realtime(bool on) { realtime_ = on; }

 private:
  void sleep(Time span);

  Time now_{};
  Time earlier_{};  // on the air, before this run
  Time owed_{};     // passed on the board, not yet slept
  bool realtime_ = false;
};

}  // namespace sim
