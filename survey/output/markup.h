// SPDX-License-Identifier: GPL-3.0-or-later
// What the picture and the page share: safe text, colours, bars, and a summary of what each place received.
#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "survey/file/model.h"

namespace survey {

/// `text` for an element or a quoted attribute of HTML or SVG. Control characters, line separators, bidirectional
/// overrides and isolates, noncharacters and bytes that are not UTF-8 become U+FFFD.
std::string escaped(std::string_view text);

/// One column of the comparison. Not escaped, but without control characters.
struct Place {
  std::string name;
  std::string time;     ///< the ensembles' time, the first that was received; empty if none was
  std::string summary;  ///< "9 ensembles, 92 services"
  std::string verdict;  ///< "best for 5 blocks"; empty if there is no other place
};

struct Chart {
  std::string title;
  std::vector<Place> places;
  std::vector<Row> rows;  ///< the blocks with a signal at one place or more
  std::string quiet;      ///< the other blocks, one sentence; empty if there is none
};

Chart chart(const std::vector<Scan>& scans);

/// Name of a block, its frequency in MHz if it has no name.
std::string block_title(uint32_t frequency);
std::string megahertz(uint32_t frequency);

/// The place's figures of a row in words: "52 dBµV, received well, 12 services, best place".
std::string in_words(const Row& row, size_t place);

/// The number of services as a figure, empty where no service list can be read.
std::string service_count(const Entry& entry);

/// Style of what the functions below draw, and of the root element, light and dark.
extern const std::string_view markup_style;

/// Patterns that the style refers to; once per document.
extern const std::string_view markup_patterns;

/// Each writes an <svg> of its own that fills the place given by `attributes`, such as `x="8" width="120" height="10"`.
void write_bar(std::ostream& out, int rssi, Reception reception, std::string_view attributes);
void write_scale(std::ostream& out, std::string_view attributes);
void write_star(std::ostream& out, std::string_view attributes);

/// The receptions from worst to best, for a legend.
struct Legend_item {
  Reception reception;
  std::string_view text;
};
extern const std::vector<Legend_item> legend;

}  // namespace survey
