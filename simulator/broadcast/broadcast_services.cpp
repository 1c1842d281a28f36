// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/broadcast/broadcast_services.h"

#include <algorithm>

namespace sim {

namespace {

constexpr size_t label_length = 16;
constexpr size_t most_components = 15;
constexpr size_t longest_application = 255;
constexpr size_t longest_payload = 65535;

// Bytes as text or, in an object, as {"hex": "..."}.
std::vector<uint8_t> read_bytes(const Json_reader& json, std::string_view text_key, std::string_view hex_key,
                                size_t longest) {
  std::vector<uint8_t> bytes;
  if (json.has(text_key) == json.has(hex_key))
    json.fail("needs one of " + in_quotes(text_key) + " and " + in_quotes(hex_key));
  if (json.has(hex_key)) {
    bytes = json.at(hex_key).hex();
  } else {
    const std::string text = json.at(text_key).text();
    bytes.assign(text.begin(), text.end());
  }
  if (bytes.size() > longest)
    json.fail(std::to_string(bytes.size()) + " bytes are more than " + std::to_string(longest));
  return bytes;
}

std::vector<User_application> read_user_applications(const Json_reader& json) {
  std::vector<User_application> applications;
  for (const Json_reader& entry : json.elements()) {
    entry.expect_keys({"type", "text", "hex"});
    User_application application;
    application.type = static_cast<uint16_t>(entry.at("type").whole_number(0, UINT16_MAX));
    application.data = read_bytes(entry, "text", "hex", longest_application);
    applications.push_back(std::move(application));
  }
  return applications;
}

// A segment's number and the count of segments follow from its place unless they are given.
std::vector<Data_segment> read_segments(const Json_reader& json) {
  const std::vector<Json_reader> entries = json.elements();
  if (entries.size() > UINT16_MAX) json.fail("more than 65535 segments");
  std::vector<Data_segment> segments;
  for (const Json_reader& entry : entries) {
    entry.expect_keys({"number", "total", "text", "hex"});
    Data_segment segment{.number = static_cast<uint16_t>(segments.size()),
                         .total = static_cast<uint16_t>(entries.size())};
    entry.read("number", segment.number);
    entry.read("total", segment.total);
    segment.payload = read_bytes(entry, "text", "hex", longest_payload);
    segments.push_back(std::move(segment));
  }
  return segments;
}

// The key that holds the component's id within its transport, and its largest value.
struct Id_rule {
  std::string_view key;
  int64_t largest;
};

constexpr Id_rule id_rules[] = {{"subchannel", 63}, {"subchannel", 63}, {"fidc", 63}, {"scid", 4095}};

Component read_component(const Json_reader& json) {
  json.expect_keys({"tmid", "subchannel", "fidc", "scid", "dg", "ca", "ps", "type", "mua", "global_id", "language",
                    "charset", "label", "abbreviation", "user_applications", "data_source", "segments"});
  Component component;
  component.tmid = static_cast<uint8_t>(json.at("tmid").whole_number(0, 3));
  const Id_rule& rule = id_rules[component.tmid];
  for (const Id_rule& other : id_rules)
    if (other.key != rule.key && json.has(other.key))
      json.fail(in_quotes(other.key) + " does not go with TMId " + std::to_string(component.tmid));
  component.id = static_cast<uint16_t>(json.at(rule.key).whole_number(0, rule.largest));
  if (component.tmid != 3 && json.has("dg")) json.fail("\"dg\" goes with TMId 3 only");
  json.read("dg", component.dg);
  json.read("ca", component.ca);
  json.read("ps", component.ps);
  json.read("type", component.type, 0, 63);
  json.read("mua", component.mua);
  json.read("global_id", component.global_id);
  json.read("language", component.language, 0, 63);
  json.read("charset", component.charset, 0, 63);
  if (json.has("label")) component.label = read_label(json.at("label"), label_length);
  json.read("abbreviation", component.abbreviation);
  if (json.has("user_applications")) component.user_applications = read_user_applications(json.at("user_applications"));
  if (user_applications_size(component) > UINT8_MAX) json.fail("the user applications take more than 255 bytes");
  json.read("data_source", component.data_source, 0, 3);
  if (json.has("segments")) component.segments = read_segments(json.at("segments"));
  return component;
}

Service read_service(const Json_reader& json) {
  json.expect_keys({"id", "data", "programme_type", "linking", "ca_id", "local", "charset", "label", "components"});
  Service service;
  json.read("data", service.data);
  service.id = static_cast<uint32_t>(json.at("id").whole_number(0, service.data ? UINT32_MAX : UINT16_MAX));
  json.read("programme_type", service.programme_type, 0, 31);
  json.read("linking", service.linking);
  json.read("ca_id", service.ca_id, 0, 7);
  json.read("local", service.local);
  json.read("charset", service.charset, 0, 15);
  service.label = read_label(json.at("label"), label_length);
  if (!json.has("components")) return service;
  for (const Json_reader& entry : json.at("components").elements()) {
    Component component = read_component(entry);
    for (const Component& other : service.components)
      if (other.component_id() == component.component_id()) entry.fail("the service has this component twice");
    service.components.push_back(std::move(component));
  }
  if (service.components.size() > most_components) json.fail("more than 15 components");
  return service;
}

}  // namespace

std::string read_label(const Json_reader& json, size_t longest) {
  const std::string utf8 = json.text();
  std::string label;
  for (size_t at = 0; at < utf8.size(); ++at) {
    const auto lead = static_cast<unsigned char>(utf8[at]);
    if (lead < 0x80) {
      label += utf8[at];
    } else if (lead <= 0xC3) {  // two bytes, code points U+0080 to U+00FF
      const auto rest = static_cast<unsigned char>(utf8[++at]);
      label += static_cast<char>((lead & 0x03) << 6 | (rest & 0x3F));
    } else {
      json.fail("a label's characters end at U+00FF");
    }
  }
  if (label.size() > longest) json.fail("a label of more than " + std::to_string(longest) + " characters");
  return label;
}

std::vector<Service_list> read_service_lists(const Json_reader& json) {
  std::vector<Service_list> lists;
  for (const Json_reader& entry : json.elements()) {
    entry.expect_keys({"version", "after_ms", "services"});
    Service_list list;
    list.version = static_cast<uint16_t>(entry.at("version").whole_number(0, UINT16_MAX));
    if (entry.has("after_ms")) list.after = std::chrono::milliseconds(entry.at("after_ms").whole_number(0, INT32_MAX));
    if (!lists.empty() && list.after <= lists.back().after)
      entry.fail("\"after_ms\" is not later than the list before");
    for (const Json_reader& service_entry : entry.at("services").elements()) {
      Service service = read_service(service_entry);
      const auto same_id = [&](const Service& other) { return other.id == service.id; };
      if (std::any_of(list.services.begin(), list.services.end(), same_id))
        service_entry.fail("service id " + std::to_string(service.id) + " is in the list twice");
      list.services.push_back(std::move(service));
    }
    if (list_size(list) > largest_list_size)
      entry.fail("a list of " + std::to_string(list_size(list)) + " bytes does not fit the chip's " +
                 std::to_string(largest_list_size));
    lists.push_back(std::move(list));
  }
  return lists;
}

}  // namespace sim
