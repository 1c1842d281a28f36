// SPDX-License-Identifier: GPL-3.0-or-later
// What the records say in words.
#include "survey/file/model.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <tuple>

#include "survey/text/codes.h"

namespace survey {

std::vector<std::string> place_parts(const Scan& scan) {
  const Location& at = scan.location;
  std::string street = at.street;
  if (!street.empty() && !at.street_no.empty()) street += " " + at.street_no;
  std::vector<std::string> parts = {street, at.floor, at.city};
  std::erase(parts, "");
  if (parts.empty()) parts.push_back(scan.file);
  return parts;
}

std::string place_name(const Scan& scan) {
  std::string name;
  for (const std::string& part : place_parts(scan)) name += (name.empty() ? "" : ", ") + part;
  return name;
}

const Time* scan_time(const Scan& scan) {
  const auto entry = std::ranges::find_if(scan.entries, [](const Entry& other) { return other.time.has_value(); });
  return entry == scan.entries.end() ? nullptr : &*entry->time;
}

std::string time_text(const Time* time) {
  if (time == nullptr) return {};
  std::array<char, 64> text{};
  static_cast<void>(std::snprintf(text.data(), text.size(), "%u-%02u-%02u %02u:%02u UTC", time->year, time->month,
                                  time->day, time->hour, time->minute));
  return text.data();
}

const Component* main_component(const Service& service) {
  const auto rank = [](const Component& component) { return std::tuple(component.transport == 0, component.primary); };
  const auto found = std::ranges::max_element(service.components, {}, rank);  // the first of equals
  return found == service.components.end() ? nullptr : &*found;
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
