// SPDX-License-Identifier: GPL-3.0-or-later
// The values of a JSON file, each with its place for messages.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "simulator/json/json_file.h"

namespace sim {

/// A JSON value with its place in the file, so that every message names it: "/ensembles/0/index". It refers to the
/// file, which must outlive it. Every function throws File_error for what it cannot read.
class Json_reader {
 public:
  explicit Json_reader(const Json_file& file) : Json_reader(file, file.root) {}

  [[noreturn]] void fail(const std::string& fault) const;

  /// The value must be an object with no other keys than these.
  void expect_keys(const std::vector<std::string_view>& keys) const;
  bool has(std::string_view key) const;
  Json_reader at(std::string_view key) const;  ///< a member that must be there
  /// The value must be an array of at most so many elements.
  std::vector<Json_reader> elements(size_t most = SIZE_MAX) const;
  /// Every member of an object whose keys are numbers from 0 to `largest`, without leading zeros.
  std::vector<std::pair<uint16_t, Json_reader>> numbered_members(uint16_t largest) const;

  int64_t whole_number(int64_t smallest, int64_t largest) const;
  /// A whole number from 0, or the same as text of hexadecimal digits: "0x43B5".
  uint32_t identifier(uint32_t largest) const;
  bool truth() const;
  std::string text() const;
  /// One of the names of a table, by the value beside it; another text is an "unknown `what`".
  template <typename Value, size_t count>
  Value named(const std::pair<Value, std::string_view> (&names)[count], const std::string& what) const {
    for (const auto& [value, name] : names)
      if (name == text()) return value;
    fail("unknown " + what + " " + in_quotes(text()));
  }
  /// Text of hexadecimal digits, two for each byte, with or without blanks between the bytes.
  std::vector<uint8_t> hex() const;

 private:
  Json_reader(const Json_file& file, const nlohmann::json& value) : file_(&file), value_(&value) {}

  const Json_file* file_;
  const nlohmann::json* value_;
};

}  // namespace sim
