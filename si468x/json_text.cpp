// SPDX-License-Identifier: GPL-3.0-or-later
#include "si468x/json_text.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <charconv>

// The line is put together first: one write into the stream costs more than all the copying.
void json_number(std::stringstream& ss, std::string_view key, uint32_t value, std::string_view end) {
  std::array<char, 64> line{};
  assert(key.size() + end.size() <= line.size() - 14);  // what is left holds `"": ` and the longest number, 4294967295
  char* at = line.data();
  *at++ = '"';
  at = std::copy(key.begin(), key.end(), at);
  at = std::copy_n("\": ", 3, at);
  at = std::to_chars(at, line.data() + line.size(), value).ptr;
  at = std::copy(end.begin(), end.end(), at);
  json_raw(ss, {line.data(), static_cast<size_t>(at - line.data())});
}
