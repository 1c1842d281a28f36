// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/board/fault_file.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "simulator/broadcast/broadcast_file.h"

namespace sim {

namespace {

struct Bus_fault_name {
  std::string_view name;
  Bus_fault fault;
};

constexpr Bus_fault_name bus_faults[] = {
    {"zeros", Bus_fault::zeros},           {"ones", Bus_fault::ones},
    {"flip_bit", Bus_fault::flip_bit},     {"shift", Bus_fault::shift},
    {"reset_chip", Bus_fault::reset_chip}, {"never_done", Bus_fault::never_done},
};

Bus_fault read_bus_fault(const Json_reader& json) {
  const std::string name = json.text();
  for (const Bus_fault_name& known : bus_faults)
    if (known.name == name) return known.fault;
  json.fail("unknown bus fault " + in_quotes(name));
}

std::array<uint8_t, 4> read_status(const Json_reader& json) {
  const std::vector<uint8_t> bytes = json.hex();
  std::array<uint8_t, 4> status{};
  if (bytes.size() != status.size()) json.fail("not 4 bytes");
  std::copy(bytes.begin(), bytes.end(), status.begin());
  return status;
}

Fault read_fault(const Json_reader& json) {
  json.expect_keys({"command", "occurrence", "transaction", "cts_never", "cts_low_reads", "status_bits", "status",
                    "reply", "property_not_kept", "stc_never", "bus", "bit"});
  Fault fault;
  if (json.has("command")) fault.command = json.at("command").text();
  json.read("occurrence", fault.occurrence, 1);
  if (json.has("transaction"))
    fault.transaction = static_cast<uint64_t>(json.at("transaction").whole_number(1, INT64_MAX));
  json.read("cts_never", fault.cts_never);
  json.read("cts_low_reads", fault.cts_low_reads);
  if (json.has("status_bits")) fault.status_bits = read_status(json.at("status_bits"));
  if (json.has("status")) fault.status = read_status(json.at("status"));
  if (json.has("reply")) fault.reply = json.at("reply").hex();
  json.read("property_not_kept", fault.property_not_kept);
  json.read("stc_never", fault.stc_never);
  if (json.has("bus")) fault.bus = read_bus_fault(json.at("bus"));
  if (json.has("bit")) fault.bit = static_cast<uint32_t>(json.at("bit").whole_number(0, UINT32_MAX));
  return fault;
}

}  // namespace

std::vector<Fault> read_faults(const Json_reader& json) {
  std::vector<Fault> faults;
  Faults trial;  // refuses what a board would refuse
  for (const Json_reader& entry : json.elements()) {
    faults.push_back(read_fault(entry));
    try {
      trial.set(faults.back());
    } catch (const std::invalid_argument& error) {
      entry.fail(error.what());
    }
  }
  return faults;
}

std::vector<Fault> read_fault_file(const std::string& path) {
  const nlohmann::json parsed = parse_json(read_text(path), path);
  return read_faults(Json_reader(parsed, path));
}

Board_file read_board_file(const std::string& path) {
  const nlohmann::json parsed = parse_json(read_text(path), path);
  const Json_reader json(parsed, path);
  Board_file file{.air = read_broadcast(json)};
  if (json.has("faults")) file.faults = read_faults(json.at("faults"));
  return file;
}

}  // namespace sim
