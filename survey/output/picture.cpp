// SPDX-License-Identifier: GPL-3.0-or-later
// Lays the picture out line by line.
#include "survey/output/picture.h"

#include <algorithm>
#include <sstream>
#include <string>

#include "survey/output/markup.h"
#include "survey/text/codes.h"

namespace survey {

namespace {

// All lengths are in pixels of the picture's own coordinates.
constexpr size_t margin = 28;
constexpr size_t block_width = 104;
constexpr size_t place_width = 276;
constexpr size_t bar_width = 140;
constexpr size_t level_end = 176;  // within a place: where the figure in dBµV ends,
constexpr size_t count_end = 230;  // where the number of services ends,
constexpr size_t star_start = 238;
constexpr size_t row_height = 28;
constexpr size_t line_height = 18;
constexpr size_t bar_height = 11;
constexpr size_t name_length = 30;  // characters
constexpr size_t legend_width = 218;

constexpr std::string_view style = R"(
svg { font: 13px system-ui, sans-serif; font-variant-numeric: tabular-nums }
.paper { fill: #ffffff }
.title { font-size: 20px; font-weight: 600 }
.name { font-size: 14px; font-weight: 600 }
.block { font-weight: 600 }
.small { font-size: 11px }
.end { text-anchor: end }
.rule { stroke: #d5d9dd }
@media screen and (prefers-color-scheme: dark) {
  .paper { fill: #13171b }
  .rule { stroke: #343b42 }
}
)";

/// The first `most` characters of `text`, the last of them an ellipsis where more would follow.
std::string shortened(const std::string& text, size_t most) {
  size_t characters = 0;
  size_t last_start = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    if ((static_cast<unsigned char>(text[i]) & 0xC0) == 0x80) continue;
    if (characters == most) return text.substr(0, last_start) + "…";
    last_start = i;
    ++characters;
  }
  return text;
}

/// `text` in lines of at most `most` characters, broken at blanks; at most `most_lines`, the rest is left out.
std::vector<std::string> wrapped(const std::string& text, size_t most, size_t most_lines) {
  std::vector<std::string> lines;
  std::istringstream words(text);
  for (std::string word; words >> word;) {
    if (!lines.empty() && lines.back().size() + 1 + word.size() <= most)
      lines.back() += " " + word;
    else if (lines.size() < most_lines)
      lines.push_back(word);
    else
      return lines.back() += " …", lines;
  }
  return lines;
}

class Picture {
 public:
  explicit Picture(const std::vector<Scan>& scans) : chart_(chart(scans)) {
    width_ = std::max<size_t>(2 * margin + block_width + chart_.places.size() * place_width - 16,
                              2 * margin + 2 * legend_width);
  }

  void write(std::ostream& out) {
    heading();
    for (const auto& row : chart_.rows) write_row(row);
    rule();
    quiet_blocks();
    write_legend();
    out << "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 " << width_ << " " << y_ << "\" width=\"" << width_
        << "\" height=\"" << y_ << "\" role=\"img\" aria-labelledby=\"title description\">\n<title id=\"title\">"
        << escaped(chart_.title) << "</title>\n<desc id=\"description\">";
    describe(out);
    out << "</desc>\n<style>" << markup_style << style << "</style>\n"
        << markup_patterns << "\n<rect class=\"paper\" width=\"100%\" height=\"100%\"/>\n"
        << body_.str() << "</svg>\n";
  }

 private:
  /// A line of text with its left end, or of class `end` its right end, at `x`. It cannot grow beyond the picture's
  /// width.
  void text(size_t x, std::string_view classes, const std::string& content) {
    body_ << "<text x=\"" << x << "\" y=\"" << y_ << "\" class=\"" << classes << "\">" << escaped(content)
          << "</text>\n";
  }

  static size_t place_start(size_t place) { return margin + block_width + place * place_width; }

  static std::string box(size_t x, size_t y, size_t width, size_t height) {
    return "x=\"" + std::to_string(x) + "\" y=\"" + std::to_string(y) + "\" width=\"" + std::to_string(width) +
           "\" height=\"" + std::to_string(height) + "\"";
  }

  void heading() {
    y_ = margin + line_height;
    text(margin, "title", shortened(chart_.title, (width_ - 2 * margin) / 11));
    const size_t top = y_ + 36;
    size_t bottom = top;
    for (size_t i = 0; i < chart_.places.size(); ++i) {
      const Place& place = chart_.places[i];
      y_ = top;
      // Cuts what is too wide, or too high, for its column.
      body_ << "<svg " << box(place_start(i), 0, place_width - 12, top + 5 * line_height) << ">\n";
      for (const auto& line : wrapped(place.name, name_length, 2)) {
        text(0, "name", shortened(line, name_length));
        y_ += line_height;
      }
      for (const auto& line : {place.time, place.summary, place.verdict}) {
        if (line.empty()) continue;
        text(0, "muted", line);
        y_ += line_height;
      }
      body_ << "</svg>\n";
      bottom = std::max(bottom, y_);
    }
    y_ = bottom + 10;
    text(margin, "small muted", "block, MHz");
    for (size_t i = 0; i < chart_.places.size(); ++i) {
      write_scale(body_, box(place_start(i), y_ - 10, bar_width, 12));
      text(place_start(i) + level_end, "small muted end", "dBµV");
      text(place_start(i) + count_end, "small muted end", "services");
    }
    y_ += 10;
    rule();
  }

  void rule() { body_ << "<path class=\"rule\" d=\"M" << margin << " " << y_ << ".5H" << width_ - margin << "\"/>\n"; }

  void write_row(const Row& row) {
    y_ += row_height - 8;
    const std::string name(block_name(row.frequency));
    text(margin, "block", name);
    text(margin + 40, "muted", megahertz(row.frequency));
    for (size_t i = 0; i < row.cells.size(); ++i) {
      if (row.cells[i] == nullptr) continue;
      const Entry& entry = *row.cells[i];
      body_ << "<g><title>"
            << escaped(chart_.places[i].name + ", " + block_title(row.frequency) + ": " + in_words(row, i))
            << "</title>";
      write_bar(body_, entry.rssi, reception(entry), box(place_start(i), y_ - bar_height + 1, bar_width, bar_height));
      text(place_start(i) + level_end, "end", std::to_string(entry.rssi));
      text(place_start(i) + count_end, "block end", service_count(entry));
      if (row.best == i) write_star(body_, box(place_start(i) + star_start, y_ - 11, 12, 12));
      body_ << "</g>\n";
    }
    y_ += 8;
  }

  void quiet_blocks() {
    y_ += 8;
    for (const auto& line : wrapped(chart_.quiet, (width_ - 2 * margin) / 7, 41)) {
      y_ += line_height;
      text(margin, "muted", line);
    }
  }

  void write_legend() {
    const size_t columns = std::min<size_t>((width_ - 2 * margin) / legend_width, 3);
    const size_t lines = legend.size() / columns;
    const size_t top = y_ + 12;
    body_ << "<g class=\"legend\">\n";
    for (size_t i = 0; i < legend.size(); ++i) {
      const size_t x = margin + i / lines * legend_width;
      y_ = top + (i % lines + 1) * (row_height - 4);
      write_bar(body_, signal_scale_end, legend[i].reception, box(x, y_ - bar_height + 1, 32, bar_height));
      text(x + 42, "muted", std::string(legend[i].text));
    }
    body_ << "</g>\n";
    if (chart_.places.size() > 1) {
      y_ += row_height - 4;
      write_star(body_, box(margin + 10, y_ - 11, 12, 12));
      text(margin + 42, "muted", "the place where the block is received best");
    }
    y_ += margin;
  }

  void describe(std::ostream& out) const {
    for (const auto& row : chart_.rows) {
      out << block_title(row.frequency) << ":";
      for (size_t i = 0; i < row.cells.size(); ++i)
        out << (i == 0 ? " " : "; ") << escaped(chart_.places[i].name) << " " << in_words(row, i);
      out << ".\n";
    }
    out << chart_.quiet;
  }

  Chart chart_;
  size_t width_ = 0;
  size_t y_ = 0;  ///< baseline of the line being written; at the end the picture's height
  std::ostringstream body_;
};

}  // namespace

void write_picture(std::ostream& out, const std::vector<Scan>& scans) { Picture(scans).write(out); }

}  // namespace survey
