// SPDX-License-Identifier: GPL-3.0-or-later
// The scan itself: the step for each frequency, and the copies of what it found.
#include "scan/ensemble_list.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>

namespace {

void print_progress(uint32_t frequency_khz, uint8_t rssi) {
  std::printf("Scanning frequency: %" PRIu32 " kHz. Found signal with RSSI: %s\n", frequency_khz,
              std::string(rssi, '-').c_str());
}

}  // namespace

void read_ensemble(int16_t tuned, uint8_t* list_buffer, Si468x_digital_service_list& list, Si468x_time& time) {
  if (tuned != 1 || list.get_new_list(list_buffer) != 0) list.clean();
  if (tuned != 1 || time.get_ensembletime() != 0) time.clean();
}

Ensemble_list::~Ensemble_list() {
  for (const auto& list : service_list) delete[] list.data;
}

int Ensemble_list::rescan() {
  Si468x_digital_service_list list;
  Si468x_DAB_digrad_status status;
  Si468x_time time;
  std::array<uint32_t, 64> frequencies{};
  uint8_t count = 0;
  std::array<uint8_t, service_list_capacity> list_buffer{};

  // Without a list the scan still runs: tuning is by index; the lines show 0 kHz.
  static_cast<void>(Si468x_DAB_get_freq_list(frequencies.data(), &count, frequencies.size()));
  const auto visited = std::min<uint8_t>(count, ensemble_capacity);
  for (uint8_t i = 0; i < visited; ++i) {
    const int16_t r = Si468x_DAB_tune_freq_save(i, status);
    print_progress(frequencies[i], status.rssi);
    read_ensemble(r, list_buffer.data(), list, time);
    if (r == 1) std::printf("Found ensemble!\n");
    if (r == 0 || r == 1) add_ensemble(i, list, status, time);
  }
  return getGeolocation();
}

int Ensemble_list::add_ensemble(uint16_t index, const Si468x_digital_service_list& list,
                                const Si468x_DAB_digrad_status& status, const Si468x_time& time) {
  if (index >= ensemble_capacity) return 0;
  Si468x_digital_service_list& entry = service_list[index];
  if (entry.data == nullptr) entry.data = new uint8_t[service_list_capacity];
  entry.version = list.version;
  entry.num_services = list.num_services;
  entry.size = static_cast<uint16_t>(std::min<size_t>(list.size, service_list_capacity));
  digrad_status[index] = status;
  ensemble_time[index] = time;
  std::copy_n(list.data, entry.size, entry.data);
  return 0;
}

int dab_full_scan() {
  Ensemble_list ensembles;
  ensembles.rescan();
  return ensembles.save_to_file();
}
