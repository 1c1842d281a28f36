// SPDX-License-Identifier: GPL-3.0-or-later
// Writes the page from its head to its end.
#include "survey/output/page.h"

#include <algorithm>
#include <string>

#include "survey/output/markup.h"
#include "survey/text/codes.h"

namespace survey {

namespace {

// The policy is a second lock: nothing in the page asks for anything.
constexpr std::string_view head = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta name="color-scheme" content="light dark">
<meta http-equiv="Content-Security-Policy" content="default-src 'none'; style-src 'unsafe-inline'">
)";

constexpr std::string_view style = R"(
:root { font: 1rem/1.45 system-ui, sans-serif; font-variant-numeric: tabular-nums; -webkit-text-size-adjust: 100%;
  --muted: #59626b; --rule: #d5d9dd; --paper: #ffffff }
body { max-width: 76rem; margin: 0 auto; padding: 2rem 1rem 3rem; overflow-wrap: anywhere }
h1 { font-size: 1.5rem; line-height: 1.2; font-weight: 600; margin: 0 0 1.5rem }
h1 bdi { display: block; max-height: 7.2em; overflow: hidden }
h2 { font-size: 1.2rem; font-weight: 600; margin: 2.5rem 0 0 }
h3 { font-size: 1rem; font-weight: 600; margin: 1.6rem 0 .3rem; padding-top: .5rem; border-top: 1px solid var(--rule) }
p { margin: .6rem 0 0 }
a { color: inherit; text-decoration-color: var(--muted); text-underline-offset: .2em }
bdi { overflow: clip; overflow-clip-margin: .2em }
.muted, h3 span { color: var(--muted); font-size: .875rem; font-weight: 400 }
.words { position: absolute; width: 1px; height: 1px; overflow: hidden; clip-path: inset(50%); white-space: nowrap }
.chart { overflow-x: auto }
table { border-collapse: collapse; width: 100% }
caption { text-align: left; color: var(--muted); font-size: .875rem; padding-bottom: 1rem }
caption span { display: block; max-width: calc(100vw - 2rem) }
th, td { text-align: left; padding: .3rem 1.5rem .3rem 0; position: relative; vertical-align: bottom }
thead tr { border-bottom: 1px solid var(--rule) }
tbody tr:last-child { border-bottom: 1px solid var(--rule) }
tbody th, thead td { position: sticky; left: 0; z-index: 1; background: var(--paper); width: 6.5rem; white-space: nowrap }
tbody td, tbody th { vertical-align: middle }
thead th { min-width: 6.6rem; line-height: 1.3; font-weight: 400 }
thead bdi { display: block; font-weight: 600; max-width: 22rem; max-height: 7.8em; overflow: hidden }
.cell { display: grid; grid-template-columns: minmax(4rem, 1fr) 2.2rem 3.2rem .9rem; align-items: center; gap: .4rem;
  line-height: 1.2 }
.cell .bar, .cell .scale { width: 100%; height: .7rem }
.cell .star { grid-column: 4; width: .8rem; height: .8rem }
.strength, .count { text-align: right }
.count { grid-column: 3; font-weight: 600 }
thead .cell { margin-top: .7rem; align-items: end }
thead .strength, thead .count { color: var(--muted); font-size: .6875rem; font-weight: 400 }
.legend { display: flex; flex-wrap: wrap; gap: .3rem 1.5rem; margin: 1rem 0 0; padding: 0; list-style: none }
.legend li { display: flex; align-items: center; gap: .5rem }
.legend svg { flex: none; width: 2rem; height: .7rem }
.legend .star { width: .8rem; height: .8rem; margin: 0 .6rem }
.stations { display: grid; grid-template-columns: repeat(auto-fill, minmax(min(19.5rem, 100%), 1fr)); gap: .75rem 2rem;
  margin: .6rem 0 0; padding: 0; list-style: none }
.stations li { break-inside: avoid; min-width: 0; line-height: 1.35 }
.stations bdi { font-weight: 600 }
.stations span { display: block }
.stations code { display: block; font: .8125rem/1.5 ui-monospace, monospace; user-select: all }
@media (max-width: 40rem), print {
  th, td { padding-right: .75rem }
  tbody th, thead td { width: 3.5rem }
  tbody th span { display: block; font-size: .75rem }
  .cell { grid-template-columns: 1fr 3.2rem .9rem; gap: .15rem .3rem }
  .cell .bar, .cell .scale { grid-column: 1 / -1 }
  .cell .strength { text-align: left }
  .cell .count { grid-column: 2 }
  .cell .star { grid-column: 3 }
  .stations span { display: inline-block }
}
@media screen and (prefers-color-scheme: dark) {
  :root { --muted: #a3abb3; --rule: #343b42; --paper: #13171b }
}
@media print {
  body { padding: 0; max-width: none; font-size: .8rem }
  .chart { overflow: visible }
  tbody th, thead td { position: static }
  tr { break-inside: avoid }
  h2, h3 { break-after: avoid }
  a { text-decoration: none }
}
)";

constexpr std::string_view hidden = "aria-hidden=\"true\"";

class Page {
 public:
  Page(std::ostream& out, const std::vector<Scan>& scans)
      : out_(out), chart_(chart(scans)), stations_(stations(scans)) {}

  void write() {
    out_ << head << "<title>" << escaped(chart_.title) << "</title>\n<style>" << markup_style << style
         << "</style>\n</head>\n<body>\n<svg width=\"0\" height=\"0\" " << hidden << " style=\"position: absolute\">"
         << markup_patterns << "</svg>\n<h1>" << bdi(chart_.title) << "</h1>\n";
    table();
    if (!chart_.quiet.empty()) out_ << "<p class=\"muted\">" << escaped(chart_.quiet) << "</p>\n";
    write_legend();
    out_ << "<h2>Stations</h2>\n";
    if (stations_.empty()) out_ << "<p>No station was received.</p>\n";
    for (auto next = stations_.cbegin(); next != stations_.cend();) next = block(next);
    out_ << "</body>\n</html>\n";
  }

 private:
  using Position = std::vector<Station>::const_iterator;

  /// Text from a file, whose direction does not spread to what surrounds it.
  static std::string bdi(std::string_view text) { return "<bdi>" + escaped(text) + "</bdi>"; }

  bool several() const { return chart_.places.size() > 1; }

  void table() {
    out_ << "<div class=\"chart\" role=\"region\" aria-label=\"Reception by block and place\" tabindex=\"0\">\n"
         << "<table style=\"max-width: " << 7 + 24 * chart_.places.size()
         << "rem\">\n<caption><span>Signal strength in dBµV, "
         << "quality of reception and number of services of each block</span></caption>\n<thead>\n<tr><td></td>";
    for (size_t i = 0; i < chart_.places.size(); ++i) {
      const Place& place = chart_.places[i];
      out_ << "\n<th scope=\"col\">" << bdi((several() ? std::to_string(i + 1) + " " : "") + place.name)
           << "<span class=\"muted\">";
      for (const auto& line : {place.time, place.summary, place.verdict})
        if (!line.empty()) out_ << line << "<br>";
      out_ << "</span><div class=\"cell\" " << hidden << ">";
      write_scale(out_, "");
      out_ << "<span class=\"strength\">dBµV</span><span class=\"count\">services</span></div></th>";
    }
    out_ << "</tr>\n</thead>\n<tbody>\n";
    for (const auto& row : chart_.rows) table_row(row);
    out_ << "</tbody>\n</table>\n</div>\n";
  }

  void table_row(const Row& row) {
    const std::string name = block_title(row.frequency);
    const bool linked = std::ranges::any_of(
        stations_, [&](const Station& station) { return station.entry->frequency == row.frequency; });
    out_ << "<tr><th scope=\"row\">";
    if (linked)
      out_ << "<a href=\"#f" << row.frequency << "\">" << name << "</a>";
    else
      out_ << name;
    if (!block_name(row.frequency).empty()) out_ << " <span class=\"muted\">" << megahertz(row.frequency) << "</span>";
    out_ << "</th>";
    for (size_t i = 0; i < row.cells.size(); ++i) {
      out_ << "\n<td><span class=\"words\">" << in_words(row, i) << "</span>";
      if (row.cells[i] != nullptr) {
        const Entry& entry = *row.cells[i];
        out_ << "<div class=\"cell\" " << hidden << ">";
        write_bar(out_, entry.rssi, reception(entry), "");
        out_ << "<span class=\"strength\">" << entry.rssi << "</span>";
        if (const std::string count = service_count(entry); !count.empty())
          out_ << "<span class=\"count\">" << count << "</span>";
        if (row.best == i) write_star(out_, "");
        out_ << "</div>";
      }
      out_ << "</td>";
    }
    out_ << "</tr>\n";
  }

  void write_legend() {
    out_ << "<ul class=\"legend muted\">\n";
    for (const auto& item : legend) {
      out_ << "<li>";
      write_bar(out_, signal_scale_end, item.reception, hidden);
      out_ << item.text << "</li>\n";
    }
    if (several()) {
      out_ << "<li>";
      write_star(out_, hidden);
      out_ << "the place where the block is received best</li>\n";
    }
    out_ << "</ul>\n";
  }

  /// The stations of the block of `first`; returns the first of the next block.
  Position block(Position first) {
    const uint32_t frequency = first->entry->frequency;
    const auto row = std::ranges::find(chart_.rows, frequency, &Row::frequency);
    const bool has_best = row != chart_.rows.end() && row->best;
    const size_t best = has_best ? *row->best : first->best;
    const Entry& entry = best == first->best ? *first->entry : *row->cells[best];
    out_ << "<section>\n<h3 id=\"f" << frequency << "\">" << block_title(frequency) << " <span>" << megahertz(frequency)
         << " MHz, index " << entry.index;
    if (has_best) out_ << ", best at place " << best + 1;
    out_ << ": " << entry.rssi << " dBµV, SNR " << entry.snr << " dB, FIC quality " << entry.fic_quality
         << "</span></h3>\n<ul class=\"stations\">\n";
    auto station = first;
    for (; station != stations_.end() && station->entry->frequency == frequency; ++station) write_station(*station);
    out_ << "</ul>\n</section>\n";
    return station;
  }

  void write_station(const Station& station) {
    const Service& service = *station.service;
    std::string facts(service.data                  ? "Data"
                      : service.programme_type == 0 ? ""
                                                    : programme_type_name(service.programme_type));
    const auto add = [&](std::string_view fact) {
      facts += std::string(facts.empty() || fact.empty() ? "" : " · ") + std::string(fact);
    };
    add(country(*station.entry));
    if (several()) {
      std::string places;
      for (const size_t place : station.received) places += (places.empty() ? "at " : ", ") + std::to_string(place + 1);
      add(places);
    }
    out_ << "<li>" << bdi(service.label);
    if (!facts.empty()) out_ << " <span class=\"muted\">" << escaped(facts) << "</span>";
    const std::string options = play_options(*station.entry, service);
    if (!options.empty()) out_ << "<code>kelvo-spidev " << escaped(options) << "</code>";
    out_ << "</li>\n";
  }

  std::ostream& out_;
  Chart chart_;
  std::vector<Station> stations_;
};

}  // namespace

void write_page(std::ostream& out, const std::vector<Scan>& scans) { Page(out, scans).write(); }

}  // namespace survey
