// SPDX-License-Identifier: GPL-3.0-or-later
// The files that a board is made from.
#include "simulator/board/board_file.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "simulator/broadcast/broadcast_file.h"

namespace sim {

constexpr std::pair<Bus_fault, std::string_view> bus_faults[] = {
    {Bus_fault::zeros, "zeros"},           {Bus_fault::ones, "ones"},
    {Bus_fault::flip_bit, "flip_bit"},     {Bus_fault::shift, "shift"},
    {Bus_fault::reset_chip, "reset_chip"}, {Bus_fault::never_done, "never_done"},
};

static std::array<uint8_t, 4> read_status(const Json_reader& json) {
  const std::vector<uint8_t> bytes = json.hex();
  std::array<uint8_t, 4> status{};
  if (bytes.size() != status.size()) json.fail("not 4 bytes");
  std::copy(bytes.begin(), bytes.end(), status.begin());
  return status;
}

static void members(Json_members& json, Fault& fault) {
  json("command", [&](const Json_reader& command) { fault.command = command.text(); });
  json("occurrence", fault.occurrence, 1);
  json("transaction", fault.transaction, 1, INT64_MAX);
  json("cts_never", fault.cts_never);
  json("cts_low_reads", fault.cts_low_reads);
  json("status_bits", [&](const Json_reader& status) { fault.status_bits = read_status(status); });
  json("status", [&](const Json_reader& status) { fault.status = read_status(status); });
  json("reply", [&](const Json_reader& reply) { fault.reply = reply.hex(); });
  json("property_not_kept", fault.property_not_kept);
  json("stc_never", fault.stc_never);
  json("bus", [&](const Json_reader& bus) { fault.bus = bus.named(bus_faults, "bus fault"); });
  json("bit", fault.bit);
}

static void read_faults(const Json_reader& json, Faults& faults) {
  for (const Json_reader& entry : json.elements()) {
    Fault fault;
    Json_members::read(entry, fault);
    try {
      faults.set(fault);
    } catch (const std::invalid_argument& error) {
      entry.fail(error.what());
    }
  }
}

static void members(Json_members& json, Chip_settings& chip) { json("always_ready", chip.always_ready); }

static void members(Json_members& json, Board_settings& board) {
  json("spi_enabled", board.spi_enabled);
  json("registers", board.registers);
}

static void members(Json_members& json, Board_file& file) {
  members(json, file.air);
  json("chip", file.settings.chip);
  json("board", file.settings);
  json("faults", [&](const Json_reader& faults) { read_faults(faults, file.faults); });
}

Board_file parse_board_file(std::string_view text, const std::string& name) {
  const Json_file parsed = parse_json(text, name);
  Board_file file;
  Json_members::read(Json_reader(parsed), file);
  return file;
}

void parse_fault_file(std::string_view text, const std::string& name, Faults& faults) {
  const Json_file parsed = parse_json(text, name);
  read_faults(Json_reader(parsed), faults);
}

}  // namespace sim
