// SPDX-License-Identifier: GPL-3.0-or-later
// The program's link to the board.
#pragma once

#include <cstdint>

#include "platform/kernel/board_trace.h"
#include "platform/kernel/gpio_line.h"
#include "platform/kernel/settings.h"
#include "platform/kernel/spi_device.h"
#include "platform/kernel/split_transaction.h"

namespace kernel {

/// The link of a run to the board. A line is requested only when it is driven: an earlier request would need a
/// level, and the wrong one resets a playing chip.
class Link {
 public:
  /// Ends the program when its settings cannot be used.
  Link();

  bool open();  ///< the SPI device
  /// Sets up the SPI device; before it and after `end_spi` transfers receive zeros.
  bool begin_spi();
  void end_spi() { spi_in_use_ = false; }

  /// One whole transaction, in place.
  void transfer(uint8_t* bytes, uint32_t length);
  Split_transaction& split() { return split_; }
  /// `pin` is a Raspberry Pi's GPIO; KELVO_RESET names another line for it.
  void drive(uint8_t pin, bool high);
  void wait(trace::Time span);

 private:
  Settings settings_;
  Board_trace trace_;
  Spi_device spi_;
  bool spi_in_use_ = false;
  Split_transaction split_;
  Gpio_line reset_line_;
};

}  // namespace kernel
