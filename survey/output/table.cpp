// SPDX-License-Identifier: GPL-3.0-or-later
// Fits figures and texts into columns.
#include "survey/output/table.h"

#include <algorithm>
#include <string>

#include "survey/output/cells.h"
#include "survey/text/codes.h"

namespace survey {

namespace {

constexpr size_t least_bar = 4, longest_bar = 40;  // columns

std::string right(const std::string& text, size_t width) {
  return std::string(width - std::min(width, text.size()), ' ') + text;
}

// As `Reception` is ordered.
constexpr std::string_view colours[] = {"\033[2m", "\033[35m", "\033[31m", "\033[33m", "\033[36m", "\033[32m"};

/// A table of some of the places.
class Table {
 public:
  Table(std::ostream& out, const Terminal& terminal, size_t bar_width)
      : out_(out), terminal_(terminal), bar_(bar_width) {}

  static constexpr size_t row_head = 11;                    // "Block    kHz"
  static constexpr size_t figures = 3 + 5 + 4 + 4 + 4 + 1;  // gap, dBµV, SNR, FIC, number of services, mark

  void head(size_t first, size_t end) {
    out_ << cell("", row_head, terminal_);
    for (size_t i = first; i < end; ++i)
      out_ << "   "
           << (i + 1 < end ? cell(std::to_string(i + 1), bar_ + figures - 3, terminal_) : std::to_string(i + 1));
    out_ << "\nBlock   kHz";
    for (size_t i = first; i < end; ++i)
      out_ << "   " << cell(bar_ < 6 ? "" : "Signal", bar_, terminal_) << (terminal_.unicode ? " dBµV" : " dBuV")
           << " SNR FIC Svc" << (i + 1 < end ? " " : "");
    out_ << '\n';
  }

  void row(const Row& row, size_t first, size_t end) {
    std::string line = cell(block_name(row.frequency), 4, terminal_) + right(std::to_string(row.frequency), 7);
    for (size_t i = first; i < end; ++i) line += place(row, i);
    line.erase(line.find_last_not_of(' ') + 1);
    out_ << line << '\n';
  }

 private:
  std::string place(const Row& row, size_t i) const {
    const Entry* const entry = row.cells[i];
    if (entry == nullptr) return std::string(bar_ + figures, ' ');
    const Reception received = reception(*entry);
    const bool ensemble = received >= Reception::too_weak;
    std::string text = "   ";
    if (terminal_.colour) text += colours[static_cast<size_t>(received)];
    text += bar(entry->rssi, signal_scale_end, bar_, terminal_);
    if (terminal_.colour) text += "\033[0m";
    text += right(std::to_string(entry->rssi), 5);
    if (received == Reception::no_dab) return text + cell("  no DAB", 13, terminal_);
    text += right(ensemble ? std::to_string(entry->snr) : "-", 4);
    text += right(ensemble ? std::to_string(entry->fic_quality) : "-", 4);
    const bool listed = received >= Reception::poor || !entry->services.empty();
    text += right(listed ? std::to_string(entry->services.size()) : "-", 4);
    return text + (row.best == i ? '*' : ' ');
  }

  std::ostream& out_;
  const Terminal& terminal_;
  size_t bar_;
};

std::string title(const Row& row) {
  const std::string_view block = block_name(row.frequency);
  return block.empty() ? std::to_string(row.frequency) + " kHz" : std::string(block);
}

// ASCII text in lines of the terminal's width.
void write_wrapped(std::ostream& out, std::string_view text, const Terminal& terminal) {
  while (terminal.width != 0 && text.size() > terminal.width) {
    const size_t blank = text.rfind(' ', terminal.width);
    if (blank == text.npos) break;
    out << text.substr(0, blank) << '\n';
    text.remove_prefix(blank + 1);
  }
  out << text << '\n';
}

// "1  Main Street 12a, roof, Springfield  2026-03-07 09:05 UTC  scan.json"
void write_places(std::ostream& out, const std::vector<Scan>& scans, const Terminal& terminal) {
  for (size_t i = 0; i < scans.size(); ++i) {
    const std::string name = place_name(scans[i]);
    std::string line = std::to_string(i + 1) + "  " + name;
    if (const std::string time = time_text(scans[i]); !time.empty()) line += "  " + time;
    if (name != scans[i].file) line += "  " + scans[i].file;
    out << clipped(line, terminal.width, terminal) << '\n';
  }
}

}  // namespace

void write_table(std::ostream& out, const std::vector<Scan>& scans, const Terminal& terminal) {
  constexpr size_t default_width = 80;
  const size_t room =
      std::max(terminal.width == 0 ? default_width : terminal.width, Table::row_head + Table::figures + least_bar) -
      Table::row_head;
  const size_t side_by_side = std::min(room / (Table::figures + least_bar), scans.size());
  const size_t bar_width = std::min(room / side_by_side - Table::figures, longest_bar);
  const std::vector<Row> all = rows(scans);
  write_places(out, scans, terminal);
  for (size_t first = 0; first < scans.size(); first += side_by_side) {
    const size_t end = std::min(first + side_by_side, scans.size());
    out << '\n';
    Table table(out, terminal, bar_width);
    table.head(first, end);
    for (const Row& row : all)
      if (has_signal(row)) table.row(row, first, end);
  }
  std::string quiet;
  for (const Row& row : all)
    if (!has_signal(row)) quiet += (quiet.empty() ? "" : " ") + title(row);
  out << '\n';
  if (!quiet.empty()) write_wrapped(out, "No signal: " + quiet, terminal);
  write_wrapped(out,
                std::string(scans.size() > 1 ? "* best place. " : "") +
                    "SNR in dB; FIC: its quality, 0 to 100; Svc: services. Bars end at " +
                    std::to_string(signal_scale_end) + " dBuV.",
                terminal);
}

void write_stations(std::ostream& out, const std::vector<Station>& stations, const std::vector<Scan>& scans,
                    const Terminal& terminal) {
  constexpr size_t longest_label = 32;
  size_t label_width = std::string_view("Station").size();
  for (const Station& station : stations)
    label_width = std::max(label_width, std::min(columns(shown(station.service->label, terminal)), longest_label));
  const auto line = [&](std::string_view block, std::string_view label, std::string_view type,
                        const std::string& service, const std::string& component, std::string_view land,
                        const std::string& place) {
    const std::string text = cell(block, 5, terminal) + "  " + cell(label, label_width, terminal) + "  " +
                             cell(type, 15, terminal) + right(service, 12) + right(component, 7) + "  " +
                             cell(land, 2, terminal) + "  " + place;
    out << clipped(text, terminal.width, terminal) << '\n';
  };
  line("Block", "Station", "Programme type", "Service", "Comp", "In", "Best place");
  for (const Station& station : stations) {
    const Service& service = *station.service;
    const std::string_view block = block_name(station.entry->frequency);
    const Component* const component = main_component(service);
    line(block.empty() ? "-" : block, service.label,
         service.data ? "(data)" : programme_type_name(service.programme_type), std::to_string(service.id),
         component == nullptr ? "-" : std::to_string(component->id), country(*station.entry),
         place_name(scans[station.best]));
  }
}

}  // namespace survey
