// SPDX-License-Identifier: GPL-3.0-or-later
// One list of members per record of a JSON file, to read, to write and to refuse.
#pragma once

#include <functional>
#include <limits>
#include <nlohmann/json.hpp>
#include <string_view>
#include <vector>

#include "simulator/broadcast/json_reader.h"

namespace sim {

/// The members of a record as a JSON object. Each record has one function that names each member once, with its key and
/// range, and that serves to refuse unknown keys, to read and to write:
///   void members(Json_members& json, Pin_state& pin) {
///     json("function", pin.function, 0, 7);
///     json("level", pin.level);
///   }
/// A member that is not in the file keeps its value; one that is named with `need` must be there.
class Json_members {
 public:
  using Read = std::function<void(const Json_reader&)>;
  using Write = std::function<nlohmann::json()>;

  template <typename Number>
  void operator()(std::string_view key, Number& value, int64_t smallest = smallest_of<Number>,
                  int64_t largest = std::numeric_limits<Number>::max()) {
    visit(
        key, [&](const Json_reader& json) { value = static_cast<Number>(json.whole_number(smallest, largest)); },
        [&] { return nlohmann::json(value); });
  }
  void operator()(std::string_view key, bool& value) {
    visit(
        key, [&](const Json_reader& json) { value = json.truth(); }, [&] { return nlohmann::json(value); });
  }
  /// Any other member; one for which `write` gives null, or without `write`, is not written.
  void operator()(std::string_view key, const Read& read, const Write& write = nullptr) { visit(key, read, write); }

  template <typename... Arguments>
  void need(std::string_view key, Arguments&&... arguments) {
    if (reader_ != nullptr) static_cast<void>(reader_->at(key));
    (*this)(key, std::forward<Arguments>(arguments)...);
  }

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
  template <typename Record>
  static nlohmann::json write(Record record) {
    nlohmann::json object = nlohmann::json::object();
    Json_members writer;
    writer.object_ = &object;
    members(writer, record);
    return object;
  }

 private:
  void visit(std::string_view key, const Read& read, const Write& write);

  std::vector<std::string_view> keys_;
  const Json_reader* reader_ = nullptr;
  nlohmann::json* object_ = nullptr;
};

}  // namespace sim
