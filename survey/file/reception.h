// SPDX-License-Identifier: GPL-3.0-or-later
// How well a block is received, and how each output shows it.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "survey/file/model.h"

namespace survey {

/// From worst to best.
enum class Reception { not_measured, no_signal, no_dab, too_weak, poor, fair, good };

Reception reception(const Entry& entry);

/// Whether the ensemble is received: a scan asks for its services.
constexpr bool is_received(Reception reception) { return reception >= Reception::poor; }

/// A bar in light and dark surroundings: fill and outline, CSS.
struct Paint {
  std::string_view fill, outline, dark_fill, dark_outline;
};

struct Reception_row {
  std::string_view style;     ///< class of the bar in pages and pictures
  std::string_view words;     ///< "received well"
  int from;                   ///< the least value of what divides it from the row above; 0 if that is no number
  std::string_view terminal;  ///< escape sequence of its colour
  Paint paint;
};

/// One row for each reception. The colours of received ensembles differ in lightness as well, so that they differ in
/// grey; what is not received is pale, hatched or hollow.
extern const std::array<Reception_row, 7> receptions;

const Reception_row& row_of(Reception reception);

/// For a legend: the words and the values that they stand for, "received fairly: SNR 8 to 15 dB".
std::string explained(Reception reception);

}  // namespace survey
