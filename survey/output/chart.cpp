// SPDX-License-Identifier: GPL-3.0-or-later
// Words for what the scans received.
#include "survey/output/chart.h"

#include <algorithm>
#include <iterator>

#include "survey/text/codes.h"
#include "survey/text/text.h"

namespace survey {

namespace {

std::string counted(size_t count, const std::string& noun) {
  return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

std::string without_common_parts(const Scan& scan, const std::vector<Scan>& scans) {
  const auto everywhere = [&](const std::string& part) {
    return std::ranges::all_of(scans, [&](const Scan& other) {
      const std::vector<std::string> parts = place_parts(other);
      return std::ranges::find(parts, part) != parts.end();
    });
  };
  std::string name;
  for (const std::string& part : place_parts(scan))
    if (!everywhere(part)) name += (name.empty() ? "" : ", ") + part;
  return name.empty() ? place_name(scan) : name;
}

Place place(const std::vector<Scan>& scans, size_t index, const std::vector<Row>& rows) {
  const Scan& scan = scans[index];
  Place result;
  const std::string name = place_name(scan);
  result.name = visible(name);
  result.short_name = visible(without_common_parts(scan, scans));
  if (std::ranges::count(scans, name, place_name) > 1 && name != scan.file) result.file = visible(scan.file);
  result.time = time_text(scan_time(scan));
  result.short_time = result.time.substr(result.time.find('-') + 1, std::string_view("03-07 09:05").size());
  size_t ensembles = 0;
  size_t services = 0;
  for (const auto& entry : scan.entries) {
    if (is_received(reception(entry))) ++ensembles;
    services += entry.services.size();
  }
  result.summary = counted(ensembles, "ensemble") + ", " + counted(services, "service");
  if (scans.size() > 1) {
    const auto best = std::ranges::count_if(rows, [&](const Row& row) { return row.is_best(index); });
    result.verdict = "best for " + counted(static_cast<size_t>(best), "block");
  }
  return result;
}

// The blocks without a signal. One that was not measured everywhere is named with the places where it was not.
std::vector<Note> quiet_blocks(const std::vector<Row>& rows) {
  Note quiet{.head = "No signal", .items = {}};
  Note unmeasured{.head = "Not measured", .items = {}};
  for (const Row& row : rows) {
    if (row.reception() > Reception::no_signal) continue;
    std::string missing;
    for (size_t i = 0; i < row.cells.size(); ++i)
      if (row.reception_at(i) == Reception::not_measured)
        missing += (missing.empty() ? " at " : " and ") + std::to_string(i + 1);
    const bool everywhere = row.reception() == Reception::not_measured;
    (missing.empty() ? quiet : unmeasured).items.push_back(block_title(row.frequency) + (everywhere ? "" : missing));
  }
  std::vector<Note> notes = {std::move(quiet), std::move(unmeasured)};
  std::erase_if(notes, [](const Note& note) { return note.items.empty(); });
  return notes;
}

}  // namespace

std::string Note::text() const {
  std::string text = head;
  for (const std::string& item : items) text += (&item == &items.front() ? ": " : ", ") + item;
  return text + ".";
}

Chart chart(const std::vector<Scan>& scans, const std::vector<Station>& stations) {
  Chart result;
  const std::vector<Row> all = rows(scans);
  for (size_t i = 0; i < scans.size(); ++i) result.places.push_back(place(scans, i, all));
  result.title =
      "DAB reception at " + (scans.size() == 1 ? result.places.front().name : std::to_string(scans.size()) + " places");
  std::ranges::copy_if(all, std::back_inserter(result.rows),
                       [](const Row& row) { return row.reception() > Reception::no_signal; });
  result.quiet = quiet_blocks(all);
  const std::vector<std::vector<const Service*>> alone = received_alone(stations, scans.size());
  for (size_t i = 0; i < alone.size(); ++i) {
    if (alone[i].empty()) continue;
    Note& note = result.alone.emplace_back();
    note.head = "Only at place " + std::to_string(i + 1);
    for (const Service* service : alone[i]) note.items.push_back(visible(service->label));
  }
  return result;
}

std::string snr_figure(const Entry& entry) {
  return reception(entry) < Reception::too_weak ? "" : std::to_string(entry.snr);
}

std::string service_figure(const Entry& entry) {
  return is_received(reception(entry)) || !entry.services.empty() ? std::to_string(entry.services.size()) : "";
}

std::string in_words(const Row& row, size_t place) {
  std::string words(row_of(row.reception_at(place)).words);
  if (row.reception_at(place) == Reception::not_measured) return words;
  const Entry& entry = *row.cells[place];
  std::string text = std::to_string(entry.rssi) + " dBµV, ";
  if (!snr_figure(entry).empty()) text += "SNR " + snr_figure(entry) + " dB, ";
  text += words;
  if (!service_figure(entry).empty()) text += ", " + counted(entry.services.size(), "service");
  if (row.is_best(place)) text += ", best place" + (lead(row).empty() ? "" : ", " + lead(row));
  return text;
}

std::string place_numbers(const std::vector<size_t>& places) {
  std::string numbers;
  for (const size_t place : places) numbers += (numbers.empty() ? "" : ", ") + std::to_string(place + 1);
  return numbers;
}

std::string best_explained(size_t places) {
  return std::string("the place that receives the block best") +
         (places == 2 ? ", and how much more SNR it has (dB)" : "");
}

}  // namespace survey
