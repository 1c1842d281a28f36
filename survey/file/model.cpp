// SPDX-License-Identifier: GPL-3.0-or-later
// Compares entries of equal frequency.
#include "survey/file/model.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <map>
#include <tuple>

#include "survey/text/codes.h"

namespace survey {

namespace {

// Greater is received better.
auto rank(const Entry& entry) { return std::tuple(reception(entry), entry.fic_quality, entry.snr, entry.rssi); }

bool better(const Entry& entry, const Entry* other) { return other == nullptr || rank(entry) > rank(*other); }

}  // namespace

Reception reception(const Entry& entry) {
  constexpr unsigned readable_fic_quality = 30;
  constexpr int signal_rssi = 20, fair_snr = 8, good_snr = 16;
  if (!entry.valid) return entry.rssi >= signal_rssi ? Reception::no_dab : Reception::no_signal;
  if (entry.fic_quality < readable_fic_quality) return Reception::too_weak;
  if (entry.snr < fair_snr) return Reception::poor;
  return entry.snr < good_snr ? Reception::fair : Reception::good;
}

bool has_signal(const Row& row) {
  return std::ranges::any_of(
      row.cells, [](const Entry* cell) { return cell != nullptr && reception(*cell) != Reception::no_signal; });
}

std::vector<Row> rows(const std::vector<Scan>& scans) {
  std::map<uint32_t, Row> by_frequency;
  for (size_t i = 0; i < scans.size(); ++i)
    for (const Entry& entry : scans[i].entries) {
      Row& row = by_frequency[entry.frequency];
      row.frequency = entry.frequency;
      row.cells.resize(scans.size());
      if (better(entry, row.cells[i])) row.cells[i] = &entry;
    }
  std::vector<Row> result;
  for (auto& [frequency, row] : by_frequency) {
    for (size_t i = 0; i < row.cells.size(); ++i) {
      const Entry* const cell = row.cells[i];
      if (scans.size() == 1 || cell == nullptr || reception(*cell) < Reception::poor) continue;
      if (!row.best || better(*cell, row.cells[*row.best])) row.best = i;
    }
    result.push_back(std::move(row));
  }
  return result;
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
        if (station.received.empty() || station.received.back() != i) station.received.push_back(i);
        if (!better(entry, station.entry)) continue;
        station.service = &service;
        station.entry = &entry;
        station.best = i;
      }
  std::ranges::stable_sort(result, {}, [](const Station& station) { return station.entry->frequency; });
  return result;
}

std::string place_name(const Scan& scan) {
  const Location& at = scan.location;
  std::string street = at.street;
  if (!street.empty() && !at.street_no.empty()) street += " " + at.street_no;
  std::string name;
  for (const std::string& part : {street, at.floor, at.city})
    if (!part.empty()) name += (name.empty() ? "" : ", ") + part;
  return name.empty() ? scan.file : name;
}

std::string time_text(const Scan& scan) {
  const auto entry = std::ranges::find_if(scan.entries, [](const Entry& other) { return other.time.has_value(); });
  if (entry == scan.entries.end()) return {};
  std::array<char, 64> text{};
  const Time& time = *entry->time;
  static_cast<void>(std::snprintf(text.data(), text.size(), "%u-%02u-%02u %02u:%02u UTC", time.year, time.month,
                                  time.day, time.hour, time.minute));
  return text.data();
}

const Component* main_component(const Service& service) {
  const auto audio = std::ranges::find(service.components, 0U, &Component::transport);
  if (audio != service.components.end()) return &*audio;
  return service.components.empty() ? nullptr : &service.components.front();
}

std::string play_options(const Entry& entry, const Service& service) {
  const Component* const component = main_component(service);
  if (service.data || component == nullptr) return {};
  if (entry.index == 0 || service.id == 0 || component->id == 0) return {};
  return "-f " + std::to_string(entry.index) + " -e " + std::to_string(service.id) + " -c " +
         std::to_string(component->id) + " -p";
}

// A data service's id
//   bits 31-24  extended country code
//   bits 23-20  country id
std::string_view country(const Entry& entry) {
  for (const Service& service : entry.services)
    if (service.data && !country_name(service.id >> 20).empty()) return country_name(service.id >> 20);
  return {};
}

}  // namespace survey
