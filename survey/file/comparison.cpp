// SPDX-License-Identifier: GPL-3.0-or-later
// Compares entries of equal frequency.
#include "survey/file/comparison.h"

#include <algorithm>
#include <map>
#include <tuple>
#include <utility>

namespace survey {

namespace {

auto rank(const Entry& entry) { return std::tuple(reception(entry), entry.fic_quality, entry.snr, entry.rssi); }

std::string with_sign(int difference) { return "+" + std::to_string(difference); }

}  // namespace

bool better(const Entry& entry, const Entry& other) { return rank(entry) > rank(other); }

Reception Row::reception_at(size_t scan) const {
  return cells[scan] == nullptr ? Reception::not_measured : survey::reception(*cells[scan]);
}

bool Row::is_best(size_t scan) const { return std::ranges::find(best, scan) != best.end(); }

Reception Row::reception() const {
  Reception highest = Reception::not_measured;
  for (size_t i = 0; i < cells.size(); ++i) highest = std::max(highest, reception_at(i));
  return highest;
}

std::vector<Row> rows(const std::vector<Scan>& scans) {
  std::map<uint32_t, Row> by_frequency;
  for (size_t i = 0; i < scans.size(); ++i)
    for (const Entry& entry : scans[i].entries) {
      Row& row = by_frequency[entry.frequency];
      row.frequency = entry.frequency;
      row.cells.resize(scans.size());
      if (row.cells[i] == nullptr || better(entry, *row.cells[i])) row.cells[i] = &entry;
    }
  std::vector<Row> result;
  for (auto& [frequency, row] : by_frequency) {
    for (size_t i = 0; i < row.cells.size() && scans.size() > 1; ++i) {
      if (!is_received(row.reception_at(i))) continue;
      if (!row.best.empty() && better(*row.cells[row.best.front()], *row.cells[i])) continue;
      if (!row.best.empty() && better(*row.cells[i], *row.cells[row.best.front()])) row.best.clear();
      row.best.push_back(i);
    }
    result.push_back(std::move(row));
  }
  return result;
}

std::string lead(const Row& row) {
  if (row.cells.size() != 2 || row.best.empty()) return {};
  if (row.best.size() == 2) return "equal";
  const size_t best = row.best.front();
  if (!is_received(row.reception_at(1 - best))) return "only here";
  const Entry& entry = *row.cells[best];
  const Entry& other = *row.cells[1 - best];
  if (entry.snr > other.snr) return with_sign(entry.snr - other.snr) + " dB";
  if (entry.fic_quality > other.fic_quality)
    return "FIC " + with_sign(static_cast<int>(entry.fic_quality - other.fic_quality));
  return "signal " + with_sign(entry.rssi - other.rssi);
}

std::vector<Station> stations(const std::vector<Scan>& scans) {
  // The chip's order of services is that of the first scan that has them; later scans add to it.
  std::vector<Station> result;
  std::map<std::tuple<uint32_t, uint32_t, bool>, size_t> known;  // frequency, service id, data
  for (size_t i = 0; i < scans.size(); ++i)
    for (const Entry& entry : scans[i].entries)
      for (const Service& service : entry.services) {
        const auto [place, is_new] = known.try_emplace({entry.frequency, service.id, service.data}, result.size());
        if (is_new) result.emplace_back();
        Station& station = result[place->second];
        if (!station.received.empty() && station.received.back() == i) continue;  // twice in one list
        station.received.push_back(i);
        if (!is_new && better(*station.entry, entry)) continue;
        if (is_new || better(entry, *station.entry)) {
          station.service = &service;
          station.entry = &entry;
          station.best.clear();
        }
        station.best.push_back(i);
      }
  std::ranges::stable_sort(result, {}, [](const Station& station) { return station.entry->frequency; });
  return result;
}

std::vector<std::vector<const Service*>> received_alone(const std::vector<Station>& stations, size_t scans) {
  std::map<std::pair<uint32_t, bool>, std::vector<size_t>> received;  // by service id and data, in any block
  const auto places = [&](const Station& station) -> std::vector<size_t>& {
    return received[{station.service->id, station.service->data}];
  };
  for (const Station& station : stations)
    places(station).insert(places(station).end(), station.received.begin(), station.received.end());
  std::vector<std::vector<const Service*>> result(scans);
  for (const Station& station : stations) {
    std::vector<size_t>& at = places(station);
    const bool alone = !at.empty() && std::ranges::count(at, at.front()) == std::ssize(at);
    if (scans > 1 && alone) result[at.front()].push_back(station.service);
    if (alone) at.clear();  // its other blocks
  }
  return result;
}

}  // namespace survey
