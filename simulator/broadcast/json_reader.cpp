// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/broadcast/json_reader.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <fstream>
#include <nlohmann/json.hpp>
#include <set>

namespace sim {

namespace {

constexpr size_t largest_file = size_t{16} << 20;  // bytes

int digit_value(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// Checks what the parser itself accepts: several members with one key, of which it keeps the last, and values nested
// without a limit. (The parser's own callback would compare each object with all elements before it.)
class Strict : public nlohmann::json_sax<nlohmann::json> {
 public:
  explicit Strict(const std::string& file) : file_(file) {}

  bool null() override { return element(); }
  bool boolean(bool /*value*/) override { return element(); }
  bool number_integer(int64_t /*value*/) override { return element(); }
  bool number_unsigned(uint64_t /*value*/) override { return element(); }
  bool number_float(double /*value*/, const std::string& /*text*/) override { return element(); }
  bool string(std::string& /*value*/) override { return element(); }
  bool binary(nlohmann::json::binary_t& /*value*/) override { return element(); }
  bool start_object(size_t /*size*/) override { return open(false); }
  bool start_array(size_t /*size*/) override { return open(true); }
  bool end_object() override { return close(); }
  bool end_array() override { return close(); }
  bool key(std::string& key) override {
    Level& object = open_.back();
    object.child = key;
    if (!object.keys.insert(key).second) fail("key " + in_quotes(key) + " is there twice", 1);
    return true;
  }
  bool parse_error(size_t /*place*/, const std::string& /*token*/,
                   const nlohmann::json::exception& /*error*/) override {
    return false;  // the parser reports it
  }

 private:
  // An object or array that is open, and which of its values is parsed now.
  struct Level {
    bool is_array = false;
    size_t count = 0;
    std::string child{};
    std::set<std::string> keys{};
  };

  bool element() {
    if (!open_.empty() && open_.back().is_array) open_.back().child = std::to_string(open_.back().count++);
    return true;
  }
  bool open(bool is_array) {
    constexpr size_t deepest = 20;
    element();
    if (open_.size() == deepest) fail("nested too deeply", 0);
    open_.push_back({.is_array = is_array});
    return true;
  }
  bool close() {
    open_.pop_back();
    return true;
  }
  [[noreturn]] void fail(const std::string& fault, size_t levels_above) const {
    std::string place;
    for (size_t i = 0; i + levels_above < open_.size(); ++i) place += "/" + open_[i].child;
    throw File_error(file_, (place.empty() ? "" : place + ": ") + fault);
  }

  const std::string& file_;
  std::vector<Level> open_;
};

}  // namespace

std::string one_line(std::string text) {
  for (char& c : text)
    if (static_cast<unsigned char>(c) < ' ' || c == 0x7F) c = '?';
  return text;
}

File_error::File_error(const std::string& file, const std::string& fault)
    : std::runtime_error(one_line(file + ": " + fault)) {}

std::string in_quotes(std::string_view text) { return std::string("\"").append(text).append("\""); }

std::string read_text(const std::string& path) {
  constexpr size_t block_size = 65536;
  errno = 0;
  std::ifstream in(path, std::ios::binary);
  if (!in) throw File_error(path, std::string("cannot be opened: ") + std::strerror(errno));
  std::string text;
  while (in) {
    const size_t size = text.size();
    text.resize(size + block_size);
    in.read(text.data() + size, block_size);
    text.resize(size + static_cast<size_t>(in.gcount()));
    if (text.size() > largest_file) throw File_error(path, "more than 16 MiB");
  }
  if (in.bad()) throw File_error(path, std::string("cannot be read: ") + std::strerror(errno));
  return text;
}

nlohmann::json parse_json(std::string_view text, const std::string& file) {
  try {
    Strict strict(file);
    nlohmann::json::sax_parse(text, &strict);
    return nlohmann::json::parse(text);
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
