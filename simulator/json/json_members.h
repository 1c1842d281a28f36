// SPDX-License-Identifier: GPL-3.0-or-later
// One list of members per record of a JSON file, to read, to write and to refuse.
#pragma once

#include <concepts>
#include <functional>
#include <limits>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "simulator/json/json_reader.h"

namespace sim {

/// The members of a record as a JSON object. Each record has one function that names each member once, with its key and
/// range, and that serves to refuse unknown keys, to read and to write:
///   void members(Json_members& json, Pin_state& pin) {
///     json("function", pin.function, 0, 7);
///     json("level", pin.level);
///   }
/// Members are whole numbers, truth values, records that have such a function, and vectors, optional values and maps of
/// these. A member that is not in the file keeps its value; one that is named with `need` must be there.
class Json_members {
 public:
  using Read = std::function<void(const Json_reader&)>;
  using Write = std::function<nlohmann::json()>;

  template <typename Value, typename... Limits>
  requires(!std::invocable<Value, const Json_reader&>) void operator()(std::string_view key, Value& value,
                                                                       Limits... limits) {
    visit(
        key, [&](const Json_reader& json) { get(json, value, limits...); }, [&] { return put(value); });
  }
  /// Any other member; one for which `write` gives null, or without `write`, is not written.
  void operator()(std::string_view key, const Read& read, const Write& write = nullptr) { visit(key, read, write); }

  template <typename... Arguments>
  void need(std::string_view key, Arguments&&... arguments) {
    if (reader_ != nullptr) static_cast<void>(reader_->at(key));
    (*this)(key, std::forward<Arguments>(arguments)...);
  }
  bool writing() const { return object_ != nullptr; }

  /// `json` must be an object without other keys than the members'.
  template <typename Record>
  static void read(const Json_reader& json, Record& record) {
    Json_members names;
    members(names, record);
    json.expect_keys(names.keys_);
    Json_members reader;
    reader.reader_ = &json;
    members(reader, record);
  }
  /// Appends an array of at most so many records; `check` refuses those that do not go with `records` before them.
  template <typename Record, typename Check>
  static void read_list(const Json_reader& json, size_t most, std::vector<Record>& records, Check check) {
    for (const Json_reader& entry : json.elements(most)) {
      Record record;
      read(entry, record);
      check(entry, record);
      records.push_back(std::move(record));
    }
  }
  template <typename Record>
  static nlohmann::json write(Record record) {
    nlohmann::json object = nlohmann::json::object();
    Json_members writer;
    writer.object_ = &object;
    members(writer, record);
    return object;
  }

 private:
  template <typename Number>
  static constexpr int64_t smallest_of = std::is_signed_v<Number> ? -(int64_t{1} << std::numeric_limits<Number>::digits)
                                                                  : 0;

  template <std::integral Number>
  static void get(const Json_reader& json, Number& value, int64_t smallest = smallest_of<Number>,
                  int64_t largest = std::numeric_limits<Number>::max()) {
    value = static_cast<Number>(json.whole_number(smallest, largest));
  }
  static void get(const Json_reader& json, bool& value) { value = json.truth(); }
  template <typename Record>
  requires std::is_class_v<Record>
  static void get(const Json_reader& json, Record& record) { read(json, record); }
  template <typename Value>
  static void get(const Json_reader& json, std::optional<Value>& value) {
    get(json, value.emplace());
  }
  template <typename Value, typename... Limits>
  static void get(const Json_reader& json, std::vector<Value>& values, size_t most = SIZE_MAX, Limits... limits) {
    values.clear();
    for (const Json_reader& element : json.elements(most)) get(element, values.emplace_back(), limits...);
  }
  template <typename Value>
  static void get(const Json_reader& json, std::map<uint16_t, Value>& values, uint16_t largest_key = UINT16_MAX) {
    for (const auto& [key, value] : json.numbered_members(largest_key)) get(value, values[key]);
  }

  template <std::integral Number>
  static nlohmann::json put(Number value) {
    return value;
  }
  template <typename Record>
  requires std::is_class_v<Record>
  static nlohmann::json put(const Record& record) { return write(record); }
  template <typename Value>
  static nlohmann::json put(const std::optional<Value>& value) {
    return value ? put(*value) : nlohmann::json();
  }
  template <typename Value>
  static nlohmann::json put(const std::vector<Value>& values) {
    nlohmann::json array = nlohmann::json::array();
    for (const Value& value : values) array.push_back(put(value));
    return array;
  }
  template <typename Value>
  static nlohmann::json put(const std::map<uint16_t, Value>& values) {
    nlohmann::json object = nlohmann::json::object();
    for (const auto& [key, value] : values) object[std::to_string(key)] = put(value);
    return object;
  }

  void visit(std::string_view key, const Read& read, const Write& write) {
    if (reader_ != nullptr) {
      if (reader_->has(key)) read(reader_->at(key));
    } else if (object_ != nullptr) {
      nlohmann::json value = write ? write() : nlohmann::json();
      if (!value.is_null()) (*object_)[std::string(key)] = std::move(value);
    } else {
      keys_.push_back(key);
    }
  }

  std::vector<std::string_view> keys_;
  const Json_reader* reader_ = nullptr;
  nlohmann::json* object_ = nullptr;
};

}  // namespace sim
