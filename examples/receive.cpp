// SPDX-License-Identifier: GPL-3.0-or-later
// From reset to sound: boots the chip, tunes, prints the programmes of the ensemble and starts the first of them.
//   example-receive rom00_patch.016.bin dab_radio_5_0_5.bin
#include <bcm2835.h>

#include <array>
#include <cstdio>
#include <cstdlib>

#include "si468x/si468x.h"

namespace {

constexpr uint8_t frequency_index = 33;  // 227360 kHz, block 12C
constexpr uint16_t volume = 40;          // 0 to 63
constexpr int polls = 50;
constexpr unsigned poll_ms = 200;

bool download(const char* path) { return Si468x_load_init() == 0 && Si468x_load_firmware(path) == 0; }

bool boot(const char* patch, const char* image) {
  Si468x_reset();
  if (Si468x_power_up() != 0 || !download(patch)) return false;
  bcm2835_delay(Si468x_patch_settle_ms);
  if (!download(image)) return false;
  bcm2835_delay(Si468x_image_settle_ms);
  return Si468x_boot() == 0;
}

// Polls until `flag` of the status is set.
template <typename Status>
bool wait_for(uint8_t Status::*flag) {
  for (int poll = 0; poll < polls; ++poll) {
    Status status;
    if (status.get_new_status() == 0 && status.*flag != 0) return true;
    bcm2835_delay(poll_ms);
  }
  return false;
}

// A tune ends before an ensemble is found, and its service list arrives later still.
bool tune() {
  return Si468x_DAB_tune_freq(frequency_index) == 0 && wait_for(&Si468x_DAB_digrad_status::acq) &&
         wait_for(&Si468x_DAB_event_status::service_list_available);
}

// Prints each programme with the first component of its audio, and starts the first of them.
bool play_first_programme() {
  std::array<uint8_t, 4096> buffer{};  // the list and its services point into it
  Si468x_digital_service_list list;
  if (list.get_new_list(buffer.data()) != 0) return false;
  bool playing = false;
  for (uint8_t i = 0; i < list.num_services; ++i) {
    Si468x_service_data service;
    Si468x_DAB_component component;
    if (service.get_service(&list, i) != 0 || component.get_component(&service, 0) != 0) continue;
    if (component.TMID != Si468x_tmid_stream_audio) continue;
    std::printf("%.16s service %u, component %u\n", reinterpret_cast<const char*>(service.Label.data()),
                static_cast<unsigned>(service.ServId), static_cast<unsigned>(component.comp_ID));
    playing = playing || Si468x_start_digital_service(Si468x_audio_service, service.ServId, component.comp_ID) == 0;
  }
  return playing;
}

bool set_volume() {
  const uint16_t setting[] = {Si468x_audio_volume, volume};
  return Si468x_set_property(setting) == 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: %s PATCH IMAGE\n", argv[0]);
    return EXIT_FAILURE;
  }
  if (Si468x_bus_init() == 0 && boot(argv[1], argv[2]) && tune() && play_first_programme() && set_volume())
    return EXIT_SUCCESS;
  std::printf("Failed (code %u).\n", static_cast<unsigned>(Si468x_ErrorCode));
  return EXIT_FAILURE;
}
