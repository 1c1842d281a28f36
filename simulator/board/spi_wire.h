// SPDX-License-Identifier: GPL-3.0-or-later
// The lines between SPI controller and chip.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "simulator/board/fault_layer.h"
#include "simulator/chip/clock.h"
#include "simulator/chip/observer.h"

namespace sim {

/// The lines between controller and chip: the time that bytes take, and the check that the host has set up SPI0 as the
/// chip needs it. A transaction set up wrongly does not reach the chip and reads zeros.
class Spi_wire {
 public:
  Spi_wire(Fault_layer& chip, Clock& clock, Observer& observer);

  void select(uint32_t control, uint32_t divider);  ///< CS register with TA, and CLK
  uint8_t exchange(uint8_t sent);
  void deselect();
  /// The host has opened a transaction inside an open one.
  void select_again();
  bool never_done() const { return chip_.never_done(); }

  void set_mapped(bool on) { mapped_ = on; }  ///< the registers, between bcm2835_init and bcm2835_close
  void set_running(bool on) { running_ = on; }
  bool running() const { return running_; }
  void set_bit_order(bool msb_first) { msb_first_ = msb_first; }

 private:
  std::string setup_mistake(uint32_t control, uint32_t divider) const;

  Fault_layer& chip_;
  Clock& clock_;
  Observer& observer_;

  bool mapped_ = false;
  bool running_ = false;  // between bcm2835_spi_begin and bcm2835_spi_end
  bool msb_first_ = true;

  Time byte_time_{};
  Time start_{};
  std::vector<uint8_t> sent_;
  std::vector<uint8_t> received_;
};

}  // namespace sim
