// SPDX-License-Identifier: GPL-3.0-or-later
// JSON text, exact to the line feed. For the driver's own files.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string_view>

/// Text on its way into a stream, gathered on the stack: each write into a stream costs more than all the copying.
class Json_text {
 public:
  explicit Json_text(std::stringstream& ss) : ss_(ss) {}

  /// Appends text as it is.
  void raw(std::string_view text);

  /// Appends `"key": value` and `end`.
  void number(std::string_view key, uint32_t value, std::string_view end = ",\n");

  /// Writes into the stream what it does not have yet: before anybody else writes there, and at the end. @return 0
  int write();

 private:
  char* room_for(size_t count);

  std::stringstream& ss_;
  std::array<char, 256> text_{};
  size_t length_ = 0;
};
