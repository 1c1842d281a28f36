// SPDX-License-Identifier: GPL-3.0-or-later
// FM: seeking, received signal quality, RDS.
#include <array>

#include "si468x/command.h"
#include "si468x/record_fields.h"
#include "si468x/seek_tune.h"
#include "si468x/si468x.h"

namespace {

using Rsq = Si468x_FM_rsq_status;

// clang-format off
constexpr Field<Rsq> rsq_fields[] = {
    field<&Rsq::snr_high_int,          4, 3,  1>(),
    field<&Rsq::snr_low_int,           4, 2,  1>(),
    field<&Rsq::rssi_high_int,         4, 1,  1>(),
    field<&Rsq::rssi_low_int,          4, 0,  1>(),
    field<&Rsq::band_limit,            5, 7,  1>(),
    field<&Rsq::hd_detected,           5, 5,  1>(),
    field<&Rsq::hd_detected_filtered,  5, 4,  1>(),
    field<&Rsq::afc_railed,            5, 1,  1>(),
    field<&Rsq::valid,                 5, 0,  1>(),
    field<&Rsq::frequency,             6, 0, 16>(),
    field<&Rsq::frequency_offset,      8, 0,  8>(),
    field<&Rsq::rssi,                  9, 0,  8>(),
    field<&Rsq::snr,                  10, 0,  8>(),
    field<&Rsq::multipath,            11, 0,  8>(),
    field<&Rsq::antenna_cap,          12, 0, 16>(),
    field<&Rsq::hd_level,             15, 0,  8>(),
    field<&Rsq::hd_level_filtered,    16, 0,  8>(),
};
// clang-format on

using Rsq_reply = std::array<uint8_t, 23>;

int16_t read_quality(Rsq& record, Rsq_reply& reply) {
  if (const int16_t r = query(Opcode::FM_RSQ_STATUS, 0x09, reply); r != 0) return Si468x_failure(r, 61);
  decode<rsq_fields>(record, reply);
  return 0;
}

}  // namespace

// FM_SEEK_START, byte 2   ......UW   U upwards, W wrapping at the band's limit
int16_t Si468x_FM_seek(bool up) {
  auto cmd = command<6>(Opcode::FM_SEEK_START, 0x00, up ? uint8_t{0x03} : uint8_t{0x01});
  if (const int16_t r = send(cmd); r != 0) return Si468x_failure(r, 60);
  return wait_for_seek_tune_complete(160);
}

int16_t Si468x_tune_next_station() { return Si468x_FM_seek(false); }

int16_t Si468x_FM_rsq_status::get_new_status() {
  Rsq_reply reply{};
  return read_quality(*this, reply);
}

int16_t Si468x_FM_rsq_status::get_status() {
  Rsq_reply reply{};
  if (const int16_t r = read_quality(*this, reply); r != 0) return r;
  Si468x_hex_print(reply.data(), reply.size(), "");
  return 0;
}

int16_t Si468x_FM_rds_status::get_status() {
  std::array<uint8_t, 21> reply{};
  if (const int16_t r = query(Opcode::FM_RDS_STATUS, 0x00, reply); r != 0) return Si468x_failure(r, 62);
  Si468x_hex_print(reply.data(), reply.size(), "");
  return 0;
}
