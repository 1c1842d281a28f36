// SPDX-License-Identifier: GPL-3.0-or-later
// Scans for other programs: JSON and CSV. Each scan is converted alone, so that many need no more memory than one.
#pragma once

#include <string>
#include <string_view>

#include "survey/file/reader.h"

namespace survey {

/// The members of the scan in one line of JSON, with the block's name in each entry.
std::string json_line(Scan_file file);

/// The line that names the columns of the lines below it.
std::string csv_head();

/// One line for each service. A text that a spreadsheet would take for a formula gets an apostrophe in front.
std::string csv_lines(const Scan& scan);

}  // namespace survey
