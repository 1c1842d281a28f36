// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/board/fault_layer.h"

#include <utility>

#include "trace/command_names.h"

namespace sim {

void Fault_layer::select(bool connected) {
  connected_ = connected;
  position_ = 0;
  opcode_ = trace::rd_reply_opcode;
  previous_ = 0;
  if (connected_) chip_.select();
}

uint8_t Fault_layer::exchange(uint8_t sent) {
  if (position_ == 0) begin(sent);
  const uint8_t received = distort(connected_ ? read(chip_.exchange(sent)) : uint8_t{0});
  ++position_;
  return received;
}

void Fault_layer::begin(uint8_t opcode) {
  opcode_ = opcode;
  const std::string triggered = faults_.begin(opcode);
  if (triggered.empty()) return;
  observer_.event(clock_.now(), event::fault, triggered);
  if (faults_.on_bus() == nullptr || faults_.on_bus()->bus != Bus_fault::reset_chip) return;
  chip_.brown_out();
  connected_ = false;
}

// In a read the status follows the byte that is clocked in with the opcode, and the response follows the status.
uint8_t Fault_layer::read(uint8_t live) const {
  constexpr size_t status_at = 1;
  constexpr size_t response_at = 5;
  if (opcode_ != trace::rd_reply_opcode || position_ < status_at || chip_.in_reset()) return live;
  if (position_ < response_at) return faults_.status_byte(static_cast<unsigned>(position_ - status_at), live);
  const std::vector<uint8_t>* replaced = faults_.reply();
  if (replaced == nullptr) return live;
  const size_t at = position_ - response_at;
  return at < replaced->size() ? (*replaced)[at] : uint8_t{0};
}

uint8_t Fault_layer::distort(uint8_t received) {
  const Fault* fault = faults_.on_bus();
  if (fault == nullptr) return received;
  switch (fault->bus) {
    case Bus_fault::zeros:
      return 0x00;
    case Bus_fault::ones:
      return 0xFF;
    case Bus_fault::flip_bit:
      if (*fault->bit / 8 == position_) received = static_cast<uint8_t>(received ^ 0x80 >> *fault->bit % 8);
      return received;
    case Bus_fault::shift:
      std::swap(previous_, received);
      return received;
    default:
      return received;
  }
}

// The chip carries out a command when chip select goes high; then the layer undoes what a fault prevents.
void Fault_layer::deselect() {
  const bool is_command = position_ != 0 && opcode_ != trace::rd_reply_opcode;
  if (is_command && faults_.property_not_kept()) {
    const Properties before = chip_.properties();
    chip_.deselect();
    chip_.properties() = before;
  } else {
    chip_.deselect();
  }
  if (is_command && faults_.stc_never()) chip_.hold_tune();
  faults_.end();
}

bool Fault_layer::never_done() const {
  return faults_.on_bus() != nullptr && faults_.on_bus()->bus == Bus_fault::never_done;
}

}  // namespace sim
