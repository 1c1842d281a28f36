// SPDX-License-Identifier: GPL-3.0-or-later
// What the picture and the page share: safe text, colours and bars.
#pragma once

#include <ostream>
#include <string>
#include <string_view>

#include "survey/file/reception.h"

namespace survey {

/// `text` for an element or a quoted attribute of HTML or SVG. Control characters, line separators, bidirectional
/// overrides and isolates, noncharacters and bytes that are not UTF-8 become U+FFFD.
std::string escaped(std::string_view text);

/// Style of what the functions below draw, and of the root element, light and dark.
std::string markup_style();

/// Patterns that the style refers to; once per document.
extern const std::string_view markup_patterns;

/// Each writes an <svg> of its own that fills the place given by `attributes`, such as `x="8" width="120" height="10"`.
/// A bar is two pixels at least; one that ends beyond the scale gets an arrow.
void write_bar(std::ostream& out, int rssi, Reception reception, std::string_view attributes);
void write_scale(std::ostream& out, std::string_view attributes);

/// The receptions that have a bar, for a legend.
constexpr Reception legend[] = {Reception::no_signal, Reception::no_dab, Reception::too_weak,
                                Reception::poor,      Reception::fair,   Reception::good};

}  // namespace survey
