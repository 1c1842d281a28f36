// SPDX-License-Identifier: GPL-3.0-or-later
// The last samples and the positions of the antenna, beyond what fits on a screen.
#include "live/history.h"

#include <gtest/gtest.h>

#include <climits>

namespace {

using live::History;
using live::Measure;

live::Sample fm(int snr) { return {.reading = live::Fm_signal{.rssi = 2 * snr, .snr = snr, .multipath = 7}}; }

TEST(History, ForgetsTheOldestSampleWhenItIsFull) {
  History history;
  for (int i = 0; i <= static_cast<int>(History::capacity); ++i) history.add(i == 1 ? live::Sample{} : fm(i));
  EXPECT_EQ(history.size(), History::capacity);
  EXPECT_EQ(history.back(0), (live::Values{1200, 600, 7}));
  EXPECT_EQ(history.back(598), (live::Values{4, 2, 7}));
  EXPECT_EQ(history.back(599), std::nullopt);  // a failed sample
  const live::Range& snr = history.position().range(Measure::snr);
  EXPECT_EQ(snr.minimum(), 0);  // a range forgets nothing
  EXPECT_EQ(snr.maximum(), 600);
  EXPECT_DOUBLE_EQ(snr.mean(), 300.0 + 299.0 / 600);
}

TEST(History, KeepsTheLastEightMarks) {
  History history;
  for (int position = 1; position <= 11; ++position) {
    if (position > 1) history.mark();
    if (position != 5) history.add(fm(-position));
  }
  EXPECT_EQ(history.position().number, 11U);
  EXPECT_EQ(history.earlier(), History::earlier_positions);
  for (unsigned age = 1; age <= history.earlier(); ++age) {
    const live::Position& then = history.position(age);
    EXPECT_EQ(then.number, 11 - age);
    EXPECT_EQ(then.range(Measure::rssi).empty(), then.number == 5);
    EXPECT_EQ(then.range(Measure::rssi).maximum(), then.number == 5 ? INT_MIN : -2 * static_cast<int>(then.number));
  }
}

}  // namespace
