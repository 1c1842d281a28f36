// SPDX-License-Identifier: GPL-3.0-or-later
// One row per field of a record: where the chip puts it, and what the reports call it. For the driver's own files.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "si468x/json_text.h"
#include "si468x/reply_view.h"
#include "si468x/report_text.h"

template <typename Record>
struct Field {
  unsigned byte, low, width;  ///< in the chip's reply: first byte, its lowest bit, bits
  const char* label;          ///< in the text report
  const char* key;            ///< in JSON
  void (*store)(Record&, uint32_t);
  uint32_t (*load)(const Record&);
};

template <typename Record, typename Value>
Record record_of(Value Record::*);  // for decltype alone

/// The row of the field that `Member` points to. Records without that report leave label or key out.
template <auto Member>
constexpr auto field(unsigned byte, unsigned low, unsigned width, const char* label = nullptr,
                     const char* key = nullptr) {
  using Record = decltype(record_of(Member));
  return Field<Record>{
      byte,
      low,
      width,
      label,
      key,
      [](Record& record, uint32_t value) {
        record.*Member = static_cast<std::remove_reference_t<decltype(record.*Member)>>(value);
      },
      [](const Record& record) { return uint32_t{record.*Member}; },
  };
}

template <typename Record, size_t count>
void decode(Record& record, const Field<Record> (&fields)[count], const Reply_view& reply) {
  for (const auto& f : fields) f.store(record, reply.field(f.byte, f.low, f.width));
}

template <typename Record, size_t count>
void print_fields(const Record& record, const Field<Record> (&fields)[count]) {
  for (const auto& f : fields) print_line(f.label, f.load(record));
}

/// The members, one per line; no comma behind the last.
template <typename Record, size_t count>
void json_fields(Json_text& json, const Record& record, const Field<Record> (&fields)[count]) {
  for (const auto& f : fields) json.number(f.key, f.load(record), &f == &fields[count - 1] ? "\n" : ",\n");
}
