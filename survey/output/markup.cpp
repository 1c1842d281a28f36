// SPDX-License-Identifier: GPL-3.0-or-later
// Pieces of HTML and SVG.
#include "survey/output/markup.h"

#include <algorithm>

#include "survey/text/scales.h"
#include "survey/text/text.h"

namespace survey {

namespace {

/// XML admits neither U+FFFE nor U+FFFF, HTML none of these.
bool is_noncharacter(char32_t c) { return (c & 0xFFFE) == 0xFFFE || (c >= 0xFDD0 && c < 0xFDF0); }

std::string bar_colours(bool dark) {
  std::string css;
  for (const Reception reception : legend) {
    const Reception_row& row = row_of(reception);
    const Paint& paint = row.paint;
    css += ".bar." + std::string(row.style) + " .level { fill: " + std::string(dark ? paint.dark_fill : paint.fill) +
           "; stroke: " + std::string(dark ? paint.dark_outline : paint.outline) + " }\n";
  }
  return css;
}

}  // namespace

std::string escaped(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    const char32_t character = take_character(text);
    switch (character) {
      case '&':
        result += "&amp;";
        break;
      case '<':
        result += "&lt;";
        break;
      case '>':
        result += "&gt;";
        break;
      case '"':
        result += "&quot;";
        break;
      case '\'':
        result += "&#39;";
        break;
      default:
        append_character(result, is_control(character) || is_noncharacter(character) ? 0xFFFD : character);
    }
  }
  return result;
}

std::string markup_style() {
  return R"(
:root { color: #1d2329; background: #ffffff }
svg text { fill: currentColor }
svg .muted { fill: #59626b }
.bar, .scale { overflow: visible }
.track { fill: #ebedf0 }
.grid { fill: #ffffff }
.best .track { fill: #d9e0e8 }
.best .grid { fill: #f1f5fa }
.legend .grid { display: none }
.scale { font-size: 11px }
.scale text { fill: #59626b }
.beyond { fill: #1d2329 }
#hatch path { stroke: #6b747d }
)" + bar_colours(false) +
         R"(@media screen and (prefers-color-scheme: dark) {
  :root { color: #e4e7ea; background: #13171b }
  svg .muted, .scale text { fill: #a3abb3 }
  .track { fill: #262c32 }
  .grid { fill: #13171b }
  .best .track { fill: #2c3946 }
  .best .grid { fill: #1b242e }
  .beyond { fill: #e4e7ea }
  #hatch path { stroke: #9aa3ab }
)" + bar_colours(true) +
         "}\n";
}

const std::string_view markup_patterns =
    R"(<defs><pattern id="hatch" width="5" height="5" patternUnits="userSpaceOnUse">)"
    R"(<path d="M-1 1L1 -1M0 5L5 0M4 6L6 4"/></pattern></defs>)";

void write_bar(std::ostream& out, int rssi, Reception reception, std::string_view attributes) {
  const int percent = (std::clamp(rssi, 0, signal_scale_end) * 100 + signal_scale_end / 2) / signal_scale_end;
  out << "<svg class=\"bar " << row_of(reception).style << "\" " << attributes
      << "><rect class=\"track\" width=\"100%\" height=\"100%\"/><rect class=\"level\" width=\""
      << (percent < 3 ? "2" : std::to_string(percent) + "%") << "\" height=\"100%\"/>";
  for (const int grid : {25, 50, 75}) out << "<rect class=\"grid\" x=\"" << grid << "%\" width=\"1\" height=\"100%\"/>";
  if (rssi > signal_scale_end)
    out << "<svg class=\"bar\" x=\"100%\" width=\"1\"><path class=\"beyond\" d=\"M2 0l5 5.5l-5 5.5z\"/></svg>";
  out << "</svg>";
}

void write_scale(std::ostream& out, std::string_view attributes) {
  out << "<svg class=\"scale\" " << attributes << ">";
  for (const int percent : {0, 50, 100}) {
    const std::string_view anchor = percent == 0 ? "start" : percent == 100 ? "end" : "middle";
    out << "<text x=\"" << percent << "%\" y=\"10\" text-anchor=\"" << anchor << "\">"
        << signal_scale_end * percent / 100 << "</text>";
  }
  out << "</svg>";
}

}  // namespace survey
