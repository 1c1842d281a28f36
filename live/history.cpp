// SPDX-License-Identifier: GPL-3.0-or-later
// The last samples, and their range at each position of the antenna.
#include "live/history.h"

namespace live {

std::optional<Values> values(const Sample& sample) {
  if (const auto* const dab = std::get_if<Dab_signal>(&sample.reading))
    return Values{dab->rssi, dab->snr, dab->fic_quality};
  if (const auto* const fm = std::get_if<Fm_signal>(&sample.reading)) return Values{fm->rssi, fm->snr, fm->multipath};
  return std::nullopt;
}

void Range::add(int value) {
  minimum_ = std::min(minimum_, value);
  maximum_ = std::max(maximum_, value);
  sum_ += value;
  count_ += 1;
}

void History::add(const Sample& sample) {
  const std::optional<Values> point = values(sample);
  points_[added_ % capacity] = point;
  added_ += 1;
  if (!point) return;
  Position& now = positions_[marks_ % positions_.size()];
  for (size_t i = 0; i < measures; ++i) now.ranges[i].add((*point)[i]);
}

void History::mark() {
  marks_ += 1;
  positions_[marks_ % positions_.size()] = {.number = static_cast<unsigned>(marks_) + 1};
}

}  // namespace live
