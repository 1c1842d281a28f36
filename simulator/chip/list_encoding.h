// SPDX-License-Identifier: GPL-3.0-or-later
// Service lists and component info as the chip sends them.
#pragma once

#include <cstdint>
#include <vector>

#include "simulator/broadcast/broadcast.h"

namespace sim {

/// A service list as the chip hands it out, from SIZE on.
std::vector<uint8_t> encode_list(const Service_list& list);

/// What the chip reports about a component, from its global id on.
std::vector<uint8_t> encode_component_info(const Component& component);

}  // namespace sim
