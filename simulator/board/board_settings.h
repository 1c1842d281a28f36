// SPDX-License-Identifier: GPL-3.0-or-later
// How a board behaves, whatever is on the air.
#pragma once

#include "simulator/chip/chip.h"

namespace sim {

struct Board_settings {
  Chip_settings chip{};
  bool spi_enabled = true;  ///< the system has switched SPI on: /dev/spidev0.0 exists
  bool registers = true;    ///< the peripheral registers can be mapped: bcm2835_init succeeds
};

}  // namespace sim
