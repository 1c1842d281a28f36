// SPDX-License-Identifier: GPL-3.0-or-later
// What the full screen shows, drawn into the window of ncurses.
#include "watch/layout.h"

#include <ncurses.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>
#include <string_view>
#include <variant>

#include "survey/text/codes.h"
#include "survey/text/scales.h"

namespace {

using live::Measure;

constexpr Measure all_measures[] = {Measure::rssi, Measure::snr, Measure::quality};

struct Scale {
  const char* name;
  const char* unit;
  int end;  // of the bar and of the graph; both begin at 0
};

Scale scale(Measure measure, bool fm, bool unicode) {
  if (measure == Measure::rssi) return {"RSSI", unicode ? "dBµV" : "dBuV", survey::signal_scale_end};
  if (measure == Measure::snr) return {"SNR", "dB", 30};
  return {fm ? "Mult" : "FIC", "", 100};
}

// 3 x 5 cells of each digit and of the minus sign, a row after the other.
constexpr std::string_view figures[] = {"####.##.##.####", ".#..#..#..#..#.", "###..#####..###", "###..####..####",
                                        "#.##.####..#..#", "####..###..####", "####..####.####", "###..#..#..#..#",
                                        "####.#####.####", "####.####..####", "......###......"};
constexpr int figure_width = 3, figure_height = 5;

template <typename... Arguments>
std::string format(const char* pattern, Arguments... arguments) {
  std::array<char, 256> text{};
  static_cast<void>(std::snprintf(text.data(), text.size(), pattern, arguments...));
  return text.data();
}

// Eighths of a cell that show `value` in the cell `cell` of `cells`.
int eighths(int value, int end, int cells, int cell) {
  return std::clamp(std::clamp(value, 0, end) * cells * 8 / end - 8 * cell, 0, 8);
}

enum Pair : short { good = 1, fair, poor };

// The colours of kelvo-survey.
short reception_pair(const live::Values& values) {
  const int snr = values[static_cast<size_t>(Measure::snr)];
  return snr >= survey::good_snr ? good : snr >= survey::fair_snr ? fair : poor;
}

struct Describe {
  std::string operator()(const live::Failure& failure) const { return failure.why; }
  std::string operator()(const live::Not_booted& /*nothing*/) const {
    return "The chip is not booted: kelvo-spidev -b D";
  }
  std::string operator()(const live::Dab_signal& signal) const {
    if (signal.frequency == 0) return "DAB, not tuned: kelvo-spidev -f INDEX";
    const std::string block(survey::block_name(signal.frequency));
    return format("DAB %s  %u.%03u MHz  index %u  %s%s", block.c_str(), signal.frequency / 1000,
                  signal.frequency % 1000, signal.index,
                  signal.acquired ? "acquired"
                  : signal.valid  ? "DAB signal"
                                  : "no DAB signal",
                  signal.muted ? ", muted" : "");
  }
  std::string operator()(const live::Fm_signal& signal) const {
    return format("FM  %u.%02u MHz  %s", signal.frequency / 1000, signal.frequency / 10 % 100,
                  signal.valid ? "station" : "no station");
  }
};

// Draws one view from the top row down; `row_` is the next one.
class Drawing {
 public:
  Drawing(const View& view, const Abilities& able) : view_(view), able_(able) {
    getmaxyx(stdscr, height_, width_);
    fm_ = std::holds_alternative<live::Fm_signal>(view.sample.reading);
    values_ = live::values(view.sample);
  }

  void all() {
    erase();
    text(row_++, 0, std::visit(Describe{}, view_.sample.reading), A_BOLD);
    if (height_ >= 20 && wide()) large_figures();
    for (const Measure measure : all_measures) bar(measure);
    const int left = height_ - row_ - 1;
    const int positions = std::min(1 + static_cast<int>(view_.history.earlier()), std::max(1, left / 2));
    graph(left - positions);
    for (int age = 0; age < positions; ++age) position(static_cast<size_t>(age));
    text(height_ - 1, 0,
         format("space mark  +- %lld ms  b beep %s  q end", static_cast<long long>(view_.interval.count()),
                view_.beep ? "on" : "off"));
    refresh();
  }

 private:
  bool wide() const { return width_ >= 60; }

  // Cut at the right edge: ncurses would go on in the next row. Each character of `words` takes one column.
  void text(int row, int column, std::string_view words, attr_t attributes = A_NORMAL) const {
    if (row >= height_ || column >= width_) return;
    size_t length = 0;
    for (int left = width_ - column; length < words.size() && left >= 0; ++length)
      if ((static_cast<unsigned char>(words[length]) & 0xC0) != 0x80 && --left < 0) break;
    attron(attributes);
    mvaddnstr(row, column, words.data(), static_cast<int>(length));
    attroff(attributes);
  }

  attr_t colour(const live::Values& values) const {
    return able_.colour ? static_cast<attr_t>(COLOR_PAIR(reception_pair(values))) : A_NORMAL;
  }

  void large_figures() {
    row_ += 1;
    for (size_t i = 0; i < live::measures; ++i) {
      const int left = static_cast<int>(i) * width_ / static_cast<int>(live::measures);
      const std::string number = values_ ? std::to_string((*values_)[i]) : "-";
      for (size_t at = 0; at < number.size(); ++at)
        figure(number[at] == '-' ? 10 : static_cast<size_t>(number[at] - '0'),
               left + static_cast<int>(at) * (figure_width + 1));
      const Scale what = scale(all_measures[i], fm_, able_.unicode);
      text(row_ + figure_height - 1, left + static_cast<int>(number.size()) * (figure_width + 1),
           format("%s %s", what.name, what.unit));
    }
    row_ += figure_height + 1;
  }

  void figure(size_t which, int left) const {
    const attr_t attributes = (able_.unicode ? A_NORMAL : A_REVERSE) | (values_ ? colour(*values_) : A_NORMAL);
    for (int cell = 0; cell < figure_width * figure_height; ++cell)
      if (figures[which][static_cast<size_t>(cell)] == '#')
        text(row_ + cell / figure_width, left + cell % figure_width, able_.unicode ? "█" : " ", attributes);
  }

  // Name, value, bar, and the range since the mark.
  void bar(Measure measure) {
    const auto which = static_cast<size_t>(measure);
    const Scale what = scale(measure, fm_, able_.unicode);
    const live::Range& range = view_.history.position().ranges[which];
    std::string numbers;
    if (!range.empty()) numbers = format("%4d to %d", range.minimum(), range.maximum());
    if (!range.empty() && wide()) numbers += format(", mean %.1f", range.mean());
    const int left = 15, right = width_ - (wide() ? 25 : 12);
    text(row_, 0,
         format("%-4s %4s ", what.name, values_ ? std::to_string((*values_)[which]).c_str() : "-") +
             std::string(what.unit));
    std::string cells;
    for (int cell = 0; values_ && cell < right - left; ++cell)
      cells += cell_text(eighths((*values_)[which], what.end, right - left, cell), false);
    text(row_, left, cells, values_ ? colour(*values_) : A_NORMAL);
    text(row_, right, numbers);
    row_ += 1;
  }

  // A cell filled from the left or from below.
  std::string cell_text(int filled, bool from_below) const {
    static constexpr const char* across[] = {" ", "▏", "▎", "▍", "▌", "▋", "▊", "▉", "█"};
    static constexpr const char* up[] = {" ", "▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"};
    if (able_.unicode) return from_below ? up[filled] : across[filled];
    return filled >= 4 ? "#" : filled > 0 ? (from_below ? "_" : " ") : " ";
  }

  // The SNR of the last samples, the newest at the right edge; a sample without a reading leaves its column empty.
  void graph(int rows) {
    constexpr int axis = 4;
    const Scale what = scale(Measure::snr, fm_, able_.unicode);
    if (rows < 2) return static_cast<void>(row_ += std::max(rows, 0));
    text(row_, 0, format("%3d", what.end));
    text(row_ + rows - 1, 0, "  0");
    if (rows > 2) text(row_ + rows / 2, 0, what.name);
    const auto shown = std::min(view_.history.size(), static_cast<size_t>(std::max(width_ - axis, 0)));
    for (size_t age = 0; age < shown; ++age) {
      const std::optional<live::Values>& point = view_.history.back(age);
      if (!point) continue;
      const int snr = (*point)[static_cast<size_t>(Measure::snr)];
      for (int cell = 0; cell < rows; ++cell) {
        const int filled = std::max(eighths(snr, what.end, rows, cell), cell == 0 ? 1 : 0);
        if (filled > 0)
          text(row_ + rows - 1 - cell, width_ - 1 - static_cast<int>(age), cell_text(filled, true), colour(*point));
      }
    }
    row_ += rows;
  }

  void position(size_t age) {
    const live::Position& here = view_.history.position(age);
    std::string line = format("position %u", here.number);
    for (const Measure measure : {Measure::snr, Measure::rssi, Measure::quality}) {
      const live::Range& range = here.ranges[static_cast<size_t>(measure)];
      if (!range.empty()) line += format("  %s %.1f", scale(measure, fm_, able_.unicode).name, range.mean());
    }
    text(row_++, 0, line, age == 0 ? A_BOLD : A_NORMAL);
  }

  const View& view_;
  Abilities able_;
  int height_ = 0, width_ = 0, row_ = 0;
  bool fm_ = false;
  std::optional<live::Values> values_;
};

}  // namespace

bool has_signal(const live::Sample& sample) {
  if (const auto* const dab = std::get_if<live::Dab_signal>(&sample.reading)) return dab->valid;
  const auto* const fm = std::get_if<live::Fm_signal>(&sample.reading);
  return fm != nullptr && fm->valid;
}

void prepare_colours() {
  start_color();
  use_default_colors();
  // Blue, teal and amber differ for colour-blind people, too.
  const bool many = COLORS >= 256;
  init_pair(good, many ? 75 : COLOR_BLUE, -1);
  init_pair(fair, many ? 36 : COLOR_CYAN, -1);
  init_pair(poor, many ? 214 : COLOR_YELLOW, -1);
}

void draw(const View& view, const Abilities& abilities) { Drawing(view, abilities).all(); }
