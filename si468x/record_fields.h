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

#include "si468x/json_text.h"
#include "si468x/reply_view.h"
#include "si468x/report_text.h"

template <typename Record>
struct Field {
  unsigned end = 0;             ///< the first byte of the chip's reply behind it
  const char* label = nullptr;  ///< in the text report
  Json_key key = {};            ///< in JSON
  void (*store)(const Reply_view&, Record&) = nullptr;
  uint32_t (*number)(const Record&) = nullptr;                ///< null for a text
  std::span<const uint8_t> (*text)(const Record&) = nullptr;  ///< null for a number
};

template <typename Record, typename Value>
Record record_of(Value Record::*);  // for decltype only

template <typename Record, typename Value>
Value value_of(Value Record::*);  // likewise

/// The row of the number `Member`: `width` bits from bit `low` of byte `byte` up. A record without a text report needs
/// no labels, one without JSON no keys.
template <auto Member, unsigned byte, unsigned low, unsigned width>
consteval auto field(const char* label = nullptr, Json_key key = {}) {
  using Record = decltype(record_of(Member));
  using Value = decltype(value_of(Member));
  static_assert(width > 0 && width <= 8 * sizeof(Value) && low + width <= 32, "more bits than the field can hold");
  return Field<Record>{
      .end = byte + (low + width + 7) / 8,
      .label = label,
      .key = key,
      .store = [](const Reply_view& reply,
                  Record& record) { record.*Member = static_cast<Value>(reply.field(byte, low, width)); },
      .number = [](const Record& record) { return uint32_t{record.*Member}; },
  };
}

/// The row of the text `Member`, an array of bytes from byte `byte` on. A text has no JSON.
template <auto Member, unsigned byte>
consteval auto text(const char* label) {
  using Record = decltype(record_of(Member));
  using Text = decltype(value_of(Member));
  return Field<Record>{
      .end = byte + sizeof(Text),
      .label = label,
      .store = [](const Reply_view& reply, Record& record) { reply.copy(byte, record.*Member); },
      .text = [](const Record& record) { return std::span<const uint8_t>(record.*Member); },
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
  static_assert(all_rows(fields, [](const auto& f) { return 1 + f.end <= Reply::extent; }),
                "a row reaches beyond the reply");
  const Reply_view view(reply);
  for (const auto& f : fields) f.store(view, record);
}

template <const auto& fields>
void print_fields(const auto& record) {
  static_assert(
      all_rows(fields,
               [](const auto& f) { return f.label != nullptr && std::string_view(f.label).size() < value_column; }),
      "a printed row has no label, or one that its column cannot hold");
  for (const auto& f : fields)
    if (f.text != nullptr)
      print_line(f.label, f.text(record));
    else
      print_line(f.label, f.number(record));
}

/// The members, one per line; no comma after the last.
template <const auto& fields>
void json_fields(Json_text& json, const auto& record) {
  static_assert(all_rows(fields, [](const auto& f) { return !f.key.text().empty(); }), "a JSON row has no key");
  for (const auto& f : fields) json.number(f.key, f.number(record), &f == std::end(fields) - 1 ? "\n" : ",\n");
}
