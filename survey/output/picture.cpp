// SPDX-License-Identifier: GPL-3.0-or-later
// Lays the picture out line by line.
#include "survey/output/picture.h"

#include <algorithm>
#include <sstream>
#include <string>

#include "survey/output/chart.h"
#include "survey/output/markup.h"
#include "survey/text/codes.h"
#include "survey/text/scales.h"

namespace survey {

namespace {

// All lengths are in pixels of the picture's own coordinates.
constexpr size_t margin = 28;
constexpr size_t block_width = 112;
constexpr size_t least_bar = 132;
constexpr size_t strength_end = 36;  // behind the bar: where the figure in dBµV ends, and so on
constexpr size_t snr_end = 70;
constexpr size_t services_end = 122;
constexpr size_t lead_start = 134;
constexpr size_t lead_end = 196;  // of two places
constexpr size_t gap = 26;        // between places
constexpr size_t row_height = 28;
constexpr size_t line_height = 18;
constexpr size_t bar_height = 11;
constexpr size_t badge_size = 18;
constexpr size_t name_length = 28;  // characters
constexpr size_t title_width = 11;  // of a character, about
constexpr size_t text_width = 7;
constexpr size_t legend_width = 340;
constexpr size_t quiet_lines = 50, alone_lines = 4;

constexpr std::string_view style = R"(
svg { font: 13px system-ui, sans-serif; font-variant-numeric: tabular-nums }
.paper { fill: #ffffff }
.title { font-size: 20px; font-weight: 600 }
.name { font-size: 14px; font-weight: 600 }
.block { font-weight: 600 }
.small { font-size: 11px }
.end { text-anchor: end }
.middle { text-anchor: middle }
.rule { stroke: #d5d9dd }
.badge { fill: #3c4650 }
svg .number { font-size: 12px; font-weight: 600; fill: #ffffff }
.mark { fill: #f1f5fa; stroke: #6f8aa8 }
@media screen and (prefers-color-scheme: dark) {
  .paper { fill: #13171b }
  .rule { stroke: #343b42 }
  .badge { fill: #c9d1d9 }
  svg .number { fill: #13171b }
  .mark { fill: #1b242e; stroke: #6d88a6 }
}
)";

bool begins_character(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }

size_t length(std::string_view text) { return static_cast<size_t>(std::ranges::count_if(text, begins_character)); }

/// The first `most` characters of `text`, the last of them an ellipsis where more would follow.
std::string shortened(const std::string& text, size_t most) {
  size_t characters = 0;
  size_t last_start = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    if (!begins_character(text[i])) continue;
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
    if (!lines.empty() && length(lines.back()) + 1 + length(word) <= most)
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
  explicit Picture(const std::vector<Scan>& scans) : chart_(chart(scans, stations(scans))) {
    const size_t places = chart_.places.size();
    const size_t figures = places == 2 ? lead_end : services_end;
    const size_t least = block_width + places * (least_bar + figures + gap) - gap;
    // The legend may be wider: then the bars get the rest.
    const size_t content = std::max(least, 2 * legend_width);
    bar_width_ = least_bar + (content - least) / places;
    place_width_ = bar_width_ + figures + gap;
    width_ = 2 * margin + content;
  }

  void write(std::ostream& out) {
    heading();
    for (const auto& row : chart_.rows) write_row(row);
    y_ += 2;
    rule();
    y_ += 8;
    for (const Note& note : chart_.quiet) write_note(note, quiet_lines);
    for (const Note& note : chart_.alone) write_note(note, alone_lines);
    write_legend();
    out << "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 " << width_ << " " << y_ << "\" width=\"" << width_
        << "\" height=\"" << y_ << "\" role=\"img\" aria-labelledby=\"title description\">\n<title id=\"title\">"
        << escaped(chart_.title) << "</title>\n<desc id=\"description\">";
    describe(out);
    out << "</desc>\n<style>" << markup_style() << style << "</style>\n"
        << markup_patterns << "\n<rect class=\"paper\" width=\"100%\" height=\"100%\"/>\n"
        << body_.str() << "</svg>\n";
  }

 private:
  /// A line of text with its left end at `x`; of class `end` its right end, of class `middle` its middle.
  void text(size_t x, std::string_view classes, const std::string& content) {
    body_ << "<text x=\"" << x << "\" y=\"" << y_ << "\" class=\"" << classes << "\">" << escaped(content)
          << "</text>\n";
  }

  size_t place_start(size_t place) const { return margin + block_width + place * place_width_; }

  size_t bar_end(size_t place) const { return place_start(place) + bar_width_; }

  static std::string box(size_t x, size_t y, size_t width, size_t height) {
    return "x=\"" + std::to_string(x) + "\" y=\"" + std::to_string(y) + "\" width=\"" + std::to_string(width) +
           "\" height=\"" + std::to_string(height) + "\"";
  }

  void heading() {
    y_ = margin;
    for (const auto& line : wrapped(chart_.title, (width_ - 2 * margin) / title_width, 2)) {
      y_ += 24;
      text(margin, "title", shortened(line, (width_ - 2 * margin) / title_width));
    }
    const size_t top = y_ + 36;
    size_t bottom = top;
    for (size_t i = 0; i < chart_.places.size(); ++i) {
      y_ = top;
      place_heading(i);
      bottom = std::max(bottom, y_);
    }
    y_ = bottom + 10;
    text(margin, "small muted", "block, MHz");
    for (size_t i = 0; i < chart_.places.size(); ++i) {
      write_scale(body_, box(place_start(i), y_ - 10, bar_width_, 12));
      text(bar_end(i) + strength_end, "small muted end", "dBµV");
      text(bar_end(i) + snr_end, "small muted end", "SNR");
      text(bar_end(i) + services_end, "small muted end", "services");
    }
    y_ += 10;
    rule();
  }

  void place_heading(size_t index) {
    const Place& place = chart_.places[index];
    const bool several = chart_.places.size() > 1;
    const size_t x = several ? badge_size + 8 : 0;
    if (several) {
      body_ << "<rect class=\"badge\" rx=\"4\" " << box(place_start(index), y_ - 14, badge_size, badge_size) << "/>\n";
      text(place_start(index) + badge_size / 2, "number middle", std::to_string(index + 1));
    }
    // Cuts what is too wide, or too high, for its column.
    body_ << "<svg " << box(place_start(index) + x, 0, place_width_ - gap / 2 - x, y_ + 6 * line_height) << ">\n";
    const auto line = [&](std::string_view classes, const std::string& content) {
      if (content.empty()) return;
      text(0, classes, shortened(content, 2 * name_length));
      y_ += line_height;
    };
    if (several)  // otherwise the title has it
      for (const auto& part : wrapped(place.name, name_length, 2)) line("name", shortened(part, name_length));
    for (const auto& content : {place.file, place.time, place.summary, place.verdict}) line("muted", content);
    body_ << "</svg>\n";
  }

  void rule() { body_ << "<path class=\"rule\" d=\"M" << margin << " " << y_ << ".5H" << width_ - margin << "\"/>\n"; }

  void write_row(const Row& row) {
    y_ += row_height - 8;
    text(margin, "block", std::string(block_name(row.frequency)));
    text(margin + 40, "muted", megahertz(row.frequency));
    for (size_t i = 0; i < row.cells.size(); ++i) {
      const size_t x = place_start(i);
      const bool best = row.is_best(i);
      body_ << "<g" << (best ? " class=\"best\"" : "") << "><title>"
            << escaped(chart_.places[i].name + ", " + block_title(row.frequency) + ": " + in_words(row, i))
            << "</title>";
      if (best) write_mark(x - 8, place_width_ - gap + 16, row_height - 4);
      write_cell(row, i, x);
      body_ << "</g>\n";
    }
    y_ += 8;
  }

  void write_mark(size_t x, size_t width, size_t height) {
    body_ << "<rect class=\"mark\" rx=\"4\" " << box(x, y_ - 4 - height / 2, width, height) << "/>";
  }

  void write_cell(const Row& row, size_t place, size_t x) {
    if (row.reception_at(place) == Reception::not_measured) {
      text(x, "muted", std::string(row_of(Reception::not_measured).words));
      return;
    }
    const Entry& entry = *row.cells[place];
    write_bar(body_, entry.rssi, reception(entry), box(x, y_ - bar_height + 1, bar_width_, bar_height));
    text(bar_end(place) + strength_end, "end", std::to_string(entry.rssi));
    text(bar_end(place) + snr_end, "end", snr_figure(entry));
    text(bar_end(place) + services_end, "block end", service_figure(entry));
    if (row.is_best(place)) text(bar_end(place) + lead_start, "small", lead(row));
  }

  void write_note(const Note& note, size_t most_lines) {
    for (const auto& line : wrapped(note.text(), (width_ - 2 * margin) / text_width, most_lines)) {
      y_ += line_height;
      text(margin, "muted", line);
    }
    y_ += 6;
  }

  void write_legend() {
    const size_t columns = std::min<size_t>((width_ - 2 * margin) / legend_width, 3);
    const size_t lines = std::size(legend) / columns;
    const size_t top = y_ + 8;
    body_ << "<g class=\"legend\">\n";
    for (size_t i = 0; i < std::size(legend); ++i) {
      const size_t x = margin + i / lines * legend_width;
      y_ = top + (i % lines + 1) * (row_height - 4);
      write_bar(body_, signal_scale_end, legend[i], box(x, y_ - bar_height + 1, 32, bar_height));
      text(x + 42, "muted", explained(legend[i]));
    }
    body_ << "</g>\n";
    if (chart_.places.size() > 1) {
      y_ += row_height - 4;
      write_mark(margin, 32, 16);
      text(margin + 42, "muted", best_explained(chart_.places.size()));
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
    for (const auto* notes : {&chart_.quiet, &chart_.alone})
      for (const Note& note : *notes) out << escaped(note.text()) << '\n';
  }

  Chart chart_;
  size_t bar_width_ = 0;
  size_t place_width_ = 0;  // with the gap behind it
  size_t width_ = 0;
  size_t y_ = 0;  ///< baseline of the line being written; at the end the picture's height
  std::ostringstream body_;
};

}  // namespace

void write_picture(std::ostream& out, const std::vector<Scan>& scans) { Picture(scans).write(out); }

}  // namespace survey
