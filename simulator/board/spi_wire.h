// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "simulator/board/board_log.h"
#include "simulator/board/faults.h"
#include "simulator/chip/chip.h"
#include "simulator/chip/clock.h"

namespace sim {

/// The lines between controller and chip: the time that bytes take, faults on the way, and the check that the host has
/// set up SPI0 as the chip needs it. A transaction set up wrongly does not reach the chip and reads zeros.
class Spi_wire {
 public:
  Spi_wire(Chip& chip, Clock& clock, Faults& faults, Board_log& log);

  void select(uint32_t control, uint32_t divider);  ///< CS register with TA, and CLK
  uint8_t exchange(uint8_t sent);
  void deselect();
  /// The host has opened a transaction inside an open one.
  void select_again();
  bool never_done() const;

  void set_mapped(bool on) { mapped_ = on; }  ///< the registers, between bcm2835_init and bcm2835_close
  void set_running(bool on) { running_ = on; }
  bool running() const { return running_; }
  void set_bit_order(bool msb_first) { msb_first_ = msb_first; }

 private:
  std::string setup_mistake(uint32_t control, uint32_t divider) const;
  void begin(uint8_t opcode);
  uint8_t distort(const Fault& fault, uint8_t received);

  Chip& chip_;
  Clock& clock_;
  Faults& faults_;
  Board_log& log_;

  bool mapped_ = false;
  bool running_ = false;  // between bcm2835_spi_begin and bcm2835_spi_end
  bool msb_first_ = true;

  bool reaches_chip_ = false;
  Time byte_time_{};
  Time start_{};
  uint8_t previous_ = 0;  // the byte before, for `shift`
  std::vector<uint8_t> sent_;
  std::vector<uint8_t> received_;
};

}  // namespace sim
