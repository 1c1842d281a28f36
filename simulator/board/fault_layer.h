// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

#include "simulator/board/faults.h"
#include "simulator/chip/chip.h"
#include "simulator/chip/observer.h"

namespace sim {

/// Between the wire and the chip: passes every byte on, and changes what the faults in force change. The chip does not
/// know of it.
class Fault_layer {
 public:
  Fault_layer(Chip& chip, Faults& faults, const Clock& clock, Observer& observer)
      : chip_(chip), faults_(faults), clock_(clock), observer_(observer) {}

  /// Chip select goes low. Without `connected` the transaction does not reach the chip and reads zeros.
  void select(bool connected);
  /// The chip does not get the rest of the transaction.
  void disconnect() { connected_ = false; }
  bool connected() const { return connected_; }
  uint8_t exchange(uint8_t sent);
  void deselect();
  /// The controller never shows DONE in this transaction.
  bool never_done() const;

 private:
  void begin(uint8_t opcode);
  uint8_t read(uint8_t live) const;
  uint8_t distort(uint8_t received);

  Chip& chip_;
  Faults& faults_;
  const Clock& clock_;
  Observer& observer_;

  bool connected_ = false;
  size_t position_ = 0;  // bytes so far
  uint8_t opcode_ = 0;
  uint8_t previous_ = 0;  // the byte before, for `shift`
};

}  // namespace sim
