// SPDX-License-Identifier: GPL-3.0-or-later
// The chip's state behind the protocol.
#pragma once

#include <cstdint>

#include "simulator/broadcast/broadcast.h"
#include "simulator/chip/bootloader.h"
#include "simulator/chip/chip_state.h"
#include "simulator/chip/clock.h"
#include "simulator/chip/dab_receiver.h"
#include "simulator/chip/fm_receiver.h"
#include "simulator/chip/observer.h"
#include "simulator/chip/properties.h"

namespace sim {

/// What the chip's commands work on, behind the protocol.
struct Chip_core {
  const Broadcast& air;
  const Clock& clock;
  Observer& observer;

  Mode mode = Mode::reset;  ///< a command that changes it takes effect when clear-to-send comes
  Bootloader bootloader{};
  Properties properties{};
  Dab_receiver dab{air, clock, observer};
  Fm_receiver fm{air, clock, observer};
};

}  // namespace sim
