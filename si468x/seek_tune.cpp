// SPDX-License-Identifier: GPL-3.0-or-later
// The wait for the end of a tune or a seek.
#include "si468x/seek_tune.h"

#include <bcm2835.h>

#include <array>

#include "si468x/reply_view.h"
#include "si468x/si468x.h"

int16_t wait_for_seek_tune_complete(uint32_t timeout_code) {
  constexpr int polls = 100;
  constexpr unsigned poll_ms = 100;
  int16_t outcome = 0;
  for (int poll = 0; poll < polls; ++poll) {
    std::array<uint8_t, 7> status{};
    outcome = Si468x_rd_reply(status.data());
    if (outcome == 0 && Reply_view(status).seek_tune_complete()) return 0;
    bcm2835_delay(poll_ms);
  }
  return Si468x_failure(outcome, timeout_code);
}
