// SPDX-License-Identifier: GPL-3.0-or-later
// Date and time of the tuned ensemble.
#include <array>
#include <cstdio>

#include "si468x/command.h"
#include "si468x/record_fields.h"
#include "si468x/si468x.h"

namespace {

using Time = Si468x_time;

// clang-format off
constexpr Field<Time> time_fields[] = {
    field<&Time::year,    4, 0, 16>(nullptr, "year"),
    field<&Time::month,   6, 0,  8>(nullptr, "month"),
    field<&Time::day,     7, 0,  8>(nullptr, "day"),
    field<&Time::hour,    8, 0,  8>(nullptr, "hour"),
    field<&Time::minute,  9, 0,  8>(nullptr, "minute"),
    field<&Time::second, 10, 0,  8>(nullptr, "second"),
};
// clang-format on

}  // namespace

int16_t Si468x_time::get_ensembletime() {
  std::array<uint8_t, 12> reply{};
  if (const int16_t r = query(Opcode::DAB_GET_TIME, 0x01, reply); r != 0)  // UTC rather than local time
    return Si468x_failure(r, 35);
  decode<time_fields>(*this, reply);
  return 0;
}

void Si468x_time::clean() { *this = {}; }

int Si468x_time::print_data() const {
  return std::printf("%d-%d-%dT%d:%d:%dZ\n", year, month, day, hour, minute, second);
}

int Si468x_time::json_print_data(std::stringstream& ss) const {
  Json_text json(ss);
  json.raw("\"ensembleTime\": {\n");
  json_fields<time_fields>(json, *this);
  json.raw("}\n");
  return json.end();
}
