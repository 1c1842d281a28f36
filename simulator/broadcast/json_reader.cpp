// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/broadcast/json_reader.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <set>

namespace sim {

namespace {

// What comes from a file may hold line ends; a message is one line.
std::string one_line(std::string text) {
  for (char& c : text)
    if (static_cast<unsigned char>(c) < ' ' || c == 0x7F) c = '?';
  return text;
}

int digit_value(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// Sees the text as it is parsed. The parser itself keeps the last of several members with one key.
class Strict {
 public:
  explicit Strict(const std::string& file) : file_(file) {}

  bool operator()(int /*depth*/, nlohmann::json::parse_event_t event, const nlohmann::json& parsed) {
    using Event = nlohmann::json::parse_event_t;
    constexpr size_t deepest = 20;
    if (event == Event::key && !keys_.back().insert(parsed.get<std::string>()).second)
      throw File_error(file_, "key " + in_quotes(parsed.get<std::string>()) + " is in an object twice");
    if (event == Event::object_start || event == Event::array_start) keys_.emplace_back();
    if (event == Event::object_end || event == Event::array_end) keys_.pop_back();
    if (keys_.size() > deepest) throw File_error(file_, "nested too deeply");
    return true;
  }

 private:
  const std::string& file_;
  std::vector<std::set<std::string>> keys_;  // of the objects that are open
};

}  // namespace

File_error::File_error(const std::string& file, const std::string& fault)
    : std::runtime_error(one_line(file + ": " + fault)) {}

std::string in_quotes(std::string_view text) { return std::string("\"").append(text).append("\""); }

std::string read_text(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw File_error(path, std::string("cannot be opened: ") + std::strerror(errno));
  try {
    in.exceptions(std::ios::badbit);  // a directory, for example, opens but cannot be read
    return {std::istreambuf_iterator<char>(in), {}};
  } catch (const std::ios_base::failure&) {
    throw File_error(path, "cannot be read");
  }
}

nlohmann::json parse_json(std::string_view text, const std::string& file) {
  try {
    return nlohmann::json::parse(text, Strict(file));
  } catch (const nlohmann::json::parse_error& error) {
    const std::string_view before = text.substr(0, error.byte > 0 ? error.byte - 1 : 0);
    const auto line = 1 + std::count(before.begin(), before.end(), '\n');
    const size_t line_start = before.rfind('\n') + 1;  // 0 when there is none
    throw File_error(file, "line " + std::to_string(line) + ", column " +
                               std::to_string(before.size() - line_start + 1) + ": not valid JSON");
  } catch (const nlohmann::json::out_of_range&) {
    throw File_error(file, "a number is too large");
  }
}

Json_reader::Json_reader(const nlohmann::json& value, std::string file, std::string place)
    : value_(value), file_(std::move(file)), place_(std::move(place)) {}

void Json_reader::fail(const std::string& fault) const {
  throw File_error(file_, (place_.empty() ? "" : place_ + ": ") + fault);
}

void Json_reader::expect_keys(const std::vector<std::string_view>& keys) const {
  if (!value_.is_object()) fail("not an object");
  for (const auto& [key, value] : value_.items())
    if (std::find(keys.begin(), keys.end(), key) == keys.end()) fail("unknown key " + in_quotes(key));
}

bool Json_reader::has(std::string_view key) const { return value_.is_object() && value_.contains(key); }

Json_reader Json_reader::at(std::string_view key) const {
  if (!has(key)) fail("key " + in_quotes(key) + " is missing");
  return {value_[std::string(key)], file_, place_ + "/" + std::string(key)};
}

std::vector<Json_reader> Json_reader::elements(size_t most) const {
  if (!value_.is_array()) fail("not an array");
  if (value_.size() > most) fail("more than " + std::to_string(most) + " elements");
  std::vector<Json_reader> all;
  for (size_t i = 0; i < value_.size(); ++i) all.emplace_back(value_[i], file_, place_ + "/" + std::to_string(i));
  return all;
}

std::vector<std::pair<std::string, Json_reader>> Json_reader::members() const {
  if (!value_.is_object()) fail("not an object");
  std::vector<std::pair<std::string, Json_reader>> all;
  for (const auto& [key, value] : value_.items()) all.emplace_back(key, Json_reader(value, file_, place_ + "/" + key));
  return all;
}

int64_t Json_reader::whole_number(int64_t smallest, int64_t largest) const {
  if (!value_.is_number_integer()) fail("not a whole number");
  const bool beyond = value_.is_number_unsigned() && value_.get<uint64_t>() > uint64_t{INT64_MAX};
  if (beyond || value_.get<int64_t>() < smallest || value_.get<int64_t>() > largest)
    fail(value_.dump() + " is not from " + std::to_string(smallest) + " to " + std::to_string(largest));
  return value_.get<int64_t>();
}

bool Json_reader::truth() const {
  if (!value_.is_boolean()) fail("not true or false");
  return value_.get<bool>();
}

uint32_t Json_reader::identifier(uint32_t largest) const {
  if (!value_.is_string()) return static_cast<uint32_t>(whole_number(0, largest));
  const std::string digits = text();
  const char* const end = digits.data() + digits.size();
  uint32_t number = 0;
  if (digits.size() > 2 && digits.starts_with("0x")) {
    const auto [rest, error] = std::from_chars(digits.data() + 2, end, number, 16);
    if (error == std::errc() && rest == end && number <= largest) return number;
  }
  fail(in_quotes(digits) + " is not from \"0x0\" to " + std::to_string(largest));
}

std::string Json_reader::text() const {
  if (!value_.is_string()) fail("not a text");
  return value_.get<std::string>();
}

std::vector<uint8_t> Json_reader::hex() const {
  std::vector<uint8_t> bytes;
  const std::string digits = text();
  for (size_t at = 0; at < digits.size();) {
    if (digits[at] == ' ') {
      ++at;
      continue;
    }
    const int high = digit_value(digits[at]);
    const int low = at + 1 < digits.size() ? digit_value(digits[at + 1]) : -1;
    if (high < 0 || low < 0) fail("not bytes in hexadecimal digits");
    bytes.push_back(static_cast<uint8_t>(high << 4 | low));
    at += 2;
  }
  return bytes;
}

}  // namespace sim
