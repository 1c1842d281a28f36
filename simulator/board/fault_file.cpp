// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/board/fault_file.h"

#include <algorithm>

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
  json.read("occurrence", fault.occurrence);
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
  json.read("bit", fault.bit);
  return fault;
}

}  // namespace

std::vector<Fault> read_faults(const Json_reader& json) {
  std::vector<Fault> faults;
  Faults trial;  // says what is wrong with a fault that cannot be set
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

}  // namespace sim
