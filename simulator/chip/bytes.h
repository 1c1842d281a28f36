// SPDX-License-Identifier: GPL-3.0-or-later
// Numbers and bits in the bytes of commands and replies.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "trace/observer.h"

namespace sim {

using trace::Bytes;

/// Numbers on the wire are little-endian, in commands and in replies.
inline uint16_t le16(Bytes bytes, size_t at) { return static_cast<uint16_t>(bytes[at] | bytes[at + 1] << 8); }

inline uint32_t le32(Bytes bytes, size_t at) {
  return le16(bytes, at) | static_cast<uint32_t>(le16(bytes, at + 2)) << 16;
}

/// The bits of `mask` when `set`, otherwise none.
inline unsigned bit(bool set, unsigned mask) { return set ? mask : 0U; }

inline void put8(std::vector<uint8_t>& out, unsigned value) { out.push_back(static_cast<uint8_t>(value)); }

inline void put16(std::vector<uint8_t>& out, unsigned value) {
  put8(out, value);
  put8(out, value >> 8);
}

inline void put32(std::vector<uint8_t>& out, uint32_t value) {
  put16(out, value & 0xFFFF);
  put16(out, value >> 16);
}

}  // namespace sim
