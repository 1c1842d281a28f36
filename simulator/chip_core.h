// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "simulator/board_state.h"
#include "simulator/bootloader.h"
#include "simulator/broadcast.h"
#include "simulator/clock.h"
#include "simulator/dab_receiver.h"
#include "simulator/faults.h"
#include "simulator/fm_receiver.h"
#include "simulator/properties.h"

namespace sim {

/// What the chip's commands work on, behind the protocol.
struct Chip_core {
  const Broadcast& air;
  const Clock& clock;
  const Faults& faults;

  Mode mode = Mode::reset;  ///< a command that changes it takes effect when clear-to-send comes
  Bootloader bootloader{};
  Properties properties{};
  Dab_receiver dab{air};
  Fm_receiver fm{air};
};

}  // namespace sim
