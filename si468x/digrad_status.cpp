// SPDX-License-Identifier: GPL-3.0-or-later
// The digital radio status: one table for its decoding, its report and its JSON.
#include <array>
#include <cstdio>

#include "si468x/command.h"
#include "si468x/record_fields.h"
#include "si468x/si468x.h"

namespace {

using Status = Si468x_DAB_digrad_status;

// The chip's RSSI interrupts: rssih above the high threshold, rssil below the low one. The labels "below" and "above"
// are the wrong way round; programs read these texts, so they stay.
// clang-format off
constexpr Field<Status> status_fields[] = {
    field<&Status::hardmuteINT,      4, 4,  1>("Audio was muted:", "hardmuteINT"),
    field<&Status::FICerrINT,        4, 3,  1>("FIC errors encountered:", "FICerrINT"),
    field<&Status::acqINT,           4, 2,  1>("Ensemble acquisition state changed:", "acqINT"),
    field<&Status::rssihINT,         4, 1,  1>("below RSSI thresh:", "rssihINT"),
    field<&Status::rssilINT,         4, 0,  1>("above RSSI thresh:", "rssilINT"),
    field<&Status::hardmute,         5, 4,  1>("hardmute:", "hardmute"),
    field<&Status::FICerr,           5, 3,  1>("FIC errors:", "FICerr"),
    field<&Status::acq,              5, 2,  1>("Ensemble acquired:", "acq"),
    field<&Status::valid,            5, 0,  1>("RSSI valid:", "valid"),
    field<&Status::rssi,             6, 0,  8>("RSSI:", "rssi"),
    field<&Status::snr,              7, 0,  8>("SNR:", "snr"),
    field<&Status::FIC_quality,      8, 0,  8>("FIC quality:", "FIC_quality"),
    field<&Status::cnr,              9, 0,  8>("CNR:", "cnr"),
    field<&Status::FIB_error_count, 10, 0, 16>("FIB error count:", "FIB_error_count"),
    field<&Status::tune_freq,       12, 0, 32>("Tune Freq.:", "tune_freq"),
    field<&Status::tune_index,      16, 0,  8>("Tune index:", "tune_index"),
    field<&Status::fft_offset,      17, 0,  8>("FFT offset:", "fft_offset"),
    field<&Status::readAntCap,      18, 0, 16>("Antenna tuning cap value:", "readAntCap"),
    field<&Status::cu_level,        20, 0, 16>("CU level:", "cu_level"),
    field<&Status::fast_dect,       22, 0,  8>("Metric for DAB fast detect:", "fast_dect"),
};
// clang-format on

}  // namespace

int16_t Si468x_DAB_digrad_status::get_new_status() {
  std::array<uint8_t, 24> reply{};
  if (const int16_t r = query(Opcode::DAB_DIGRAD_STATUS, 0x00, reply); r != 0)  // nothing acknowledged
    return Si468x_failure(r, 22);
  decode<status_fields>(*this, reply);
  return 0;
}

void Si468x_DAB_digrad_status::print_data() const {
  std::puts("Digrad status ------------------------ ");
  print_fields<status_fields>(*this);
}

int Si468x_DAB_digrad_status::json_print_data(std::stringstream& ss) const {
  Json_text json(ss);
  json.raw("\"DigradStatus\": {\n");
  json_fields<status_fields>(json, *this);
  json.raw("}");
  return json.end();
}
