// SPDX-License-Identifier: GPL-3.0-or-later
// The faults of a board: which are valid, and which a transaction triggers.
#include "simulator/board/faults.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>

#include "messages/messages.h"
#include "trace/command_names.h"

namespace sim {

namespace {

constexpr uint8_t set_property = trace::command_opcode("SET_PROPERTY").value();
constexpr uint8_t dab_tune_freq = trace::command_opcode("DAB_TUNE_FREQ").value();
constexpr uint8_t fm_seek_start = trace::command_opcode("FM_SEEK_START").value();

// The opcode of the fault's command, by name or as "0xBC"; nothing when the fault is set on a transaction.
std::optional<uint8_t> opcode_of(const Fault& fault) {
  const std::string& name = fault.command;
  if (name.empty()) return std::nullopt;
  if (const std::optional<uint8_t> known = trace::command_opcode(name)) return known;
  uint8_t opcode = 0;
  const char* const end = name.data() + name.size();
  if (name.starts_with("0x")) {
    const auto [rest, error] = std::from_chars(name.data() + 2, end, opcode, 16);
    if (error == std::errc() && rest == end) return opcode;
  }
  throw std::invalid_argument("unknown command \"" + name + "\"");
}

// The effects that two faults cannot both have on one transaction; `status_bits` add up.
std::array<bool, 6> exclusive_effects(const Fault& fault) {
  return {fault.cts_never || fault.cts_low_reads != 0,
          fault.status.has_value(),
          fault.reply.has_value(),
          fault.property_not_kept,
          fault.stc_never,
          fault.bus != Bus_fault::none};
}

bool has_effect(const Fault& fault) {
  return fault.status_bits != std::array<uint8_t, 4>{} || std::ranges::count(exclusive_effects(fault), true) != 0;
}

// @throws std::invalid_argument
void check(const Fault& fault, const std::optional<uint8_t>& opcode) {
  const auto need = [](bool holds, const char* otherwise) {
    if (!holds) throw std::invalid_argument(otherwise);
  };
  need(fault.command.empty() != (fault.transaction == 0), "a fault needs either a command or a transaction");
  need(fault.transaction == 0 || fault.occurrence == 0,
       "\"occurrence\" counts commands; it does not go with \"transaction\"");
  need(fault.bit.has_value() == (fault.bus == Bus_fault::flip_bit),
       "\"bit\" and the bus fault \"flip_bit\" need each other");
  need(has_effect(fault), "the fault has no effect");
  need(!fault.property_not_kept || opcode == set_property, "\"property_not_kept\" needs the command SET_PROPERTY");
  need(!fault.stc_never || opcode == dab_tune_freq || opcode == fm_seek_start,
       "\"stc_never\" needs the command DAB_TUNE_FREQ or FM_SEEK_START");
}

}  // namespace

// The command's opcode may begin with any number of zeros.
std::string describe(const Fault& fault) {
  if (fault.transaction != 0) return "transaction " + std::to_string(fault.transaction);
  return messages::one_line(fault.command) +
         (fault.occurrence == 0 ? ", every one" : ", occurrence " + std::to_string(fault.occurrence));
}

void Faults::set(const Fault& fault) {
  const std::optional<uint8_t> opcode = opcode_of(fault);
  check(fault, opcode);
  unsigned number = 0;
  for (const bool has_it : exclusive_effects(fault))
    if (++number; has_it && !taken_.emplace(opcode.value_or(0), fault.occurrence, fault.transaction, number).second)
      throw std::invalid_argument("another fault has the same trigger and the same effect");
  all_.push_back({.fault = fault, .opcode = opcode.value_or(0)});
}

void Faults::clear() { *this = {}; }

std::vector<Armed_fault*> Faults::triggered_by(uint8_t opcode) {
  std::vector<Armed_fault*> triggered;
  for (Armed_fault& armed : all_) {
    const bool by_command = armed.fault.transaction == 0;
    if (by_command && armed.opcode != opcode) continue;
    armed.seen += 1;
    const uint64_t wanted = by_command ? armed.fault.occurrence : armed.fault.transaction;
    if (wanted == 0 || wanted == armed.seen) triggered.push_back(&armed);
  }
  return triggered;
}

std::vector<std::string> Faults::triggers_of(bool (*chosen)(const Armed_fault&)) const {
  std::vector<std::string> triggers;
  for (const Armed_fault& armed : all_)
    if (chosen(armed)) triggers.push_back(describe(armed.fault));
  return triggers;
}

}  // namespace sim
