// SPDX-License-Identifier: GPL-3.0-or-later
// Scans as tables of text.
#pragma once

#include <ostream>
#include <vector>

#include "survey/file/model.h"

namespace survey {

/// The terminal that a table is made for.
struct Terminal {
  size_t width = 0;     ///< columns; 0: no terminal, nothing is cut
  bool unicode = true;  ///< its locale is UTF-8; otherwise the text is ASCII
  bool colour = false;
};

/// The terminal at standard output, in the program's locale; COLUMNS overrides its width.
Terminal standard_output();

/// Blocks down, places across: signal, reception and number of services. As many places side by side as fit into
/// the width, without a terminal into 80 columns.
void write_table(std::ostream& out, const std::vector<Scan>& scans, const Terminal& terminal);

/// One line for each of `stations`, which are of `scans`, cut at the terminal's width.
void write_stations(std::ostream& out, const std::vector<Station>& stations, const std::vector<Scan>& scans,
                    const Terminal& terminal);

}  // namespace survey
