// SPDX-License-Identifier: GPL-3.0-or-later
// Names as a person types them.
#include "survey/file/search.h"

#include <algorithm>

#include "survey/text/codes.h"
#include "survey/text/text.h"

namespace survey {

namespace {

// Of one service in several blocks, the best block that can be played.
void add(std::vector<Station>& found, const Station& station) {
  const auto same =
      std::ranges::find(found, station.service->id, [](const Station& other) { return other.service->id; });
  if (same == found.end()) {
    found.push_back(station);
    return;
  }
  const auto playable = [](const Station& other) { return unplayable(*other.entry, *other.service).empty(); };
  if (playable(station) == playable(*same) ? better(*station.entry, *same->entry) : playable(station)) *same = station;
}

// `name` in lower case, in one block or, where that is empty, in all.
std::vector<Station> find(std::string_view name, std::string_view block, const std::vector<Station>& stations) {
  std::vector<Station> exact, with_id, part;
  for (const Station& station : stations) {
    if (station.service->data || (!block.empty() && folded(block_title(station.entry->frequency)) != block)) continue;
    const std::string label = folded(station.service->label);
    if (label == name) add(exact, station);
    if (std::to_string(station.service->id) == name) add(with_id, station);
    if (label.find(name) != label.npos) add(part, station);
  }
  return !exact.empty() ? exact : !with_id.empty() ? with_id : part;
}

}  // namespace

std::string unplayable(const Entry& entry, const Service& service) {
  const Component* const component = main_component(service);
  if (service.data) return {};
  if (component == nullptr || component->transport != 0) return "it has no audio component";
  if (entry.index == 0) return "kelvo cannot tune to index 0";
  if (service.id == 0 || component->id == 0) return "kelvo takes no id 0";
  return {};
}

std::string play_options(const Entry& entry, const Service& service) {
  if (service.data || !unplayable(entry, service).empty()) return {};
  return "-f " + std::to_string(entry.index) + " -e " + std::to_string(service.id) + " -c " +
         std::to_string(main_component(service)->id) + " -p";
}

std::vector<Station> stations_called(std::string_view name, const std::vector<Station>& stations) {
  const std::string wanted = folded(name);
  const size_t slash = wanted.find('/');
  if (slash != wanted.npos && slash != 0) {
    const std::string_view whole = wanted;
    std::vector<Station> found = find(whole.substr(slash + 1), whole.substr(0, slash), stations);
    if (!found.empty()) return found;
  }
  return find(wanted, "", stations);
}

}  // namespace survey
