// SPDX-License-Identifier: GPL-3.0-or-later
// JSON text, exact to the line feed. For the driver's own files.
#pragma once

#include <cstdint>
#include <sstream>
#include <string_view>

/// Appends text as it is.
inline void json_raw(std::stringstream& ss, std::string_view text) {
  ss.write(text.data(), static_cast<std::streamsize>(text.size()));
}

/// Appends `"key": value` and `end`.
void json_number(std::stringstream& ss, std::string_view key, uint32_t value, std::string_view end = ",\n");
