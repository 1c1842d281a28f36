// SPDX-License-Identifier: GPL-3.0-or-later
// Multi-byte arguments of a command, little-endian. Internal to the driver.
#pragma once

#include <cstdint>

inline void put_le16(uint8_t* at, uint16_t value) {
  at[0] = static_cast<uint8_t>(value);
  at[1] = static_cast<uint8_t>(value >> 8);
}

inline void put_le32(uint8_t* at, uint32_t value) {
  put_le16(at, static_cast<uint16_t>(value));
  put_le16(at + 2, static_cast<uint16_t>(value >> 16));
}
