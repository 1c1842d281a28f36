// SPDX-License-Identifier: GPL-3.0-or-later
// The ensemble's services and their components, decoded from the chip's list.
#include <array>

#include "si468x/command.h"
#include "si468x/json_text.h"
#include "si468x/reply_view.h"
#include "si468x/si468x.h"

namespace {

constexpr uint16_t longest_list = 4089;   // SIZE of a reply that fills 4096 bytes
constexpr uint16_t list_header = 6;       // counted in SIZE: version, number of services, three unused bytes
constexpr size_t entries_in_buffer = 13;  // reply byte 12, after the leading byte
constexpr size_t entry_header = 24;       // of a service, before its components
constexpr size_t component_length = 4;

// Bytes of the entry at `offset`. Check that its header is there first.
size_t entry_length(const Bytes_view& entries, size_t offset) {
  return entry_header + component_length * entries.field(offset + 5, 0, 4);
}

// Moves `offset` from one entry to the next; leaves it unchanged on failure.
int16_t next_entry(const Si468x_digital_service_list& list, size_t& offset) {
  const Bytes_view entries({list.data, list.size});
  if (!entries.holds(offset, entry_header)) return Si468x_failure(-4, 127);
  const size_t length = entry_length(entries, offset);
  if (!entries.holds(offset, length)) return Si468x_failure(-4, 227);
  offset += length;
  return 0;
}

// Service entry
//   bytes 0-3    service id, as a number: data EEEEEEEE CCCCRRRR RRRRRRRR RRRRRRRR, audio CCCCRRRR RRRRRRRR
//                E extended country code, C country, R reference
//   byte 4       .LPPPPPD   L linking info, P programme type, D data service (32-bit id) rather than audio (16-bit id)
//   byte 5       lCCCNNNN   l local, C CA id, N number of components
//   byte 6       ....SSSS   S character set
//   bytes 8-23   label
//   bytes 24-    components, 4 bytes each
int16_t decode_entry(const Si468x_digital_service_list& list, size_t offset, Si468x_service_data& service) {
  const Bytes_view entries({list.data, list.size});
  if (!entries.holds(offset, entry_header)) return Si468x_failure(-4, 327);

  service.ServId = entries.u32(offset);
  service.AudioOrDataFlag = entries.bit(offset + 4, 0);
  if (service.AudioOrDataFlag != 0) {
    service.ServRef = bits(service.ServId, 0, 20);
    service.CountryID = static_cast<uint8_t>(bits(service.ServId, 20, 4));
    service.ECC = static_cast<uint8_t>(bits(service.ServId, 24, 8));
  } else {
    service.ServRef = bits(service.ServId, 0, 12);
    service.CountryID = static_cast<uint8_t>(bits(service.ServId, 12, 4));
  }
  service.ProgramType = static_cast<uint8_t>(entries.field(offset + 4, 1, 5));
  service.LinkingInfo = entries.bit(offset + 4, 6);
  service.NumberComponents = static_cast<uint8_t>(entries.field(offset + 5, 0, 4));
  service.CAId = static_cast<uint8_t>(entries.field(offset + 5, 4, 3));
  service.local = entries.bit(offset + 5, 7);
  service.SICharset = static_cast<uint8_t>(entries.field(offset + 6, 0, 4));
  entries.copy(offset + 8, service.Label);

  if (!entries.holds(offset, entry_length(entries, offset))) return Si468x_failure(-4, 427);
  service.components = list.data + offset + entry_header;
  service.components_size = static_cast<uint16_t>(list.size - offset - entry_header);
  return 0;
}

void write_component(Json_text& json, const Si468x_DAB_component& component, uint16_t component_no) {
  json.raw("{\n");
  json.number("ComponentNo", component_no);
  json.number("comp_ID", component.comp_ID);
  json.number("TMID", component.TMID);
  switch (component.TMID) {
    case Si468x_tmid_fidc:
      json.number("FIDCId", component.FIDCId);
      break;
    case Si468x_tmid_packet_data:
      json.number("SCId", component.SCId);
      json.number("DGFlag", component.DGFlag);
      break;
    default:
      json.number("SubChId", component.SubChId);
      break;
  }
  json.number("CA_flag", component.CA_flag);
  json.number("ps", component.ps);
  json.number("ASCTyDSCTy", component.ASCTyDSCTy);
  json.number("muA_info_valid", component.muA_info_valid, "\n");
  json.raw("}");
}

void write_service(Json_text& json, const Si468x_service_data& service, uint16_t service_no) {
  json.raw("{\n");
  json.number("ServiceNo", service_no);
  json.number("ServId", service.ServId);
  json.number("AudioOrDataFlag", service.AudioOrDataFlag);
  json.number("ServRef", service.ServRef);
  json.number("CountryID", service.CountryID);
  if (service.AudioOrDataFlag == 1) json.number("ECC", service.ECC);
  json.number("ProgramType", service.ProgramType);
  json.number("LinkingInfo", service.LinkingInfo);
  json.number("NumberComponents", service.NumberComponents);
  json.number("CAId", service.CAId);
  json.number("local", service.local);
  json.number("SICharset", service.SICharset);
  json.raw("\"Label\": \"");
  json.raw({reinterpret_cast<const char*>(service.Label.data()), service.Label.size()});
  json.raw("\",\n\"ComponentList\": [\n");
  Si468x_DAB_component component;
  for (uint8_t j = 0; j < service.NumberComponents; ++j) {
    // As with services: a component that cannot be decoded repeats the last one that could.
    static_cast<void>(component.get_component(&service, j));
    write_component(json, component, j);
    if (j + 1 < service.NumberComponents) json.raw(",");
  }
  json.raw("]\n}");
}

}  // namespace

int16_t Si468x_digital_service_list::get_new_list(uint8_t* list_buffer) {
  std::array<uint8_t, 7> head{};
  if (const int16_t r = query(Opcode::GET_DIGITAL_SERVICE_LIST, 0x00, head); r != 0) return Si468x_failure(r, 26);
  const uint16_t list_size = Reply_view(head).u16(4);
  if (list_size > longest_list) return Si468x_failure(-4, 126);
  if (list_size < list_header) return Si468x_failure(-4, 326);

  const std::span<uint8_t> whole(list_buffer, size_t{7} + list_size);
  if (const int16_t r = query(Opcode::GET_DIGITAL_SERVICE_LIST, 0x00, whole); r != 0) return Si468x_failure(r, 226);
  const Reply_view reply(whole);
  version = reply.u16(6);
  num_services = reply.u8(8);
  size = static_cast<uint16_t>(list_size - list_header);
  data = list_buffer + entries_in_buffer;
  return 0;
}

void Si468x_digital_service_list::clean() { *this = {}; }

int Si468x_digital_service_list::json_print_data(std::stringstream& ss) const {
  Json_text json(ss);
  json.raw("\"DigitalServiceList\": {\n");
  json.number("ServiceListVersion", version);
  json.number("NumberServices", num_services);
  json.raw("\"ServiceList\": [\n");
  Si468x_service_data service;
  size_t offset = 0;
  for (uint8_t i = 0; i < num_services; ++i) {
    // A service that cannot be decoded repeats the last one that could, so that the count stays correct.
    if (i == 0 || next_entry(*this, offset) == 0) static_cast<void>(decode_entry(*this, offset, service));
    write_service(json, service, i);
    if (i + 1 < num_services) json.raw(",");
  }
  json.raw("]\n}");
  return json.end();
}

int16_t Si468x_service_data::get_service(const Si468x_digital_service_list* list, uint8_t index) {
  if (index >= list->num_services) return Si468x_failure(-6, 27);
  size_t offset = 0;
  for (uint8_t i = 0; i < index; ++i)
    if (const int16_t r = next_entry(*list, offset); r != 0) return r;
  return decode_entry(*list, offset, *this);
}

int Si468x_service_data::json_print_data(std::stringstream& ss, uint16_t service_no) const {
  Json_text json(ss);
  write_service(json, *this, service_no);
  return json.end();
}

// Component
//   bytes 1, 0  TT.DSSSS SSSSSSSS   the component id as a word: T transport mechanism
//               T 3: D DG flag, S service component id; T 2: lowest six bits the FIDC id; T 0, 1: the subchannel id
//   byte 2      AAAAAApC   A audio or data service component type, p ps flag, C CA flag
//   byte 3      .......M   M info valid
int16_t Si468x_DAB_component::get_component(const Si468x_service_data* service, uint8_t index) {
  const size_t offset = component_length * index;
  const Bytes_view components({service->components, service->components_size});
  if (index >= service->NumberComponents || !components.holds(offset, component_length)) return Si468x_failure(-6, 28);

  TMID = static_cast<uint8_t>(components.field(offset, 14, 2));
  comp_ID = components.u16(offset);
  switch (TMID) {
    case Si468x_tmid_fidc:
      FIDCId = static_cast<uint8_t>(components.field(offset, 0, 6));
      break;
    case Si468x_tmid_packet_data:
      SCId = static_cast<uint16_t>(components.field(offset, 0, 12));
      DGFlag = static_cast<uint8_t>(components.field(offset, 12, 1));
      break;
    default:
      SubChId = static_cast<uint8_t>(components.field(offset, 0, 6));
      break;
  }
  CA_flag = components.bit(offset + 2, 0);
  ps = components.bit(offset + 2, 1);
  ASCTyDSCTy = static_cast<uint8_t>(components.field(offset + 2, 2, 6));
  muA_info_valid = components.bit(offset + 3, 0);
  return 0;
}

int Si468x_DAB_component::json_print_data(std::stringstream& ss, uint16_t component_no) const {
  Json_text json(ss);
  write_component(json, *this, component_no);
  return json.end();
}
