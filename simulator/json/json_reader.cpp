// SPDX-License-Identifier: GPL-3.0-or-later
// The values of a JSON file, each with its place for messages.
#include "simulator/json/json_reader.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace sim {

namespace {

int digit_value(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

}  // namespace

void Json_reader::fail(const std::string& fault) const {
  const std::string place = place_of(*value_, file_->root);
  throw File_error(file_->name, (place.empty() ? "" : place + ": ") + fault);
}

void Json_reader::expect_keys(const std::vector<std::string_view>& keys) const {
  if (!value_->is_object()) fail("not an object");
  for (const auto& [key, value] : value_->items())
    if (std::find(keys.begin(), keys.end(), key) == keys.end()) fail("unknown key " + in_quotes(key));
}

bool Json_reader::has(std::string_view key) const { return value_->is_object() && value_->contains(key); }

Json_reader Json_reader::at(std::string_view key) const {
  if (!has(key)) fail("key " + in_quotes(key) + " is missing");
  return {*file_, (*value_)[std::string(key)]};
}

std::vector<Json_reader> Json_reader::elements(size_t most) const {
  if (!value_->is_array()) fail("not an array");
  if (value_->size() > most) fail("more than " + std::to_string(most) + " elements");
  std::vector<Json_reader> all;
  for (const nlohmann::json& value : *value_) all.push_back({*file_, value});
  return all;
}

std::vector<std::pair<uint16_t, Json_reader>> Json_reader::numbered_members(uint16_t largest) const {
  if (!value_->is_object()) fail("not an object");
  std::vector<std::pair<uint16_t, Json_reader>> all;
  for (const auto& [key, value] : value_->items()) {
    const Json_reader member(*file_, value);
    uint16_t number = 0;
    std::from_chars(key.data(), key.data() + key.size(), number);
    if (key != std::to_string(number) || number > largest)
      member.fail("the key is not a number from 0 to " + std::to_string(largest));
    all.emplace_back(number, member);
  }
  return all;
}

int64_t Json_reader::whole_number(int64_t smallest, int64_t largest) const {
  // The parser takes integers beyond 64 bits as floating-point numbers.
  const bool huge = value_->is_number_float() && std::abs(value_->get<double>()) >= 0x1p63;
  if (!value_->is_number_integer() && !huge) fail("not a whole number");
  const bool beyond = value_->is_number_unsigned() && value_->get<uint64_t>() > uint64_t{INT64_MAX};
  if (huge || beyond || value_->get<int64_t>() < smallest || value_->get<int64_t>() > largest)
    fail(value_->dump() + " is not from " + std::to_string(smallest) + " to " + std::to_string(largest));
  return value_->get<int64_t>();
}

bool Json_reader::truth() const {
  if (!value_->is_boolean()) fail("not true or false");
  return value_->get<bool>();
}

uint32_t Json_reader::identifier(uint32_t largest) const {
  if (!value_->is_string()) return static_cast<uint32_t>(whole_number(0, largest));
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
  if (!value_->is_string()) fail("not a text");
  return value_->get<std::string>();
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
