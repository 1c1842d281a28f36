// SPDX-License-Identifier: GPL-3.0-or-later
// The board's clock.
#include "simulator/chip/clock.h"

#include <thread>

namespace sim {

void Clock::sleep(Time span) {
  // A byte takes about a microsecond, far less than the shortest sleep of the host: such spans are collected.
  constexpr Time shortest_sleep = std::chrono::milliseconds(1);
  owed_ += span;
  if (owed_ < shortest_sleep) return;
  std::this_thread::sleep_for(owed_);
  owed_ = Time::zero();
}

}  // namespace sim
