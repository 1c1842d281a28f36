// SPDX-License-Identifier: GPL-3.0-or-later
// The last samples, and their range at each position of the antenna.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "live/sample.h"

namespace live {

/// What a history shows of a signal. The third is the FIC quality, 0 to 100; with FM, multipath.
enum class Measure { rssi, snr, quality };
inline constexpr size_t measures = 3;

using Values = std::array<int, measures>;

/// The values of a sample; nothing where it has no reading.
std::optional<Values> values(const Sample& sample);

/// Minimum, maximum and mean of the values added.
class Range {
 public:
  void add(int value);
  bool empty() const { return count_ == 0; }
  int minimum() const { return minimum_; }
  int maximum() const { return maximum_; }
  double mean() const { return static_cast<double>(sum_) / static_cast<double>(count_); }  ///< not of an empty range

 private:
  int minimum_ = std::numeric_limits<int>::max();
  int maximum_ = std::numeric_limits<int>::min();
  int64_t sum_ = 0;
  int64_t count_ = 0;
};

/// The samples from one mark to the next.
struct Position {
  unsigned number = 1;
  std::array<Range, measures> ranges{};

  const Range& range(Measure measure) const { return ranges[static_cast<size_t>(measure)]; }
};

/// Allocates nothing.
class History {
 public:
  static constexpr size_t capacity = 600;         ///< samples
  static constexpr size_t earlier_positions = 8;  ///< beside the present one

  void add(const Sample& sample);
  /// A new position begins.
  void mark();

  size_t size() const { return std::min(added_, capacity); }
  /// The values `age` samples ago, 0 for the newest; nothing for a gap. `age` is below `size()`.
  const std::optional<Values>& back(size_t age) const { return points_[(added_ - 1 - age) % capacity]; }

  const Position& position() const { return positions_[marks_ % positions_.size()]; }
  size_t earlier() const { return std::min(marks_, earlier_positions); }
  /// `age` marks ago, from 1 to `earlier()`.
  const Position& position(size_t age) const { return positions_[(marks_ - age) % positions_.size()]; }

 private:
  std::array<std::optional<Values>, capacity> points_{};
  size_t added_ = 0;
  std::array<Position, earlier_positions + 1> positions_{};
  size_t marks_ = 0;
};

}  // namespace live
