// SPDX-License-Identifier: GPL-3.0-or-later
// What a board keeps between runs.
#pragma once

#include <cstdint>
#include <map>

#include "simulator/chip/chip_state.h"

namespace sim {

struct Pin_state {
  uint8_t function = 0;  ///< as bcm2835_gpio_fsel takes it: 0 input, 1 output, 4 alternate function 0
  uint8_t pull = 0;      ///< as bcm2835_gpio_set_pud takes it: 0 off, 1 down, 2 up
  bool level = false;    ///< what the pin drives when it is an output
};

/// All that a board keeps while no program runs.
struct Board_state {
  Chip_state chip{};
  uint64_t on_air_ms = 0;                ///< the board's time, where a signal changes with it
  std::map<uint16_t, Pin_state> pins{};  ///< by GPIO number, those that were ever set up
};

}  // namespace sim
