// SPDX-License-Identifier: GPL-3.0-or-later
// The values of a JSON file, each with its place for messages.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace sim {

/// A file of the simulated board cannot be used. The message is one line: file, place in it, fault.
class File_error : public std::runtime_error {
 public:
  File_error(const std::string& file, const std::string& fault);
};

/// The text with a question mark for each control character: names and keys may hold line ends, a message is one line.
std::string one_line(std::string text);

/// The text in double quotes, for messages.
std::string in_quotes(std::string_view text);

/// The whole text of a file. @throws File_error
std::string read_text(const std::string& path);

/// @throws File_error that names `file` when the text is not JSON, is nested deeper than 20 levels, or has a key twice
nlohmann::json parse_json(std::string_view text, const std::string& file);

/// The smallest value of an integer type.
template <typename Number>
inline constexpr int64_t smallest_of = std::numeric_limits<Number>::is_signed
                                           ? -(int64_t{1} << std::numeric_limits<Number>::digits)
                                           : 0;

/// A JSON value with its place in the file, so that every message names it: "/ensembles/0/index". It refers to the
/// parsed file, which must outlive it. Every function throws File_error for what it cannot read.
class Json_reader {
 public:
  Json_reader(const nlohmann::json& value, std::string file, std::string place = {});

  [[noreturn]] void fail(const std::string& fault) const;

  /// The value must be an object with no other keys than these.
  void expect_keys(const std::vector<std::string_view>& keys) const;
  bool has(std::string_view key) const;
  Json_reader at(std::string_view key) const;  ///< a member that must be there
  /// The value must be an array of at most so many elements.
  std::vector<Json_reader> elements(size_t most = SIZE_MAX) const;
  /// Every member of an object, with its key.
  std::vector<std::pair<std::string, Json_reader>> members() const;

  int64_t whole_number(int64_t smallest, int64_t largest) const;
  /// A whole number from 0, or the same as text of hexadecimal digits: "0x43B5".
  uint32_t identifier(uint32_t largest) const;
  bool truth() const;
  std::string text() const;
  /// Text of hexadecimal digits, two for each byte, with or without blanks between the bytes.
  std::vector<uint8_t> hex() const;

 private:
  const nlohmann::json& value_;
  std::string file_;
  std::string place_;
};

}  // namespace sim
