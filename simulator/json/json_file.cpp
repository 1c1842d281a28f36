// SPDX-License-Identifier: GPL-3.0-or-later
// A JSON file as a tree of values.
#include "simulator/json/json_file.h"

#include <algorithm>
#include <optional>
#include <sstream>

namespace sim {

namespace {

using nlohmann::json;

constexpr size_t deepest = 20;          // levels of arrays and objects
constexpr size_t most_values = 500000;  // of a file, so that its tree takes some 50 MB at most

// Builds the tree, and refuses what the parser itself accepts: a key twice, of which it keeps the last value, and
// nesting and numbers of values without a limit.
class Builder : public json::json_sax_t {
 public:
  Builder(std::string_view text, Json_file& file) : text_(text), in_(std::string(text)), file_(file) {}

  void build() {
    if (const size_t zero = text_.find('\0'); zero != text_.npos) fail(zero, "not valid JSON: a zero byte");
    json::sax_parse(in_, this);
  }

  bool null() override { return add(nullptr); }
  bool boolean(bool value) override { return add(value); }
  bool number_integer(int64_t value) override { return add(value); }
  bool number_unsigned(uint64_t value) override { return add(value); }
  bool number_float(double value, const std::string& /*text*/) override { return add(value); }
  bool string(std::string& value) override { return add(std::move(value)); }
  bool binary(json::binary_t& /*value*/) override { return false; }  // not in a text
  bool start_object(size_t /*size*/) override { return open(json::object()); }
  bool start_array(size_t /*size*/) override { return open(json::array()); }
  bool end_object() override { return close(); }
  bool end_array() override { return close(); }
  bool key(std::string& key) override {
    if (open_.back()->contains(key)) fail_here("duplicate key " + in_quotes(key), key.size() + 2);
    key_ = key;
    return true;
  }
  bool parse_error(size_t bytes_read, const std::string& /*token*/, const json::exception& error) override {
    constexpr int number_overflow = 406;
    fail(bytes_read > 0 ? bytes_read - 1 : 0, error.id == number_overflow ? "a number is too large" : "not valid JSON");
  }

 private:
  bool add(json value) {
    if (++values_ > most_values) fail_here("more than " + std::to_string(most_values) + " values");
    if (open_.empty())
      added_ = &(file_.root = std::move(value));
    else if (open_.back()->is_array())
      added_ = &open_.back()->emplace_back(std::move(value));
    else
      added_ = &((*open_.back())[key_] = std::move(value));
    return true;
  }
  bool open(json container) {
    add(std::move(container));
    if (open_.size() == deepest) fail_here("nested too deeply");
    open_.push_back(added_);
    return true;
  }
  bool close() {
    open_.pop_back();
    return true;
  }
  // At the token just parsed.
  [[noreturn]] void fail_here(const std::string& fault, size_t token_length = 1) {
    const std::string place = open_.empty() ? "" : place_of(*open_.back(), file_.root);
    fail(static_cast<size_t>(in_.tellg()) - token_length, (place.empty() ? "" : place + ": ") + fault);
  }
  [[noreturn]] void fail(size_t at, const std::string& fault) const {
    const std::string_view before = text_.substr(0, at);
    const auto line = 1 + std::count(before.begin(), before.end(), '\n');
    const size_t line_start = before.rfind('\n') + 1;  // 0 when there is none
    throw File_error(file_.name, "line " + std::to_string(line) + ", column " +
                                     std::to_string(before.size() - line_start + 1) + ": " + fault);
  }

  std::string_view text_;
  std::istringstream in_;  // knows how far the parser is
  Json_file& file_;
  std::vector<json*> open_;  // from the root on; a container does not move while one of its values is open
  json* added_ = nullptr;
  std::string key_;
  size_t values_ = 0;
};

std::optional<std::string> way_to(const json& value, const json& from) {
  if (&from == &value) return "";
  if (!from.is_structured()) return {};
  size_t index = 0;
  for (auto child = from.begin(); child != from.end(); ++child, ++index)
    if (const auto rest = way_to(value, *child))
      return "/" + (from.is_array() ? std::to_string(index) : child.key()) + *rest;
  return {};
}

}  // namespace

Json_file parse_json(std::string_view text, std::string name) {
  Json_file file{.name = std::move(name), .root = {}};
  Builder(text, file).build();
  return file;
}

std::string place_of(const json& value, const json& root) { return way_to(value, root).value_or(""); }

std::string in_quotes(std::string_view text) { return std::string("\"").append(text).append("\""); }

}  // namespace sim
