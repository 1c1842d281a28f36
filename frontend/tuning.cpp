// SPDX-License-Identifier: GPL-3.0-or-later
// Tuning and playing, with their messages.
#include "frontend/tuning.h"

#include <bcm2835.h>

#include <cstdio>

#include "si468x/si468x.h"

int16_t tune_freq(uint8_t index) {
  constexpr unsigned settle_ms = 500;
  constexpr unsigned poll_ms = 200;
  constexpr int polls = 10;

  static_cast<void>(Si468x_DAB_tune_freq(index));  // result ignored: the acquired ensemble decides
  bcm2835_delay(settle_ms);
  for (int poll = 0; poll < polls; ++poll) {
    Si468x_DAB_digrad_status status;
    const bool acquired = status.get_new_status() == 0 && status.acq != 0;
    bcm2835_delay(poll_ms);
    if (acquired) {
      std::puts("Tuned.\n");
      return 0;
    }
  }
  std::puts("Could not tune to frequency\n");
  return -1;
}

int16_t play_station(uint32_t service, uint32_t component) {
  if (Si468x_start_digital_service(Si468x_audio_service, service, component) != 0) {
    std::puts("Could not start service\n");
    return -1;
  }
  return 0;
}
