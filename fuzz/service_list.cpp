// SPDX-License-Identifier: GPL-3.0-or-later
#include <nlohmann/json.hpp>
#include <sstream>

#include "fuzz/fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  constexpr unsigned telling = 24;  // services in JSON: more only cost time
  constexpr std::string_view label = "\"Label\": \"";
  constexpr size_t label_length = 16;
  if (!answer({data, size})) return 0;
  Block buffer(4096);
  auto list = used<Si468x_digital_service_list>();
  if (list.get_new_list(buffer.data()) != 0) {
    require(untouched(list), "a list that fails leaves the record alone");
    return 0;
  }
  Block entries(list.data, list.data + list.size);
  list.data = entries.data();
  bool all_found = true;
  for (unsigned i = 0; i <= list.num_services && i <= UINT8_MAX; ++i) {
    auto service = used<Si468x_service_data>();
    const bool found = service.get_service(&list, static_cast<uint8_t>(i)) == 0;
    all_found = all_found && found;
    require(found == all_found, "nothing is found behind a service that is not whole");
    require(found || untouched(service) || Si468x_ErrorCode == 427, "one that fails leaves the record alone");
    for (uint8_t j = 0; found && j <= service.NumberComponents; ++j) {
      auto component = used<Si468x_DAB_component>();
      const bool there = component.get_component(&service, j) == 0;
      require(there == (j < service.NumberComponents), "a service has as many components as it counts");
      require(there || untouched(component), "and another leaves the record alone");
    }
  }

  // Labels are in the JSON as the chip's bytes. With blanks instead, the JSON is well formed whatever the chip sent.
  if (list.num_services > telling) return 0;
  std::stringstream json;
  list.json_print_data(json);
  std::string text = "{" + json.str() + "}";
  unsigned labels = 0;
  for (size_t at = 0; (at = text.find(label, at)) != text.npos; at += label_length, ++labels)
    text.replace(at += label.size(), label_length, label_length, ' ');
  require(nlohmann::json::accept(text), "the list is well-formed JSON");
  require(labels == list.num_services, "with as many services as it counts");
  return 0;
}
