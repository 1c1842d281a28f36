// SPDX-License-Identifier: GPL-3.0-or-later
// The stations of the scans that are known.
#include "remote/stations.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <tuple>
#include <utility>

#include "survey/file/comparison.h"
#include "survey/text/codes.h"
#include "survey/text/text.h"

namespace remote {

namespace {

using Json = nlohmann::ordered_json;

// RFC 3339, UTC.
Json time_json(std::optional<std::time_t> time) {
  if (!time) return nullptr;
  std::tm utc{};
  gmtime_r(&*time, &utc);
  std::array<char, 32> text{};
  return std::string(text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &utc));
}

// Whether kelvo-remote can play the service: its component has audio.
bool is_playable(const survey::Station& station) {
  const survey::Component* const component = survey::main_component(*station.service);
  return !station.service->data && component != nullptr && component->transport == 0;
}

// By name as people read it, then by frequency.
std::vector<survey::Station> sorted_stations(const Scans& scans) {
  std::vector<survey::Station> found = survey::stations(scans);
  std::erase_if(found, [](const survey::Station& station) { return !is_playable(station); });
  std::ranges::stable_sort(found, {}, [](const survey::Station& station) {
    return std::tuple(survey::folded(station.service->label), station.entry->frequency);
  });
  return found;
}

Play order_of(const survey::Station& station) {
  return {.service_id = station.service->id,
          .component = survey::main_component(*station.service)->id,
          .index = static_cast<uint8_t>(station.entry->index)};
}

}  // namespace

void Stations::set_found(survey::Scan scan, std::time_t time) {
  Scans all = *scans();
  if (has_own_) all.pop_back();
  all.push_back(std::move(scan));
  has_own_ = true;
  set(std::move(all), time);
}

void Stations::set(Scans scans, std::optional<std::time_t> found) {
  Json list = Json::array();
  std::vector<Station> known;
  for (const survey::Station& station : sorted_stations(scans)) {
    const Play play = order_of(station);
    known.push_back({play, survey::visible(station.service->label)});
    list.push_back({{"name", known.back().name},
                    {"service_id", play.service_id},
                    {"component", play.component},
                    {"index", play.index},
                    {"block", survey::block_name(station.entry->frequency)},
                    {"khz", station.entry->frequency},
                    {"snr", station.entry->measured ? Json(station.entry->snr) : Json(nullptr)},
                    {"encrypted", station.service->encrypted}});
  }
  const Json whole{{"stations", std::move(list)}, {"found", time_json(found)}};
  auto json = std::make_shared<const std::string>(whole.dump());
  auto kept = std::make_shared<const Scans>(std::move(scans));
  const std::lock_guard lock(mutex_);
  scans_ = std::move(kept);
  json_ = std::move(json);
  known_ = std::move(known);
}

std::shared_ptr<const std::string> Stations::json() const {
  const std::lock_guard lock(mutex_);
  return json_;
}

std::shared_ptr<const Scans> Stations::scans() const {
  const std::lock_guard lock(mutex_);
  return scans_;
}

size_t Stations::size() const {
  const std::lock_guard lock(mutex_);
  return known_.size();
}

std::string Stations::name(const Play& play) const {
  const std::lock_guard lock(mutex_);
  const auto found = std::ranges::find(known_, play, &Station::play);
  return found != known_.end() ? found->name : "service " + std::to_string(play.service_id);
}

}  // namespace remote
