// SPDX-License-Identifier: GPL-3.0-or-later
// The comparison of places and the stations as one HTML page.
#pragma once

#include <ostream>
#include <vector>

#include "survey/file/model.h"

namespace survey {

/// One HTML document that loads nothing and has no script: a table with blocks down and places across, and below it the
/// stations of each block with the options that play them.
void write_page(std::ostream& out, const std::vector<Scan>& scans);

}  // namespace survey
