// SPDX-License-Identifier: GPL-3.0-or-later
// One row per field of a record: its place in the reply, its label and its JSON key. The compiler refuses a row that
// reaches beyond its reply, a printed row without a label and a JSON row without a key. Internal to the driver.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <span>
#include <string_view>
#include <type_traits>

#include "si468x/json_text.h"
#include "si468x/reply_view.h"
#include "si468x/report_text.h"

template <typename Record>
struct Field {
  unsigned byte = 0, low = 0, width = 0;  ///< in the chip's reply: first byte, its lowest bit, bits
  const char* label = nullptr;            ///< in the text report
  Json_key key;                           ///< in JSON
  void (*store)(Record&, uint32_t) = nullptr;
  uint32_t (*load)(const Record&) = nullptr;
};

template <typename Record, typename Value>
Record record_of(Value Record::*);  // for decltype only

template <typename Record, typename Value>
Value value_of(Value Record::*);  // likewise

/// The row of the field `Member`. A record without a text report needs no labels, one without JSON no keys.
template <auto Member>
consteval auto field(unsigned byte, unsigned low, unsigned width, const char* label = nullptr, Json_key key = {}) {
  using Record = decltype(record_of(Member));
  using Value = decltype(value_of(Member));
  if (width == 0 || width > 8 * sizeof(Value) || low + width > 32) throw "more or fewer bits than the field can hold";
  return Field<Record>{
      byte,
      low,
      width,
      label,
      key,
      [](Record& record, uint32_t value) { record.*Member = static_cast<Value>(value); },
      [](const Record& record) { return uint32_t{record.*Member}; },
  };
}

consteval bool all_rows(const auto& fields, auto holds) {
  return std::all_of(std::begin(fields), std::end(fields), holds);
}

/// Sets the fields of `record` from a reply of fixed length, which includes the leading byte.
template <const auto& fields>
void decode(auto& record, const auto& reply) {
  using Reply = decltype(std::span{reply});
  static_assert(Reply::extent != std::dynamic_extent);
  static_assert(all_rows(fields, [](const auto& f) { return 1 + f.byte + (f.low + f.width + 7) / 8 <= Reply::extent; }),
                "a row reaches beyond the reply");
  const Reply_view view(reply);
  for (const auto& f : fields) f.store(record, view.field(f.byte, f.low, f.width));
}

template <const auto& fields>
void print_fields(const auto& record) {
  static_assert(
      all_rows(fields,
               [](const auto& f) { return f.label != nullptr && std::string_view(f.label).size() < value_column; }),
      "a printed row has no label, or one that its column cannot hold");
  for (const auto& f : fields) print_line(f.label, f.load(record));
}

/// The members, one per line; no comma after the last.
template <const auto& fields>
void json_fields(Json_text& json, const auto& record) {
  static_assert(all_rows(fields, [](const auto& f) { return !f.key.text().empty(); }), "a JSON row has no key");
  for (const auto& f : fields) json.number(f.key, f.load(record), &f == std::end(fields) - 1 ? "\n" : ",\n");
}
