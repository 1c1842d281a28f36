// SPDX-License-Identifier: GPL-3.0-or-later
// JSON text, byte for byte. Internal to the driver.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string_view>

/// The key of a member: a literal that is not empty. The rows of text reports have none.
class Json_key {
 public:
  static constexpr size_t longest = 40;

  constexpr Json_key() = default;
  consteval Json_key(const char* text) : text_(text) {
    if (text_.empty() || text_.size() > longest) throw "a member has no key, or a very long one";
  }
  constexpr std::string_view text() const { return text_; }

 private:
  std::string_view text_;
};

/// Writes the text of one report into a stream, through a buffer on the stack: a write into a stream costs more than
/// the copying. A report creates one and passes it to the functions that write its parts.
class Json_text {
 public:
  explicit Json_text(std::stringstream& ss) : ss_(ss) {}

  /// Appends text as it is.
  void raw(std::string_view text);

  /// Appends `"key": value` and `end`.
  void number(const Json_key& key, uint32_t value, std::string_view end = ",\n");

  /// Flushes: ends the report. @return 0
  [[nodiscard]] int end();

 private:
  void flush();

  std::stringstream& ss_;
  std::array<char, 256> text_{};
  size_t length_ = 0;
};
