// SPDX-License-Identifier: GPL-3.0-or-later
#include "si468x/json_text.h"

#include <array>
#include <charconv>

void json_number(std::stringstream& ss, std::string_view key, uint32_t value, std::string_view end) {
  std::array<char, 10> digits{};  // 4294967295 is the longest
  const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), value);
  json_raw(ss, "\"");
  json_raw(ss, key);
  json_raw(ss, "\": ");
  json_raw(ss, {digits.data(), static_cast<size_t>(written.ptr - digits.data())});
  json_raw(ss, end);
}
