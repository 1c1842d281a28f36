// SPDX-License-Identifier: GPL-3.0-or-later
// What a board's faults change between the wire and the chip.
#include "simulator/board/fault_layer.h"

#include <utility>

#include "trace/command_names.h"

namespace sim {

namespace {

constexpr uint32_t for_ever = UINT32_MAX;  // reads that do not show clear-to-send

// Only one fault can have each effect.
void take(Armed_fault*& place, Armed_fault& fault) {
  if (place != nullptr && place != &fault) place->overridden = true;
  place = &fault;
}

}  // namespace

void Fault_layer::use(Faults faults) {
  faults_ = std::move(faults);
  in_force_.clear();
  bus_ = property_ = stc_ = cts_ = nullptr;
  cts_low_reads_ = 0;
}

void Fault_layer::select(bool connected) {
  connected_ = connected;
  position_ = 0;
  previous_ = 0;
  if (connected_) chip_.select();
}

uint8_t Fault_layer::exchange(uint8_t sent) {
  if (position_ == 0) begin(sent);
  const uint8_t received = distort(connected_ ? reply_byte(chip_.exchange(sent)) : uint8_t{0});
  ++position_;
  return received;
}

void Fault_layer::begin(uint8_t opcode) {
  is_read_ = opcode == trace::rd_reply_opcode;
  if (!is_read_) {
    of_command_ = 0;
    cts_low_reads_ = 0;
  }
  in_force_.resize(of_command_);
  if (cts_low_reads_ == 0) cts_ = nullptr;
  std::string triggers;
  for (Armed_fault* armed : faults_.triggered_by(opcode)) {
    const Fault& fault = armed->fault;
    triggers += (triggers.empty() ? "" : "; ") + describe(fault);
    in_force_.push_back(armed);
    if (fault.bus != Bus_fault::none) take(bus_, *armed);
    if (fault.property_not_kept) take(property_, *armed);
    if (fault.stc_never) take(stc_, *armed);
    const uint32_t low_reads = fault.cts_never ? for_ever : fault.cts_low_reads;
    if (low_reads != 0 && cts_low_reads_ != for_ever) {
      take(cts_, *armed);
      cts_low_reads_ = low_reads;
    } else if (low_reads != 0 && armed != cts_) {
      armed->overridden = true;
    }
  }
  if (!is_read_) of_command_ = in_force_.size();
  cts_low_ = is_read_ && cts_low_reads_ > 0;
  if (cts_low_ && cts_low_reads_ != for_ever) --cts_low_reads_;
  if (!triggers.empty()) observer_.event(clock_.now(), event::fault, triggers);
  if (on_bus(Bus_fault::reset_chip)) {
    chip_.brown_out();
    connected_ = false;
  }
}

// In a read the status follows the byte that is clocked in with the opcode, and the response follows the status.
uint8_t Fault_layer::reply_byte(uint8_t live) {
  constexpr size_t status_at = 1;
  constexpr size_t response_at = 5;
  const bool hidden = on_bus(Bus_fault::zeros) || on_bus(Bus_fault::ones);
  if (!is_read_ || position_ < status_at || chip_.in_reset() || hidden) return live;
  return position_ < response_at ? status_byte(static_cast<unsigned>(position_ - status_at), live)
                                 : response_byte(position_ - response_at, live);
}

// The last fault with a status counts, and the bits that it and later faults set.
uint8_t Fault_layer::status_byte(unsigned number, uint8_t live) {
  constexpr unsigned clear_to_send = 0x80;
  unsigned bits = 0;
  bool replaced = false;
  for (size_t left = in_force_.size(); left > 0; --left) {
    Armed_fault& armed = *in_force_[left - 1];
    const Fault& fault = armed.fault;
    if (!fault.status && fault.status_bits[number] == 0) continue;
    (replaced ? armed.overridden : armed.triggered) = true;
    if (replaced) continue;
    bits |= fault.status_bits[number];
    replaced = fault.status.has_value();
    if (replaced) live = (*fault.status)[number];
  }
  bits |= live;
  if (number == 0 && cts_low_) {
    bits &= ~clear_to_send;
    cts_->triggered = true;
  }
  return static_cast<uint8_t>(bits);
}

// A fault of this read is preferred to one of the last command.
uint8_t Fault_layer::response_byte(size_t at, uint8_t live) {
  Armed_fault* first = nullptr;
  for (size_t i = 0; i < in_force_.size(); ++i) {
    Armed_fault* armed = in_force_[(of_command_ + i) % in_force_.size()];
    if (!armed->fault.reply) continue;
    if (first == nullptr)
      first = armed;
    else
      armed->overridden = true;
  }
  if (first == nullptr) return live;
  first->triggered = true;
  const std::vector<uint8_t>& reply = *first->fault.reply;
  return at < reply.size() ? reply[at] : uint8_t{0};
}

uint8_t Fault_layer::distort(uint8_t received) {
  if (bus_ == nullptr) return received;
  const Fault& fault = bus_->fault;
  const bool elsewhere = fault.bus == Bus_fault::flip_bit && *fault.bit / 8 != position_;
  if (elsewhere) return received;
  bus_->triggered = true;
  switch (fault.bus) {
    case Bus_fault::zeros:
      return 0x00;
    case Bus_fault::ones:
      return 0xFF;
    case Bus_fault::flip_bit:
      return static_cast<uint8_t>(received ^ 0x80 >> *fault.bit % 8);
    case Bus_fault::shift:
      return std::exchange(previous_, received);
    default:
      return received;
  }
}

// The chip carries out a command when chip select goes high; then the layer undoes what a fault prevents.
void Fault_layer::deselect() {
  std::optional<Properties> kept;
  if (property_ != nullptr) kept = chip_.properties();
  chip_.deselect();
  if (kept && *kept != chip_.properties()) {
    chip_.properties() = *kept;
    property_->triggered = true;
  }
  if (stc_ != nullptr && connected_ && chip_.hold_tune()) stc_->triggered = true;
  bus_ = property_ = stc_ = nullptr;
}

}  // namespace sim
