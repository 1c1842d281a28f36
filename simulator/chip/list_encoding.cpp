// SPDX-License-Identifier: GPL-3.0-or-later
// Service lists and component info as the chip sends them.
#include "simulator/chip/list_encoding.h"

#include "simulator/chip/bytes.h"

namespace sim {

namespace {

constexpr size_t label_length = 16;

void put_label(std::vector<uint8_t>& out, const std::string& label) {
  for (size_t i = 0; i < label_length; ++i) put8(out, i < label.size() ? static_cast<uint8_t>(label[i]) : uint8_t{' '});
}

//   byte 4   .LPPPPPD   L linking, P programme type, D data service
//   byte 5   lCCCNNNN   l local, C conditional access id, N number of components
//   byte 6   ....SSSS   S character set
constexpr unsigned data_service = 0x01;
constexpr unsigned linking = 0x40;
constexpr unsigned local = 0x80;

void put_service(std::vector<uint8_t>& out, const Service& service) {
  put32(out, service.id);
  put8(out, bit(service.data, data_service) | (service.programme_type & 0x1FU) << 1 | bit(service.linking, linking));
  put8(out, static_cast<unsigned>(service.components.size() & 0x0F) | (service.ca_id & 0x07U) << 4 |
                bit(service.local, local));
  put8(out, service.charset & 0x0FU);
  put8(out, 0);
  put_label(out, service.label);
}

//   bytes 0, 1   the component id
//   byte 2       TTTTTTPC   T type, P primary, C conditional access
//   byte 3       .......M   M component info valid
constexpr unsigned conditional_access = 0x01;
constexpr unsigned primary = 0x02;
constexpr unsigned info_valid = 0x01;

void put_component(std::vector<uint8_t>& out, const Component& component) {
  put16(out, component.component_id());
  put8(out, bit(component.ca, conditional_access) | bit(component.ps, primary) | (component.type & 0x3FU) << 2);
  put8(out, bit(component.mua, info_valid));
}

}  // namespace

std::vector<uint8_t> encode_list(const Service_list& list) {
  std::vector<uint8_t> out;
  put16(out, list_size(list));
  put16(out, list.version);
  put8(out, static_cast<unsigned>(list.services.size()));
  put8(out, 0);
  put16(out, 0);
  for (const Service& service : list.services) {
    put_service(out, service);
    for (const Component& component : service.components) put_component(out, component);
  }
  return out;
}

std::vector<uint8_t> encode_component_info(const Component& component) {
  std::vector<uint8_t> out;
  put8(out, component.global_id);
  put8(out, 0);
  put8(out, component.language & 0x3FU);
  put8(out, component.charset & 0x3FU);
  put_label(out, component.label);
  put16(out, component.abbreviation);
  put8(out, static_cast<unsigned>(component.user_applications.size()));
  put8(out, static_cast<unsigned>(user_applications_size(component)));
  for (const User_application& application : component.user_applications) {
    const size_t end = out.size() + application_size(application);
    put16(out, application.type);
    put8(out, static_cast<unsigned>(application.data.size()));
    out.insert(out.end(), application.data.begin(), application.data.end());
    out.resize(end);
  }
  return out;
}

}  // namespace sim
