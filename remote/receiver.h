// SPDX-License-Identifier: GPL-3.0-or-later
// What the receiver chip does for an order. All of it needs an open link: live::with_board.
#pragma once

#include <cstdint>

#include "live/board.h"
#include "remote/orders.h"

namespace remote {

/// Reads which application the chip runs.
live::Outcome read_mode(Mode& mode);
/// Fails unless it is the DAB application: a brown-out ends it.
live::Outcome check_dab();

/// Resets the chip and boots it from the embedded images; `mode` is dab or fm. The steps print messages on standard
/// output.
live::Outcome boot(Mode mode);

/// What the chip is tuned to.
struct Tuning {
  uint8_t index = 0;  ///< in the chip's frequency list
  uint32_t khz = 0;   ///< 0 before the first tune
  bool acquired = false;
};
live::Outcome read_tuning(Tuning& tuning);

/// Tunes, which ends the service that plays.
live::Outcome tune(uint8_t index);
/// Waits for the ensemble and its service list, about 13 s at most.
live::Outcome await_services();

live::Outcome start(const Play& play);
live::Outcome stop(const Play& play);
live::Outcome seek(bool up);
live::Outcome read_volume(uint16_t& level);
live::Outcome set_volume(uint16_t level);

}  // namespace remote
