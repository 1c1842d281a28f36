// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

#include "simulator/broadcast/broadcast.h"

namespace sim {

/// The value of SIZE for a list: bytes from SIZE's end to the end of the list.
uint32_t list_size(const Service_list& list);

/// A service list as the chip hands it out, from SIZE on.
std::vector<uint8_t> encode_list(const Service_list& list);

/// What the chip says about a component, from its global id on.
std::vector<uint8_t> encode_component_info(const Component& component);

/// Bytes that the user applications take in there.
size_t user_applications_size(const Component& component);

}  // namespace sim
