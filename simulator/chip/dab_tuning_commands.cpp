// SPDX-License-Identifier: GPL-3.0-or-later
// Commands for DAB reception: frequency list, tune, status, events, time.
#include <algorithm>
#include <chrono>

#include "simulator/chip/command_table.h"

namespace sim {

namespace {

using namespace std::chrono;

// The argument of DAB_DIGRAD_STATUS, then that of DAB_GET_EVENT_STATUS.
constexpr unsigned acknowledge_status = 0x08;
constexpr unsigned acknowledge_tune = 0x01;
constexpr unsigned acknowledge_events = 0x01;
// Byte 5 of the event status   ......FL   available: F frequency information, L service list
constexpr unsigned frequency_info_available = 0x02;
constexpr unsigned list_available = 0x01;
constexpr uint16_t largest_antenna_cap = 128;

// Of DAB_GET_TIME.
constexpr uint8_t local_time = 0;
constexpr uint8_t utc = 1;

// The UTC that the ensembles send.
sys_seconds utc_of(const Broadcast& air) {
  if (!air.time) return floor<seconds>(system_clock::now());
  const Date_time& time = *air.time;
  return sys_days(year(time.year) / time.month / time.day) + hours(time.hour) + minutes(time.minute) +
         seconds(time.second);
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
  std::vector<uint8_t> response;
  put8(response, dab.status_interrupts());
  put8(response, bit(signal.hardmute, digrad_hardmute) | bit(signal.fic_error, digrad_fic_error) |
                     bit(dab.acquired(), digrad_acquired) | bit(dab.valid(), digrad_valid));
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

Answer dab_get_event_status(Chip_core& chip, Bytes command) {
  if ((command[1] & ~acknowledge_events) != 0) return refuse("unknown bits in the argument byte");
  Dab_receiver& dab = chip.dab;
  const Service_list* list = dab.list();
  std::vector<uint8_t> response;
  put8(response, dab.events());
  put8(response, bit(dab.frequency_info(), frequency_info_available) | bit(list != nullptr, list_available));
  put16(response, list != nullptr ? list->version : 0);
  if ((command[1] & acknowledge_events) != 0) dab.acknowledge_events();
  return {.response = response};
}

Answer dab_get_time(Chip_core& chip, Bytes command) {
  if (command[1] != local_time && command[1] != utc) return refuse("unknown kind of time");
  if (!chip.dab.acquired()) return refuse("no ensemble is acquired");
  sys_seconds now = utc_of(chip.air);
  if (command[1] == local_time) now += minutes(chip.air.local_offset_minutes);
  const sys_days day = floor<days>(now);
  const year_month_day date(day);
  const hh_mm_ss time(now - day);
  std::vector<uint8_t> response;
  put16(response, static_cast<unsigned>(int{date.year()}));
  put8(response, unsigned{date.month()});
  put8(response, unsigned{date.day()});
  put8(response, static_cast<unsigned>(time.hours().count()));
  put8(response, static_cast<unsigned>(time.minutes().count()));
  put8(response, static_cast<unsigned>(time.seconds().count()));
  return {.response = response};
}

}  // namespace sim
