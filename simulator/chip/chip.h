// SPDX-License-Identifier: GPL-3.0-or-later
// The receiver chip as an SPI slave.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "simulator/broadcast/broadcast.h"
#include "simulator/chip/chip_core.h"
#include "simulator/chip/chip_state.h"
#include "simulator/chip/clock.h"
#include "simulator/chip/observer.h"

namespace sim {

struct Chip_settings {
  bool always_ready = false;  ///< clear-to-send comes at once after every command
};

/// The receiver chip as an SPI slave: it sees the chip-select edges and gives one byte for one byte. It is strict: what
/// it does not know or its state forbids is refused with ERR_CMD, a command that comes before clear-to-send is dropped
/// with CMDOFERR, and both are reported to the observer.
class Chip {
 public:
  /// All are the caller's and must outlive the chip.
  Chip(const Broadcast& air, const Chip_settings& settings, const Clock& clock, Observer& observer);

  /// RSTB: low holds the chip in reset, which loses everything.
  void set_reset_line(bool high);
  /// Brown-out: loses all state and waits for POWER_UP.
  void brown_out();

  void select() { position_ = 0; }
  uint8_t exchange(uint8_t sent);
  void deselect();

  Chip_state state() const;
  void restore(const Chip_state& state);

  // The back door
  bool in_reset() const { return core_.mode == Mode::reset; }
  /// The tune or seek that the last command has started does not complete. @return false: it has started none
  bool hold_tune();
  Properties& properties() { return core_.properties; }

 private:
  bool ready() const;
  void settle();
  void start_over(Mode mode, Time busy);
  void take_command();
  void be_busy(Time span);
  uint8_t reply_byte(size_t number);
  uint8_t status_byte(unsigned number) const;

  const Chip_settings& settings_;
  Chip_core core_;

  // The transaction under way
  size_t position_ = 0;  // bytes so far
  uint8_t opcode_ = 0;
  bool dropped_ = false;  // the command came before clear-to-send
  std::array<uint8_t, 4096> command_{};

  // The last command
  Mode old_mode_ = Mode::reset;  // shown until clear-to-send
  Time ready_at_{};
  bool command_error_ = false;
  bool command_overflow_ = false;
  std::vector<uint8_t> response_;
};

}  // namespace sim
