// SPDX-License-Identifier: GPL-3.0-or-later
// Commands for DAB reception: frequency list, tune, status, events, time.
#include <algorithm>
#include <ctime>

#include "simulator/chip/command_table.h"

namespace sim {

namespace {

constexpr unsigned acknowledge_status = 0x08;
constexpr unsigned acknowledge_tune = 0x01;
constexpr uint16_t largest_antenna_cap = 128;

Date_time broken_down(std::time_t seconds) {
  std::tm parts{};
  gmtime_r(&seconds, &parts);
  return {.year = static_cast<uint16_t>(parts.tm_year + 1900),
          .month = static_cast<uint8_t>(parts.tm_mon + 1),
          .day = static_cast<uint8_t>(parts.tm_mday),
          .hour = static_cast<uint8_t>(parts.tm_hour),
          .minute = static_cast<uint8_t>(parts.tm_min),
          .second = static_cast<uint8_t>(parts.tm_sec)};
}

std::time_t seconds_of(const Date_time& time) {
  std::tm parts{};
  parts.tm_year = time.year - 1900;
  parts.tm_mon = time.month - 1;
  parts.tm_mday = time.day;
  parts.tm_hour = time.hour;
  parts.tm_min = time.minute;
  parts.tm_sec = time.second;
  return timegm(&parts);
}

}  // namespace

// 4 head bytes (opcode, count, 0, 0), then the frequencies, 4 bytes each.
Answer dab_set_freq_list(Chip_core& chip, Bytes command) {
  const size_t count = command[1];
  if (command[2] != 0 || command[3] != 0) return refuse("argument bytes 2 and 3 are not 0");
  if (command.size() != 4 + 4 * count)
    return refuse("the length does not fit " + std::to_string(count) + " frequencies");
  std::vector<uint32_t> khz(count);
  for (size_t i = 0; i < count; ++i) khz[i] = le32(command, 4 + 4 * i);
  if (std::find(khz.begin(), khz.end(), 0U) != khz.end()) return refuse("a frequency of 0 kHz");
  chip.dab.load_frequencies(std::move(khz));
  return {};
}

Answer dab_get_freq_list(Chip_core& chip, Bytes command) {
  if (command[1] != 0) return refuse("argument byte is not 0");
  const std::vector<uint32_t>& khz = chip.dab.frequencies();
  std::vector<uint8_t> response;
  put8(response, static_cast<unsigned>(khz.size()));
  response.resize(4);
  for (const uint32_t frequency : khz) put32(response, frequency);
  return {.response = response};
}

Answer dab_tune_freq(Chip_core& chip, Bytes command) {
  const uint8_t index = command[2];
  const uint16_t antenna_cap = le16(command, 4);
  if (command[1] != 0 || command[3] != 0) return refuse("argument bytes 1 and 3 are not 0");
  if (index >= chip.dab.frequencies().size()) return refuse("the frequency list has no index " + std::to_string(index));
  if (antenna_cap > largest_antenna_cap)
    return refuse("antenna capacitor above " + std::to_string(largest_antenna_cap));
  chip.dab.tune(index, antenna_cap, chip.clock.now());
  return {};
}

Answer dab_digrad_status(Chip_core& chip, Bytes command) {
  if ((command[1] & ~(acknowledge_status | acknowledge_tune)) != 0) return refuse("unknown bits in the argument byte");
  Dab_receiver& dab = chip.dab;
  const Signal signal = dab.signal();
  unsigned present = 0;
  if (signal.hardmute) present |= digrad_hardmute;
  if (signal.fic_error) present |= digrad_fic_error;
  if (dab.acquired()) present |= digrad_acquired;
  if (dab.valid()) present |= digrad_valid;

  std::vector<uint8_t> response;
  put8(response, dab.status_interrupts());
  put8(response, present);
  put8(response, static_cast<unsigned>(signal.rssi));
  put8(response, static_cast<unsigned>(signal.snr));
  put8(response, signal.fic_quality);
  put8(response, signal.cnr);
  put16(response, signal.fib_errors);
  put32(response, dab.tuned_khz());
  put8(response, dab.tuned_index());
  put8(response, static_cast<unsigned>(signal.fft_offset));
  put16(response, dab.antenna_cap());
  put16(response, signal.cu_level);
  put8(response, signal.fast_detect);
  if ((command[1] & acknowledge_status) != 0) dab.acknowledge_status();
  if ((command[1] & acknowledge_tune) != 0) dab.acknowledge_tune();
  return {.response = response};
}

// byte 5 of the reply   ......FL   available: F frequency information, L service list
Answer dab_get_event_status(Chip_core& chip, Bytes command) {
  if (command[1] > 1) return refuse("unknown bits in the argument byte");
  Dab_receiver& dab = chip.dab;
  const Service_list* list = dab.list();
  std::vector<uint8_t> response;
  put8(response, dab.events());
  put8(response, (dab.frequency_info() ? 2U : 0U) | (list != nullptr ? 1U : 0U));
  put16(response, list != nullptr ? list->version : 0);
  if (command[1] == 1) dab.acknowledge_events();
  return {.response = response};
}

Answer dab_get_time(Chip_core& chip, Bytes command) {
  const bool utc = command[1] == 1;
  if (command[1] > 1) return refuse("unknown kind of time");
  if (!chip.dab.acquired()) return refuse("no ensemble is acquired");
  std::time_t seconds = chip.air.time ? seconds_of(*chip.air.time) : std::time(nullptr);
  if (!utc) seconds += std::time_t{60} * chip.air.local_offset_minutes;
  const Date_time time = broken_down(seconds);
  std::vector<uint8_t> response;
  put16(response, time.year);
  put8(response, time.month);
  put8(response, time.day);
  put8(response, time.hour);
  put8(response, time.minute);
  put8(response, time.second);
  return {.response = response};
}

}  // namespace sim
