// SPDX-License-Identifier: GPL-3.0-or-later
// Checks the output of a run with a fault: numbers may have any value, but lines must be known and JSON well formed.
#pragma once

#include <string>

/// @return what is wrong with the standard output of a run: an unknown line or malformed JSON; empty: nothing.
std::string wrong_in_output(const std::string& output);

/// Likewise for a scan file.
std::string wrong_in_scan_file(const std::string& file);
