// SPDX-License-Identifier: GPL-3.0-or-later
// Text in columns of a terminal.
#pragma once

#include <string>
#include <string_view>

#include "survey/output/terminal.h"

namespace survey {

/// `text` as the terminal can print it: no control characters; ASCII where its locale is not UTF-8.
std::string printable(std::string_view text, const Terminal& terminal);

/// Printable text in exactly `width` columns: cut, or filled with blanks at its end.
std::string cell(std::string_view text, size_t width, const Terminal& terminal);

/// Printable text in at most `width` columns, 0 for no limit.
std::string clipped(std::string_view text, size_t width, const Terminal& terminal);

/// A bar of `width` columns, `value` long on a scale from 0 to `end`: blocks of eighths, or '#'. It ends with '>' where
/// `value` is beyond the scale.
std::string bar(int value, int end, size_t width, const Terminal& terminal);

/// Columns that printable text takes.
size_t columns(std::string_view text);

}  // namespace survey
