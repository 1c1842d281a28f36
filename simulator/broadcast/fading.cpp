// SPDX-License-Identifier: GPL-3.0-or-later
// How a signal changes with time.
#include "simulator/broadcast/fading.h"

#include <algorithm>

namespace sim {

Fade_point signal_at(const Fading& fading, std::chrono::nanoseconds time) {
  using std::chrono::milliseconds;
  using std::chrono::seconds;
  const milliseconds round = seconds(fading.back().at_s);
  if (round == milliseconds::zero()) return fading.front();
  const milliseconds at = std::chrono::floor<milliseconds>(time) % round;
  const auto after = std::ranges::upper_bound(
      fading, at, {}, [](const Fade_point& point) { return milliseconds(seconds(point.at_s)); });
  const Fade_point& from = *std::prev(after);
  const int64_t span = int64_t{1000} * (after->at_s - from.at_s);
  const int64_t passed = at.count() - int64_t{1000} * from.at_s;
  const auto between = [&](int64_t begin, int64_t end) { return begin + (end - begin) * passed / span; };
  return {.at_s = from.at_s,
          .rssi = static_cast<int8_t>(between(from.rssi, after->rssi)),
          .snr = static_cast<int8_t>(between(from.snr, after->snr)),
          .quality = static_cast<uint8_t>(between(from.quality, after->quality))};
}

}  // namespace sim
