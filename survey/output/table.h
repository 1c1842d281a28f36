// SPDX-License-Identifier: GPL-3.0-or-later
// Scans as tables of text.
#pragma once

#include <ostream>
#include <vector>

#include "survey/file/comparison.h"
#include "survey/output/terminal.h"

namespace survey {

/// Blocks down, places across: signal, reception and number of services. As many places side by side as fit into
/// the width, without a terminal into 80 columns.
void write_table(std::ostream& out, const std::vector<Scan>& scans, const Terminal& terminal);

/// The places, and one line for each of `stations`, which are of `scans`. On a narrow terminal texts are cut, figures
/// never.
void write_stations(std::ostream& out, const std::vector<Station>& stations, const std::vector<Scan>& scans,
                    const Terminal& terminal);

/// One line for each of `found` with the name that chooses it among `all`.
void write_choice(std::ostream& out, const std::vector<Station>& found, const std::vector<Station>& all,
                  const Terminal& terminal);

}  // namespace survey
