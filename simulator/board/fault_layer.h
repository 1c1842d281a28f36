// SPDX-License-Identifier: GPL-3.0-or-later
// What a board's faults change between the wire and the chip.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "simulator/board/faults.h"
#include "simulator/chip/chip.h"
#include "simulator/chip/observer.h"

namespace sim {

/// Passes every byte on between the wire and the chip, and changes what the faults in force change. The chip does not
/// know of it.
class Fault_layer {
 public:
  Fault_layer(Chip& chip, const Clock& clock, Observer& observer) : chip_(chip), clock_(clock), observer_(observer) {}

  /// The faults in place of those before, none of which stays in force.
  void use(Faults faults);
  Faults& faults() { return faults_; }
  const Faults& faults() const { return faults_; }

  /// Chip select goes low. Without `connected` the transaction does not reach the chip and reads zeros.
  void select(bool connected);
  /// The chip does not get the rest of the transaction.
  void disconnect() { connected_ = false; }
  bool connected() const { return connected_; }
  uint8_t exchange(uint8_t sent);
  void deselect();
  /// The controller never shows DONE in this transaction.
  bool never_done() const { return on_bus(Bus_fault::never_done); }

 private:
  bool on_bus(Bus_fault kind) const { return bus_ != nullptr && bus_->fault.bus == kind; }
  void begin(uint8_t opcode);
  uint8_t reply_byte(uint8_t live);
  uint8_t status_byte(unsigned number, uint8_t live);
  uint8_t response_byte(size_t at, uint8_t live);
  uint8_t distort(uint8_t received);

  Chip& chip_;
  const Clock& clock_;
  Observer& observer_;

  bool connected_ = false;
  size_t position_ = 0;  // bytes so far
  bool is_read_ = false;
  uint8_t previous_ = 0;  // the byte before, for `shift`

  Faults faults_;
  std::vector<Armed_fault*> in_force_;  // those of the last command, then those of this read
  size_t of_command_ = 0;               // how many of the last command
  Armed_fault* bus_ = nullptr;          // in this transaction, as the next two
  Armed_fault* property_ = nullptr;
  Armed_fault* stc_ = nullptr;
  Armed_fault* cts_ = nullptr;  // until the next command
  uint32_t cts_low_reads_ = 0;  // still to come
  bool cts_low_ = false;        // in this read
};

}  // namespace sim
