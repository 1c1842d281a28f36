// SPDX-License-Identifier: GPL-3.0-or-later
// Fits figures and texts into columns.
#include "survey/output/table.h"

#include <algorithm>
#include <string>

#include "survey/file/search.h"
#include "survey/output/cells.h"
#include "survey/output/chart.h"
#include "survey/text/codes.h"
#include "survey/text/scales.h"

namespace survey {

namespace {

constexpr size_t default_width = 80;
constexpr size_t least_bar = 4, longest_bar = 40;  // columns

std::string right(const std::string& text, size_t width) {
  return std::string(width - std::min(width, text.size()), ' ') + text;
}

std::string or_dash(const std::string& figure) { return figure.empty() ? "-" : figure; }

/// A table of some of the places.
class Table {
 public:
  Table(std::ostream& out, const Terminal& terminal, size_t bar_width)
      : out_(out), terminal_(terminal), bar_(bar_width) {}

  static constexpr size_t row_head = 11;                    // "Block    kHz"
  static constexpr size_t figures = 3 + 5 + 4 + 4 + 4 + 1;  // gap, dBµV, SNR, FIC, number of services, mark

  void head(size_t first, size_t end) {
    std::string numbers = cell("", row_head, terminal_);
    std::string titles = "Block   kHz";
    for (size_t i = first; i < end; ++i) {
      numbers += "   " + cell(std::to_string(i + 1), bar_ + figures - 3, terminal_);
      titles += "   " + cell(bar_ < 6 ? "" : "Signal", bar_, terminal_) + (terminal_.unicode ? " dBµV" : " dBuV") +
                " SNR FIC Svc ";
    }
    write(numbers);
    write(titles);
  }

  void row(const Row& row, size_t first, size_t end) {
    std::string line = cell(block_name(row.frequency), 4, terminal_) + right(std::to_string(row.frequency), 7);
    for (size_t i = first; i < end; ++i) line += place(row, i);
    write(line);
  }

 private:
  void write(std::string& line) {
    line.erase(line.find_last_not_of(' ') + 1);
    out_ << line << '\n';
  }

  std::string place(const Row& row, size_t i) const {
    const Reception received = row.reception_at(i);
    if (received == Reception::not_measured) return "   " + cell(row_of(received).words, bar_ + figures - 3, terminal_);
    const Entry& entry = *row.cells[i];
    std::string text = "   ";
    if (terminal_.colour) text += row_of(received).terminal;
    text += bar(entry.rssi, signal_scale_end, bar_, terminal_);
    if (terminal_.colour) text += "\033[0m";
    text += right(std::to_string(entry.rssi), 5);
    if (received == Reception::no_dab) return text + cell("  no DAB", 13, terminal_);
    text += right(or_dash(snr_figure(entry)), 4);
    text += right(received >= Reception::too_weak ? std::to_string(entry.fic_quality) : "-", 4);
    text += right(or_dash(service_figure(entry)), 4);
    return text + (row.is_best(i) ? '*' : ' ');
  }

  std::ostream& out_;
  const Terminal& terminal_;
  size_t bar_;
};

// Text in lines of the terminal's width.
void write_wrapped(std::ostream& out, std::string_view text, const Terminal& terminal) {
  std::string line;
  const std::string whole = printable(text, terminal) + ' ';
  for (size_t begin = 0, blank = whole.find(' '); blank != whole.npos;
       begin = blank + 1, blank = whole.find(' ', begin)) {
    const std::string word = whole.substr(begin, blank - begin);
    if (terminal.width != 0 && !line.empty() && columns(line) + 1 + columns(word) > terminal.width) {
      out << line << '\n';
      line.clear();
    }
    line += (line.empty() ? "" : " ") + word;
  }
  out << line << '\n';
}

// "1  Main Street 12a, roof, Springfield  2026-03-07 09:05 UTC  scan.json"; on a narrow terminal the time stays whole.
void write_places(std::ostream& out, const std::vector<Scan>& scans, const Terminal& terminal) {
  const auto fitted = [&](std::string_view text, size_t used) {
    return clipped(text, terminal.width == 0 ? 0 : std::max(terminal.width, used + 1) - used, terminal);
  };
  for (size_t i = 0; i < scans.size(); ++i) {
    const std::string name = place_name(scans[i]);
    const std::string number = std::to_string(i + 1) + "  ";
    const std::string time = time_text(scan_time(scans[i]));
    const std::string end = (time.empty() ? "" : "  ") + time;
    std::string line = number;
    line.append(fitted(name, number.size() + end.size())).append(end);
    const size_t used = columns(line) + 2;
    if (name != scans[i].file && (terminal.width == 0 || used < terminal.width))
      line.append("  ").append(fitted(scans[i].file, used));
    out << line << '\n';
  }
  out << '\n';
}

// What chooses this station of `all`: "6B/Nova", or its id where the label is not unique, or not safe to type.
std::string name_to_type(const Station& station, const std::vector<Station>& all, const Terminal& terminal) {
  const std::string block = block_title(station.entry->frequency) + "/";
  const std::string& label = station.service->label;
  const std::vector<Station> found = stations_called(block + label, all);
  const bool unique = found.size() == 1 && found.front().service == station.service;
  const bool safe = !label.empty() && printable(label, terminal) == label && label.find('\'') == label.npos;
  return block + (unique && safe ? label : std::to_string(station.service->id));
}

std::string type_text(const Service& service) {
  return service.data ? "(data)" : std::string(programme_type_name(service.programme_type));
}

}  // namespace

void write_table(std::ostream& out, const std::vector<Scan>& scans, const Terminal& terminal) {
  const size_t width = terminal.width == 0 ? default_width : terminal.width;
  const size_t room = std::max(width, Table::row_head + Table::figures + least_bar) - Table::row_head;
  const size_t side_by_side = std::min(room / (Table::figures + least_bar), scans.size());
  const size_t bar_width = std::min(room / side_by_side - Table::figures, longest_bar);
  const Chart drawn = chart(scans, stations(scans));
  write_places(out, scans, terminal);
  for (size_t first = 0; first < scans.size(); first += side_by_side) {
    const size_t end = std::min(first + side_by_side, scans.size());
    Table table(out, terminal, bar_width);
    table.head(first, end);
    for (const Row& row : drawn.rows) table.row(row, first, end);
    out << '\n';
  }
  for (const auto* notes : {&drawn.quiet, &drawn.alone})
    for (const Note& note : *notes) write_wrapped(out, note.text(), terminal);
  write_wrapped(out,
                std::string(scans.size() > 1 ? "* best place. " : "") +
                    "SNR in dB; FIC: its quality, 0 to 100; Svc: services. Bars end at " +
                    std::to_string(signal_scale_end) + (terminal.unicode ? " dBµV." : " dBuV."),
                terminal);
}

void write_stations(std::ostream& out, const std::vector<Station>& stations, const std::vector<Scan>& scans,
                    const Terminal& terminal) {
  constexpr size_t longest_label = 32, least_label = 8, longest_type = 15, least_type = 4;
  constexpr size_t figures = 5 + 2 + 2 + 12 + 7 + 2 + 2;  // all other columns but the last, with their gaps
  const auto best = [&](const Station& station) { return scans.size() == 1 ? "" : place_numbers(station.best); };
  size_t label_width = std::string_view("Station").size();
  size_t best_width = scans.size() == 1 ? 0 : std::string_view("Best").size();
  size_t mark_width = 0;
  for (const Station& station : stations) {
    label_width = std::max(label_width, std::min(columns(printable(station.service->label, terminal)), longest_label));
    best_width = std::max(best_width, best(station).size());
    if (station.service->encrypted) mark_width = std::string_view("  encrypted").size();
  }
  const size_t fixed = figures + 2 + best_width + mark_width;
  const size_t width = terminal.width == 0 ? fixed + label_width + longest_type : terminal.width;
  const size_t room = width - std::min(width, fixed);
  label_width = std::clamp(room, least_label, label_width);
  const size_t rest = room - std::min(room, label_width);
  const size_t type_width = rest < least_type ? 0 : std::min(rest, longest_type);
  const auto line = [&](std::string_view block, std::string_view label, std::string_view type,
                        const std::string& service, const std::string& component, std::string_view country,
                        const std::string& place, std::string_view mark) {
    std::string text = cell(block, 5, terminal) + "  " + cell(label, label_width, terminal) + "  " +
                       (type_width == 0 ? "" : cell(type, type_width, terminal)) + right(service, 12) +
                       right(component, 7) + "  " + cell(country, 2, terminal) + "  " +
                       cell(place, best_width, terminal) + "  " + std::string(mark);
    text.erase(text.find_last_not_of(' ') + 1);
    out << text << '\n';
  };
  write_places(out, scans, terminal);
  line("Block", "Station", "Programme type", "Service", "Comp", "In", scans.size() == 1 ? "" : "Best", "");
  for (const Station& station : stations) {
    const Service& service = *station.service;
    const std::string_view block = block_name(station.entry->frequency);
    const Component* const component = main_component(service);
    line(block.empty() ? "-" : block, service.label, type_text(service), std::to_string(service.id),
         component == nullptr ? "-" : std::to_string(component->id), country(*station.entry), best(station),
         service.encrypted ? "encrypted" : "");
  }
}

void write_choice(std::ostream& out, const std::vector<Station>& found, const std::vector<Station>& all,
                  const Terminal& terminal) {
  for (const Station& station : found)
    out << "  --play '" << name_to_type(station, all, terminal) << "'  " << printable(station.service->label, terminal)
        << (station.service->programme_type == 0 ? "" : ", " + type_text(*station.service)) << '\n';
}

}  // namespace survey
