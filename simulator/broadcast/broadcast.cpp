// SPDX-License-Identifier: GPL-3.0-or-later
// Questions about what is on the air.
#include "simulator/broadcast/broadcast.h"

#include <algorithm>

namespace sim {

const std::vector<uint32_t>& band_iii_frequencies() {
  static const std::vector<uint32_t> khz = {
      174928, 176640, 178352, 180064, 181936, 183648, 185360, 187072, 188928, 190640, 192352, 194064, 195936, 197648,
      199360, 201072, 202928, 204640, 206352, 208064, 209936, 210096, 211648, 213360, 215072, 216928, 217088, 218640,
      220352, 222064, 223936, 224096, 225648, 227360, 229072, 230784, 232496, 234208, 235776, 237488, 239200};
  return khz;
}

//   TMId 0, 1, 2   TT...... ..IIIIII   T TMId, I subchannel or FIDC id
//   TMId 3         TT.DIIII IIIIIIII   D data groups, I service component id
uint16_t Component::component_id() const {
  const unsigned transport = (tmid & 3U) << 14;
  if (tmid != 3) return static_cast<uint16_t>(transport | (id & 0x3FU));
  return static_cast<uint16_t>(transport | (dg ? 1U << 12 : 0U) | (id & 0xFFFU));
}

uint32_t list_size(const Service_list& list) {
  constexpr uint32_t list_head = 6;  // version, count and padding
  constexpr uint32_t service_head = 24;
  constexpr uint32_t component_length = 4;
  uint32_t size = list_head;
  for (const Service& service : list.services)
    size += service_head + component_length * static_cast<uint32_t>(service.components.size());
  return size;
}

size_t application_size(const User_application& application) {
  const size_t size = 3 + application.data.size();
  return size + size % 2;
}

size_t user_applications_size(const Component& component) {
  size_t size = 0;
  for (const User_application& application : component.user_applications) size += application_size(application);
  return size;
}

bool has_fading(const Broadcast& air) {
  const auto fades = [](const auto& sender) { return !sender.fading.empty(); };
  return std::ranges::any_of(air.ensembles, fades) || std::ranges::any_of(air.fm.stations, fades);
}

const Ensemble* ensemble_on(const Broadcast& air, uint32_t khz) {
  for (const Ensemble& ensemble : air.ensembles)
    if (ensemble.index < air.frequencies.size() && air.frequencies[ensemble.index] == khz) return &ensemble;
  return nullptr;
}

const Fm_station* fm_station_on(const Broadcast& air, uint32_t khz) {
  const auto found = std::ranges::find(air.fm.stations, khz, &Fm_station::khz);
  return found != air.fm.stations.end() ? &*found : nullptr;
}

const Component* find_component(const Service_list& list, uint32_t service_id, uint32_t component_id) {
  for (const Service& service : list.services) {
    if (service.id != service_id) continue;
    for (const Component& component : service.components)
      if (component.component_id() == component_id) return &component;
  }
  return nullptr;
}

}  // namespace sim
