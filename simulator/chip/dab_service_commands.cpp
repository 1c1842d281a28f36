// SPDX-License-Identifier: GPL-3.0-or-later
// Commands for DAB services: list, start and stop, component info, data packets.
#include <algorithm>

#include "simulator/chip/command_table.h"
#include "simulator/chip/list_encoding.h"

namespace sim {

namespace {

constexpr uint8_t audio_service = 0;
constexpr uint8_t data_service = 1;
constexpr unsigned packet_ready = 0x01;  // reply byte 4 of GET_DIGITAL_SERVICE_DATA

struct Named_component {
  uint32_t service_id = 0;
  uint32_t component_id = 0;
  const Component* component = nullptr;
  std::string refusal{};
};

// Bytes 4 to 11 of several commands: service id, component id.
Named_component named_component(const Chip_core& chip, Bytes command) {
  Named_component named{.service_id = le32(command, 4), .component_id = le32(command, 8)};
  const Service_list* list = chip.dab.list();
  if (list != nullptr) named.component = find_component(*list, named.service_id, named.component_id);
  if (list == nullptr)
    named.refusal = "no service list is available";
  else if (named.component == nullptr)
    named.refusal = "no service " + std::to_string(named.service_id) + " with component " +
                    std::to_string(named.component_id) + " in the ensemble";
  return named;
}

// START and STOP have the same form: type of service, 0, 0, ids.
Named_component component_of_type(const Chip_core& chip, Bytes command) {
  if (command[2] != 0 || command[3] != 0) return {.refusal = "argument bytes 2 and 3 are not 0"};
  Named_component named = named_component(chip, command);
  if (named.component == nullptr) return named;
  const uint8_t type = named.component->tmid == 0 ? audio_service : data_service;
  if (command[1] != type) named.refusal = "service type " + std::to_string(command[1]) + " does not fit the component";
  return named;
}

}  // namespace

Answer get_digital_service_list(Chip_core& chip, Bytes command) {
  if (command[1] != 0) return refuse("argument byte is not 0");
  const Service_list* list = chip.dab.list();
  if (list == nullptr) return refuse("no service list is available");
  return {.response = encode_list(*list)};
}

Answer start_digital_service(Chip_core& chip, Bytes command) {
  const Named_component named = component_of_type(chip, command);
  if (!named.refusal.empty()) return refuse(named.refusal);
  chip.dab.start(named.service_id, named.component_id);
  return {};
}

Answer stop_digital_service(Chip_core& chip, Bytes command) {
  const Named_component named = component_of_type(chip, command);
  if (!named.refusal.empty()) return refuse(named.refusal);
  if (!chip.dab.stop(named.service_id, named.component_id)) return refuse("the service is not running");
  return {};
}

Answer dab_get_component_info(Chip_core& chip, Bytes command) {
  if (command[1] != 0 || command[2] != 0 || command[3] != 0) return refuse("argument bytes 1 to 3 are not 0");
  const Named_component named = named_component(chip, command);
  if (!named.refusal.empty()) return refuse(named.refusal);
  return {.response = encode_component_info(*named.component)};
}

// One packet per command. Reply byte 5: packets in the queue, this one included.
Answer get_digital_service_data(Chip_core& chip, Bytes command) {
  constexpr size_t largest_count = 255;
  constexpr unsigned new_object = 3;  // service state: a data object begins
  constexpr unsigned playing = 0;
  constexpr size_t head_length = 20;
  if (command[1] != 0) return refuse("argument byte is not 0");
  const size_t waiting = chip.dab.packets_waiting();
  std::vector<uint8_t> response;
  const std::optional<Dab_receiver::Packet> packet = chip.dab.fetch_packet();
  if (!packet) return {.response = std::vector<uint8_t>(head_length)};
  const Component& component = *packet->component;
  const Data_segment& segment = *packet->segment;
  put8(response, packet_ready);
  put8(response, static_cast<unsigned>(std::min(waiting, largest_count)));
  put8(response, segment.number == 0 ? new_object : playing);
  put8(response, (component.data_source & 0x03U) << 6 | (component.type & 0x3FU));
  put32(response, packet->service_id);
  put32(response, component.component_id());
  put16(response, component.user_applications.empty() ? 0 : component.user_applications.front().type);
  put16(response, static_cast<unsigned>(segment.payload.size()));
  put16(response, segment.number);
  put16(response, segment.total);
  response.insert(response.end(), segment.payload.begin(), segment.payload.end());
  return {.response = response};
}

}  // namespace sim
