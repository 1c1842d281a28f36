// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/board/faults.h"

#include <stdexcept>

#include "simulator/chip/command_table.h"

namespace sim {

std::string describe(const Fault& fault) {
  if (fault.transaction != 0) return "transaction " + std::to_string(fault.transaction);
  return fault.command + (fault.occurrence == 0 ? ", every one" : ", occurrence " + std::to_string(fault.occurrence));
}

void Faults::set(const Fault& fault) {
  if (fault.command.empty() == (fault.transaction == 0))
    throw std::invalid_argument("a fault needs either a command or a transaction");
  uint8_t opcode = 0;
  if (!fault.command.empty()) {
    const std::optional<uint8_t> known = command_opcode(fault.command);
    if (!known) throw std::invalid_argument("unknown command \"" + fault.command + "\"");
    opcode = *known;
  }
  entries_.push_back({.fault = fault, .opcode = opcode});
}

void Faults::clear() { *this = {}; }

std::vector<std::string> Faults::unmet() const {
  std::vector<std::string> names;
  for (const Entry& entry : entries_)
    if (!entry.met) names.push_back(describe(entry.fault));
  return names;
}

std::string Faults::begin(uint8_t opcode) {
  const bool is_read = opcode == rd_reply_opcode;
  on_read_.clear();
  if (!is_read) {
    on_command_.clear();
    cts_never_ = false;
    cts_low_reads_ = 0;
  }
  std::string met;
  for (Entry& entry : entries_) {
    const bool by_command = entry.fault.transaction == 0;
    if (by_command && entry.opcode != opcode) continue;
    entry.seen += 1;
    const uint64_t wanted = by_command ? entry.fault.occurrence : entry.fault.transaction;
    if (wanted != 0 && wanted != entry.seen) continue;
    entry.met = true;
    met += (met.empty() ? "" : "; ") + describe(entry.fault);
    (is_read ? on_read_ : on_command_).push_back(entry.fault);
    cts_never_ = cts_never_ || entry.fault.cts_never;
    if (entry.fault.cts_low_reads != 0) cts_low_reads_ = entry.fault.cts_low_reads;
    if (entry.fault.bus != Bus_fault::none) {
      bus_fault_ = entry.fault;
      on_bus_ = true;
    }
  }
  cts_low_ = is_read && (cts_never_ || cts_low_reads_ > 0);
  if (cts_low_ && cts_low_reads_ > 0) --cts_low_reads_;
  return met;
}

uint8_t Faults::status_byte(unsigned number, uint8_t live) const {
  constexpr unsigned clear_to_send = 0x80;
  for (const std::vector<Fault>* in_force : {&on_command_, &on_read_}) {
    for (const Fault& fault : *in_force) {
      if (fault.status) live = (*fault.status)[number];
      live = static_cast<uint8_t>(live | fault.status_bits[number]);
    }
  }
  if (number == 0 && cts_low_) live = static_cast<uint8_t>(live & ~clear_to_send);
  return live;
}

const std::vector<uint8_t>* Faults::reply() const {
  for (const std::vector<Fault>* in_force : {&on_read_, &on_command_})
    for (const Fault& fault : *in_force)
      if (fault.reply) return &*fault.reply;
  return nullptr;
}

bool Faults::property_not_kept() const {
  for (const Fault& fault : on_command_)
    if (fault.property_not_kept) return true;
  return false;
}

bool Faults::stc_never() const {
  for (const Fault& fault : on_command_)
    if (fault.stc_never) return true;
  return false;
}

}  // namespace sim
