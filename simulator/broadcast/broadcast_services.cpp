// SPDX-License-Identifier: GPL-3.0-or-later
// The reader of service lists in broadcast files.
#include "simulator/broadcast/broadcast_services.h"

#include <algorithm>
#include <span>

#include "simulator/json/json_members.h"

namespace sim {

constexpr size_t label_length = 16;
constexpr size_t most_services = 170;  // so many without components fill the largest list
constexpr size_t most_components = 15;
constexpr size_t most_applications = 63;  // so many without data fill 255 bytes
constexpr size_t longest_application = 255;
constexpr size_t longest_payload = 65535;

// The member "text", or "hex" with the bytes in hexadecimal digits; one of them must be there.
static void bytes_member(Json_members& json, std::vector<uint8_t>& bytes, size_t longest) {
  const auto check = [&bytes, longest](const Json_reader& value) {
    if (bytes.size() > longest)
      value.fail(std::to_string(bytes.size()) + " bytes are more than " + std::to_string(longest));
  };
  json("text", [&](const Json_reader& value) {
    const std::string text = value.text();
    bytes.assign(text.begin(), text.end());
    check(value);
  });
  json("hex", [&](const Json_reader& value) {
    bytes = value.hex();
    check(value);
  });
}

template <typename Record>
static void expect_bytes(const Json_reader& json, const Record& /*record*/) {
  if (json.has("text") == json.has("hex")) json.fail("needs one of \"text\" and \"hex\"");
}

static void members(Json_members& json, User_application& application) {
  json.need("type", application.type);
  bytes_member(json, application.data, longest_application);
}

static void read_user_applications(const Json_reader& json, Component& component) {
  Json_members::read_list(json, most_applications, component.user_applications, expect_bytes<User_application>);
  if (user_applications_size(component) > UINT8_MAX) json.fail("the user applications take more than 255 bytes");
}

static void members(Json_members& json, Data_segment& segment) {
  json("number", segment.number);
  json("total", segment.total);
  bytes_member(json, segment.payload, longest_payload);
}

// A segment's number and the count of segments follow from its place unless they are given.
static void read_segments(const Json_reader& json, std::vector<Data_segment>& segments) {
  const std::vector<Json_reader> entries = json.elements(UINT16_MAX);
  for (const Json_reader& entry : entries) {
    Data_segment segment{.number = static_cast<uint16_t>(segments.size()),
                         .total = static_cast<uint16_t>(entries.size())};
    Json_members::read(entry, segment);
    expect_bytes(entry, segment);
    segments.push_back(std::move(segment));
  }
}

// The key that holds the component's id within its transport, by TMId, and the largest id.
struct Id_rule {
  std::string_view key;
  uint32_t largest;
};

constexpr Id_rule id_rules[] = {{"subchannel", 63}, {"subchannel", 63}, {"fidc", 63}, {"scid", 4095}};

static void members(Json_members& json, Component& component) {
  json.need("tmid", component.tmid, 0, 3);
  for (const Id_rule& rule : std::span(id_rules).subspan(1))
    json(rule.key, [&](const Json_reader& id) {
      if (rule.key != id_rules[component.tmid].key) id.fail("does not go with TMId " + std::to_string(component.tmid));
      component.id = static_cast<uint16_t>(id.identifier(rule.largest));
    });
  json("dg", [&](const Json_reader& dg) {
    if (component.tmid != 3) dg.fail("goes with TMId 3 only");
    component.dg = dg.truth();
  });
  json("ca", component.ca);
  json("ps", component.ps);
  json("type", component.type, 0, 63);
  json("mua", component.mua);
  json("global_id", component.global_id);
  json("language", component.language, 0, 63);
  json("charset", component.charset, 0, 63);
  json("label", [&](const Json_reader& label) { component.label = read_label(label, label_length); });
  json("abbreviation", component.abbreviation);
  json("user_applications", [&](const Json_reader& all) { read_user_applications(all, component); });
  json("data_source", component.data_source, 0, 3);
  json("segments", [&](const Json_reader& segments) { read_segments(segments, component.segments); });
}

static void read_components(const Json_reader& json, std::vector<Component>& components) {
  const auto check = [&](const Json_reader& entry, const Component& component) {
    static_cast<void>(entry.at(id_rules[component.tmid].key));  // must be there
    for (const Component& other : components)
      if (other.component_id() == component.component_id()) entry.fail("the service has this component twice");
  };
  Json_members::read_list(json, most_components, components, check);
}

// "data" is read first: it decides how large the id may be.
static void members(Json_members& json, Service& service) {
  json("data", service.data);
  json.need("id", [&](const Json_reader& id) { service.id = id.identifier(service.data ? UINT32_MAX : UINT16_MAX); });
  json("programme_type", service.programme_type, 0, 31);
  json("linking", service.linking);
  json("ca_id", service.ca_id, 0, 7);
  json("local", service.local);
  json("charset", service.charset, 0, 15);
  json.need("label", [&](const Json_reader& label) { service.label = read_label(label, label_length); });
  json("components", [&](const Json_reader& components) { read_components(components, service.components); });
}

static void read_services(const Json_reader& json, std::vector<Service>& services) {
  const auto check = [&](const Json_reader& entry, const Service& service) {
    const auto same_id = [&](const Service& other) { return other.id == service.id; };
    if (std::any_of(services.begin(), services.end(), same_id))
      entry.fail("service id " + std::to_string(service.id) + " is in the list twice");
  };
  Json_members::read_list(json, most_services, services, check);
}

static void members(Json_members& json, Service_list& list) {
  json.need("version", list.version);
  json("after_ms",
       [&](const Json_reader& ms) { list.after = std::chrono::milliseconds(ms.whole_number(0, INT32_MAX)); });
  json.need("services", [&](const Json_reader& services) { read_services(services, list.services); });
}

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
  const auto check = [&](const Json_reader& entry, const Service_list& list) {
    if (!lists.empty() && list.after <= lists.back().after)
      entry.fail("\"after_ms\" is not later than the list before");
    if (list_size(list) > largest_list_size)
      entry.fail("a list of " + std::to_string(list_size(list)) + " bytes is larger than " +
                 std::to_string(largest_list_size));
  };
  Json_members::read_list(json, SIZE_MAX, lists, check);
  return lists;
}

}  // namespace sim
