// SPDX-License-Identifier: GPL-3.0-or-later
// The comparison of places as an SVG picture.
#pragma once

#include <ostream>
#include <vector>

#include "survey/file/model.h"

namespace survey {

/// One SVG document: blocks down, places across. It loads nothing and has no script.
void write_picture(std::ostream& out, const std::vector<Scan>& scans);

}  // namespace survey
