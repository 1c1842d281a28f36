// SPDX-License-Identifier: GPL-3.0-or-later
// Pieces of HTML and SVG.
#include "survey/output/markup.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "survey/text/codes.h"
#include "survey/text/text.h"

namespace survey {

namespace {

struct Reception_text {
  std::string_view style;  // class of the bar
  std::string_view words;
};
constexpr std::array<Reception_text, 6> reception_texts{{
    {"none", "no signal"},
    {"other", "a signal that is not DAB"},
    {"weak", "too weak to decode"},
    {"poor", "received poorly"},
    {"fair", "received fairly"},
    {"good", "received well"},
}};

const Reception_text& text_of(Reception reception) { return reception_texts.at(static_cast<size_t>(reception)); }

/// XML admits neither U+FFFE nor U+FFFF, HTML none of these.
bool is_noncharacter(char32_t c) { return (c & 0xFFFE) == 0xFFFE || (c >= 0xFDD0 && c < 0xFDF0); }

std::string counted(size_t count, const std::string& noun) {
  return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

Place place(const std::vector<Scan>& scans, size_t index, const std::vector<Row>& all_rows) {
  const Scan& scan = scans[index];
  Place result{.name = visible(place_name(scan)), .time = time_text(scan), .summary = {}, .verdict = {}};
  size_t ensembles = 0;
  size_t services = 0;
  for (const auto& entry : scan.entries) {
    if (reception(entry) >= Reception::poor) ++ensembles;
    services += entry.services.size();
  }
  result.summary = counted(ensembles, "ensemble") + ", " + counted(services, "service");
  if (scans.size() > 1) {
    const auto best = std::ranges::count_if(all_rows, [&](const Row& row) { return row.best == index; });
    result.verdict = "best for " + counted(static_cast<size_t>(best), "block");
  }
  return result;
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

Chart chart(const std::vector<Scan>& scans) {
  Chart result;
  const std::vector<Row> all_rows = rows(scans);
  for (size_t i = 0; i < scans.size(); ++i) result.places.push_back(place(scans, i, all_rows));
  result.title =
      "DAB reception at " + (scans.size() == 1 ? result.places.front().name : std::to_string(scans.size()) + " places");
  for (const auto& row : all_rows) {
    if (has_signal(row))
      result.rows.push_back(row);
    else
      result.quiet += (result.quiet.empty() ? "No signal: " : ", ") + block_title(row.frequency);
  }
  if (!result.quiet.empty()) result.quiet += ".";
  return result;
}

std::string megahertz(uint32_t frequency) {
  std::array<char, 24> text{};
  static_cast<void>(std::snprintf(text.data(), text.size(), "%u.%03u", frequency / 1000, frequency % 1000));
  return text.data();
}

std::string block_title(uint32_t frequency) {
  const std::string_view name = block_name(frequency);
  return name.empty() ? megahertz(frequency) : std::string(name);
}

std::string service_count(const Entry& entry) {
  if (reception(entry) < Reception::poor && entry.services.empty()) return "";
  return std::to_string(entry.services.size());
}

std::string in_words(const Row& row, size_t place) {
  const Entry* const entry = row.cells[place];
  if (entry == nullptr) return "not scanned";
  std::string words = std::to_string(entry->rssi) + " dBµV, " + std::string(text_of(reception(*entry)).words);
  if (!service_count(*entry).empty()) words += ", " + counted(entry->services.size(), "service");
  if (row.best == place) words += ", best place";
  return words;
}

// The three colours of received ensembles differ in lightness as well, so that they differ in grey, too; what is not
// received is pale, hatched, or hollow.
const std::string_view markup_style = R"(
:root { color: #1d2329; background: #ffffff }
svg text { fill: currentColor }
svg .muted { fill: #59626b }
.bar, .scale, .star { overflow: visible }
.track { fill: #ebedf0 }
.grid { fill: #ffffff }
.legend .grid { display: none }
.star { fill: #1d2329 }
.scale { font-size: 11px }
.scale text { fill: #59626b }
.bar.none .level { fill: #b4bac1 }
.bar.other .level { fill: url(#hatch); stroke: #6b747d }
.bar.weak .level { fill: #ffffff; stroke: #b0481a; stroke-width: 1.5 }
.bar.poor .level { fill: #f5bd4f; stroke: #a36a00 }
.bar.fair .level { fill: #2c9c8d; stroke: #1d7569 }
.bar.good .level { fill: #0d4686; stroke: #0d4686 }
#hatch path { stroke: #6b747d }
@media screen and (prefers-color-scheme: dark) {
  :root { color: #e4e7ea; background: #13171b }
  svg .muted, .scale text { fill: #a3abb3 }
  .track { fill: #262c32 }
  .grid { fill: #13171b }
  .star { fill: #e4e7ea }
  .bar.none .level { fill: #545c64 }
  .bar.other .level { stroke: #9aa3ab }
  .bar.weak .level { fill: #13171b; stroke: #e8804c }
  .bar.poor .level { fill: #87590a; stroke: #d99d2b }
  .bar.fair .level { fill: #2c9c8d; stroke: #2c9c8d }
  .bar.good .level { fill: #9accff; stroke: #9accff }
  #hatch path { stroke: #9aa3ab }
}
)";

const std::string_view markup_patterns =
    R"(<defs><pattern id="hatch" width="5" height="5" patternUnits="userSpaceOnUse">)"
    R"(<path d="M-1 1L1 -1M0 5L5 0M4 6L6 4"/></pattern></defs>)";

const std::vector<Legend_item> legend{
    {Reception::no_signal, "no signal"},         {Reception::no_dab, "a signal, not DAB"},
    {Reception::too_weak, "too weak to decode"}, {Reception::poor, "received, SNR below 8 dB"},
    {Reception::fair, "SNR 8 to 15 dB"},         {Reception::good, "SNR 16 dB and more"},
};

void write_bar(std::ostream& out, int rssi, Reception reception, std::string_view attributes) {
  const int percent = (std::clamp(rssi, 0, signal_scale_end) * 100 + signal_scale_end / 2) / signal_scale_end;
  out << "<svg class=\"bar " << text_of(reception).style << "\" " << attributes
      << "><rect class=\"track\" width=\"100%\" height=\"100%\"/><rect class=\"level\" width=\"" << percent
      << "%\" height=\"100%\"/>";
  for (const int grid : {25, 50, 75}) out << "<rect class=\"grid\" x=\"" << grid << "%\" width=\"1\" height=\"100%\"/>";
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

void write_star(std::ostream& out, std::string_view attributes) {
  out << "<svg class=\"star\" viewBox=\"0 0 20 20\" " << attributes
      << "><path d=\"M10 1l2.7 6 6.5.7-4.9 4.4 1.4 6.4L10 15.2l-5.7 3.3 1.4-6.4L.8 7.7 7.3 7z\"/></svg>";
}

}  // namespace survey
