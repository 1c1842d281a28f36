// SPDX-License-Identifier: GPL-3.0-or-later
// Text in columns of a terminal.
#pragma once

#include <string>
#include <string_view>

#include "survey/table.h"

namespace survey {

/// `text` as the terminal can show it: no control characters; ASCII where its locale is not UTF-8.
std::string shown(std::string_view text, const Terminal& terminal);

/// Shown text in exactly `width` columns: cut, or filled with blanks at its end.
std::string cell(std::string_view text, size_t width, const Terminal& terminal);

/// Shown text in at most `width` columns, 0 for no limit.
std::string clipped(std::string_view text, size_t width, const Terminal& terminal);

/// A bar of `width` columns, `value` long on a scale from 0 to `end`: blocks of eighths, or '#'.
std::string bar(int value, int end, size_t width, const Terminal& terminal);

/// Columns that shown text takes.
size_t columns(std::string_view text);

}  // namespace survey
