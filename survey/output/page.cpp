// SPDX-License-Identifier: GPL-3.0-or-later
// Writes the page from its head to its end.
#include "survey/output/page.h"

#include <algorithm>
#include <string>

#include "survey/file/search.h"
#include "survey/output/chart.h"
#include "survey/output/markup.h"
#include "survey/text/codes.h"
#include "survey/text/scales.h"

namespace survey {

namespace {

// The policy forbids everything that the page does not contain: a second defence against markup in labels and answers.
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
  --muted: #59626b; --rule: #d5d9dd; --paper: #ffffff; --text: #1d2329; --best: #f1f5fa; --edge: #6f8aa8;
  --shade: #1d232966 }
body { margin: 0 auto; padding: 2rem 1rem 3rem; overflow-wrap: anywhere }
h1 { font-size: 1.5rem; line-height: 1.2; font-weight: 600; margin: 0 0 .8rem }
h1 bdi { display: block; max-height: 7.2em; overflow: hidden }
h2 { font-size: 1.2rem; font-weight: 600; margin: 2.5rem 0 0 }
h3 { font-size: 1rem; font-weight: 600; margin: 1.6rem 0 .3rem; padding-top: .5rem; border-top: 1px solid var(--rule) }
p { margin: .6rem 0 0; max-width: 76rem }
a { color: inherit; text-decoration-color: var(--muted); text-underline-offset: .2em }
bdi { overflow: clip; overflow-clip-margin: .2em }
.muted, h3 span { color: var(--muted); font-size: .875rem; font-weight: 400 }
.words { position: absolute; width: 1px; height: 1px; overflow: hidden; clip-path: inset(50%); white-space: nowrap }
.short { display: none }
.chart { overflow-x: auto; margin-top: 1rem; background:
  linear-gradient(to left, var(--paper) 40%, transparent) right / 3rem 100% no-repeat local,
  linear-gradient(to left, var(--shade), transparent) right / .9rem 100% no-repeat scroll }
table { border-collapse: collapse; width: 100% }
th, td { text-align: left; padding: .15rem .35rem; position: relative; vertical-align: middle; font-weight: 400 }
thead th { line-height: 1.3; vertical-align: top }
thead tr:last-child, tbody tr:last-child { border-bottom: 1px solid var(--rule) }
thead td { padding-top: .7rem }
tr > :first-child { position: sticky; left: 0; z-index: 1; background: var(--paper); width: 6.5rem; white-space: nowrap;
  padding-left: 0 }
tbody th { font-weight: 600 }
.place { display: flex; gap: .5rem; padding-left: .3rem; min-width: 6rem }
.badge { flex: none; align-self: flex-start; min-width: 1.3rem; box-sizing: border-box; padding: 0 .2rem;
  border-radius: .25rem; background: var(--text); color: var(--paper); font-size: .8125rem; line-height: 1.3rem;
  font-weight: 600; text-align: center }
.place bdi { display: block; font-weight: 600; max-width: 22rem; max-height: 7.8em; overflow: hidden }
.place .file { font-weight: 400 }
.cell { display: grid; grid-template-columns: minmax(3rem, 1fr) 1.9rem 1.6rem 2.9rem; align-items: center;
  gap: .3rem; padding: .15rem .3rem; border-radius: .25rem; line-height: 1.2; text-align: right; white-space: nowrap }
.one { max-width: 40rem }
.two .cell { grid-template-columns: minmax(3rem, 1fr) 1.9rem 1.6rem 2.9rem 5rem }
.cell.best { background: var(--best); box-shadow: inset 0 0 0 1px var(--edge) }
.cell .bar, .cell .scale { width: 100%; height: .7rem }
.cell .unmeasured { grid-column: 1 / -1; text-align: left }
.services { font-weight: 600; grid-column: 4 }
.lead { text-align: left; padding-left: .4rem; font-size: .875rem }
thead .cell { color: var(--muted); font-size: .6875rem; align-items: end }
thead .services { font-weight: 400 }
.legend { display: flex; flex-wrap: wrap; gap: .3rem 1.5rem; margin: 1rem 0 0; padding: 0; list-style: none }
.legend li { display: flex; align-items: center; gap: .5rem }
.legend svg { flex: none; width: 2rem; height: .7rem }
.legend .cell { width: 2rem; height: 1rem; padding: 0 }
.stations { display: grid; grid-template-columns: repeat(auto-fill, minmax(min(19.5rem, 100%), 1fr)); gap: .75rem 2rem;
  margin: .6rem 0 0; padding: 0; list-style: none }
.stations li { break-inside: avoid; min-width: 0; line-height: 1.35 }
.stations bdi { font-weight: 600 }
.stations span { display: block }
.stations code { display: block; font: .8125rem/1.5 ui-monospace, monospace; user-select: all }
@media (max-width: 40rem), print {
  .long { display: none }
  .short { display: inline }
  th, td { padding: .15rem .1rem }
  tr > :first-child { width: 3.2rem }
  .place { display: block; min-width: 6.3rem; font-size: .875rem }
  .place .muted { font-size: .75rem }
  .badge { display: inline-block }
  tbody th span { display: block; font-size: .75rem }
  .cell, .two .cell { grid-template-columns: 1.3rem 1.2rem 1.3rem 1fr; gap: .15rem .2rem; padding: .15rem .2rem;
    font-size: .875rem }
  .cell .bar, .cell .scale { grid-column: 1 / -1 }
  .services { grid-column: 3 }
  .lead { font-size: .6875rem; padding: 0; text-align: right; white-space: normal; overflow-wrap: normal }
  .stations span { display: inline-block }
}
@media screen and (prefers-color-scheme: dark) {
  :root { --muted: #a3abb3; --rule: #343b42; --paper: #13171b; --text: #e4e7ea; --best: #1b242e; --edge: #6d88a6;
    --shade: #e4e7ea55 }
}
@media print {
  body { padding: 0; max-width: none !important; font-size: .8rem }
  .chart { overflow: visible }
  tr > :first-child { position: static }
  tr { break-inside: avoid }
  h2, h3 { break-after: avoid }
  a { text-decoration: none }
}
)";

constexpr size_t most_long_names = 4;
constexpr std::string_view hidden = "aria-hidden=\"true\"";

class Page {
 public:
  Page(std::ostream& out, const std::vector<Scan>& scans)
      : out_(out), stations_(stations(scans)), chart_(chart(scans, stations_)) {}

  void write() {
    out_ << head << "<title>" << escaped(chart_.title) << "</title>\n<style>" << markup_style() << style
         << "</style>\n</head>\n<body style=\"max-width: " << std::max<size_t>(76, 8 + 17 * chart_.places.size())
         << "rem\">\n<svg width=\"0\" height=\"0\" " << hidden << " style=\"position: absolute\">" << markup_patterns
         << "</svg>\n<h1>" << bdi(chart_.title) << "</h1>\n";
    table();
    write_legend();
    for (const auto* notes : {&chart_.quiet, &chart_.alone})
      for (const Note& note : *notes) write_note(note);
    out_ << "<h2>Stations</h2>\n";
    if (stations_.empty()) out_ << "<p>No station was received.</p>\n";
    for (auto next = stations_.cbegin(); next != stations_.cend();) next = block(next);
    out_ << "</body>\n</html>\n";
  }

 private:
  using Position = std::vector<Station>::const_iterator;

  /// Text from a file, whose direction does not spread to what surrounds it.
  static std::string bdi(std::string_view text) { return "<bdi>" + escaped(text) + "</bdi>"; }

  /// Text with a shorter form for narrow screens, and for many places.
  std::string either(const std::string& text, const std::string& shorter) const {
    if (chart_.places.size() > most_long_names || text == shorter) return escaped(shorter);
    return "<span class=\"long\">" + escaped(text) + "</span><span class=\"short\">" + escaped(shorter) + "</span>";
  }

  bool several() const { return chart_.places.size() > 1; }

  void table() {
    out_ << "<p class=\"muted\" id=\"figures\">Signal strength in dBµV, SNR in dB and number of services of each "
            "block</p>"
         << "\n<div class=\"chart\" role=\"region\" aria-labelledby=\"figures\" tabindex=\"0\">\n<table"
         << (chart_.places.size() == 1   ? " class=\"one\""
             : chart_.places.size() == 2 ? " class=\"two\""
                                         : "")
         << ">\n<thead>\n<tr><td></td>";
    for (size_t i = 0; i < chart_.places.size(); ++i) place_heading(i);
    out_ << "</tr>\n<tr " << hidden << "><td></td>";
    for (size_t i = 0; i < chart_.places.size(); ++i) {
      out_ << "\n<td><div class=\"cell\">";
      write_scale(out_, "");
      out_ << "<span class=\"long\">dBµV</span><span class=\"long\">SNR</span><span class=\"long "
              "services\">services</span>"
           << "</div></td>";
    }
    out_ << "</tr>\n</thead>\n<tbody>\n";
    for (const auto& row : chart_.rows) table_row(row);
    out_ << "</tbody>\n</table>\n</div>\n";
  }

  void place_heading(size_t index) {
    const Place& place = chart_.places[index];
    out_ << "\n<th scope=\"col\"><div class=\"place\">";
    if (several()) out_ << "<span class=\"badge\">" << index + 1 << "</span>";
    out_ << "<div>";
    if (several()) out_ << "<bdi>" << either(place.name, place.short_name) << "</bdi>";  // otherwise the title has it
    if (!place.file.empty()) out_ << "<bdi class=\"file\">" << escaped(place.file) << "</bdi>";
    out_ << "<span class=\"muted\">" << either(place.time, place.short_time);
    if (!place.time.empty()) out_ << "<br>";
    out_ << place.summary;
    if (!place.verdict.empty()) out_ << "<br>" << place.verdict;
    out_ << "</span></div></div></th>";
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
      out_ << "\n<td><span class=\"words\">" << in_words(row, i) << "</span><div class=\"cell"
           << (row.is_best(i) ? " best" : "") << "\" " << hidden << ">";
      write_figures(row, i);
      out_ << "</div></td>";
    }
    out_ << "</tr>\n";
  }

  void write_figures(const Row& row, size_t place) {
    if (row.reception_at(place) == Reception::not_measured) {
      out_ << "<span class=\"muted unmeasured\">" << row_of(Reception::not_measured).words << "</span>";
      return;
    }
    const Entry& entry = *row.cells[place];
    write_bar(out_, entry.rssi, reception(entry), "");
    out_ << "<span>" << entry.rssi << "</span><span>" << snr_figure(entry) << "</span><span class=\"services\">"
         << service_figure(entry) << "</span>";
    if (row.is_best(place) && !lead(row).empty()) out_ << "<span class=\"lead\">" << lead(row) << "</span>";
  }

  void write_note(const Note& note) {
    out_ << "<p class=\"muted\">" << note.head;
    for (const std::string& item : note.items) out_ << (&item == &note.items.front() ? ": " : ", ") << bdi(item);
    out_ << ".</p>\n";
  }

  void write_legend() {
    out_ << "<ul class=\"legend muted\">\n";
    for (const Reception reception : legend) {
      out_ << "<li>";
      write_bar(out_, signal_scale_end, reception, hidden);
      out_ << explained(reception) << "</li>\n";
    }
    if (several())
      out_ << "<li><span class=\"cell best\" " << hidden << "></span>" << best_explained(chart_.places.size())
           << "</li>\n";
    out_ << "</ul>\n";
  }

  /// The stations of the block of `first`; returns the first of the next block.
  Position block(Position first) {
    const uint32_t frequency = first->entry->frequency;
    const auto row = std::ranges::find(chart_.rows, frequency, &Row::frequency);
    const bool has_best = row != chart_.rows.end() && !row->best.empty();
    const Entry& entry = has_best ? *row->cells[row->best.front()] : *first->entry;
    out_ << "<section>\n<h3 id=\"f" << frequency << "\">" << block_title(frequency) << " <span>" << megahertz(frequency)
         << " MHz, index " << entry.index;
    if (has_best) out_ << ", best at place " << place_numbers(row->best);
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
    if (service.encrypted) add("encrypted");
    if (several()) add("at " + place_numbers(station.received));
    add(unplayable(*station.entry, service));
    out_ << "<li>" << bdi(service.label);
    if (!facts.empty()) out_ << " <span class=\"muted\">" << escaped(facts) << "</span>";
    const std::string options = play_options(*station.entry, service);
    if (!options.empty()) out_ << "<code>kelvo-spidev " << escaped(options) << "</code>";
    out_ << "</li>\n";
  }

  std::ostream& out_;
  std::vector<Station> stations_;
  Chart chart_;
};

}  // namespace

void write_page(std::ostream& out, const std::vector<Scan>& scans) { Page(out, scans).write(); }

}  // namespace survey
