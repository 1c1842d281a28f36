// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/board/faults.h"

#include <charconv>
#include <stdexcept>

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

bool has_effect(const Fault& fault) {
  return fault.cts_never || fault.cts_low_reads != 0 || fault.status_bits != std::array<uint8_t, 4>{} || fault.status ||
         fault.reply || fault.property_not_kept || fault.stc_never || fault.bus != Bus_fault::none;
}

struct Rule {
  const char* why;
  bool (*broken)(const Fault& fault, const std::optional<uint8_t>& opcode);
};

constexpr Rule rules[] = {
    {"a fault needs either a command or a transaction",
     [](const Fault& fault, const auto&) { return fault.command.empty() == (fault.transaction == 0); }},
    {"\"occurrence\" counts commands; it does not go with \"transaction\"",
     [](const Fault& fault, const auto&) { return fault.transaction != 0 && fault.occurrence != 0; }},
    {"\"bit\" and the bus fault \"flip_bit\" need each other",
     [](const Fault& fault, const auto&) { return fault.bit.has_value() != (fault.bus == Bus_fault::flip_bit); }},
    {"the fault has no effect", [](const Fault& fault, const auto&) { return !has_effect(fault); }},
    {"\"property_not_kept\" needs the command SET_PROPERTY",
     [](const Fault& fault, const auto& opcode) { return fault.property_not_kept && opcode != set_property; }},
    {"\"stc_never\" needs the command DAB_TUNE_FREQ or FM_SEEK_START",
     [](const Fault& fault, const auto& opcode) {
       return fault.stc_never && opcode != dab_tune_freq && opcode != fm_seek_start;
     }},
};

}  // namespace

std::string describe(const Fault& fault) {
  if (fault.transaction != 0) return "transaction " + std::to_string(fault.transaction);
  return fault.command + (fault.occurrence == 0 ? ", every one" : ", occurrence " + std::to_string(fault.occurrence));
}

void Faults::set(const Fault& fault) {
  const std::optional<uint8_t> opcode = opcode_of(fault);
  for (const Rule& rule : rules)
    if (rule.broken(fault, opcode)) throw std::invalid_argument(rule.why);
  entries_.push_back({.fault = fault, .opcode = opcode.value_or(0)});
}

void Faults::clear() { *this = {}; }

std::vector<std::string> Faults::never_triggered() const {
  std::vector<std::string> names;
  for (const Entry& entry : entries_)
    if (!entry.triggered) names.push_back(describe(entry.fault));
  return names;
}

std::string Faults::begin(uint8_t opcode) {
  const bool is_read = opcode == trace::rd_reply_opcode;
  on_read_.clear();
  if (!is_read) {
    on_command_.clear();
    cts_never_ = false;
    cts_low_reads_ = 0;
  }
  std::string triggered;
  for (Entry& entry : entries_) {
    const bool by_command = entry.fault.transaction == 0;
    if (by_command && entry.opcode != opcode) continue;
    entry.seen += 1;
    const uint64_t wanted = by_command ? entry.fault.occurrence : entry.fault.transaction;
    if (wanted != 0 && wanted != entry.seen) continue;
    entry.triggered = true;
    triggered += (triggered.empty() ? "" : "; ") + describe(entry.fault);
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
  return triggered;
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
