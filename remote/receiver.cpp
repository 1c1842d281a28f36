// SPDX-License-Identifier: GPL-3.0-or-later
// What the receiver chip does for an order.
#include "remote/receiver.h"

#include <bcm2835.h>

#include "frontend/boot.h"
#include "si468x/si468x.h"

namespace remote {

namespace {

constexpr unsigned poll_ms = 200;

live::Outcome failed(const std::string& why) { return live::Failure{.cause = live::Failure::Cause::chip, .why = why}; }

// Polls `read` every 200 ms, `polls` times at most, until it finds what it waits for.
template <typename Read>
live::Outcome await(int polls, Read read, const char* otherwise) {
  for (int poll = 0; poll < polls; ++poll) {
    bool found = false;
    if (live::Outcome failure = read(found)) return failure;
    if (found) return std::nullopt;
    bcm2835_delay(poll_ms);
  }
  return failed(otherwise);
}

live::Outcome await_ensemble() {
  constexpr int polls = 15;
  return await(
      polls,
      [](bool& found) {
        Tuning tuning;
        live::Outcome failure = read_tuning(tuning);
        found = tuning.acquired;
        return failure;
      },
      "no ensemble is received on this frequency");
}

live::Outcome await_service_list() {
  constexpr int polls = 50;
  return await(
      polls,
      [](bool& found) {
        Si468x_DAB_event_status events;
        live::Outcome failure = live::outcome("DAB_GET_EVENT_STATUS", events.get_new_status());
        found = events.service_list_available != 0;
        return failure;
      },
      "the ensemble sent no service list");
}

}  // namespace

live::Outcome read_mode(Mode& mode) {
  Si468x_chip_info chip;
  mode = Mode::unknown;
  if (live::Outcome failure = live::outcome("RD_REPLY", chip.get_status())) return failure;
  mode = Mode::off;
  if (chip.powerup_state != Si468x_application_runs) return std::nullopt;
  if (live::Outcome failure = live::outcome("GET_SYS_STATE", chip.get_sys_state())) return failure;
  if (chip.image == Si468x_dab_image) mode = Mode::dab;
  if (chip.image == Si468x_fm_image) mode = Mode::fm;
  return std::nullopt;
}

live::Outcome check_dab() {
  Mode mode = Mode::unknown;
  if (live::Outcome failure = read_mode(mode)) return failure;
  return mode == Mode::dab ? std::nullopt : failed("the chip no longer runs its DAB application");
}

live::Outcome boot(Mode mode) {
  if (power_up_and_load_fw(mode == Mode::dab ? 1 : 0) == 1) return std::nullopt;
  return failed("the chip did not boot (code " + std::to_string(Si468x_ErrorCode) + ")");
}

live::Outcome read_tuning(Tuning& tuning) {
  Si468x_DAB_digrad_status status;
  if (live::Outcome failure = live::outcome("DAB_DIGRAD_STATUS", status.get_new_status())) return failure;
  tuning = {.index = status.tune_index, .khz = status.tune_freq, .acquired = status.acq != 0};
  return std::nullopt;
}

live::Outcome tune(uint8_t index) {
  constexpr uint32_t out_of_time = 121;
  Si468x_ErrorCode = 0;
  if (live::Outcome failure = live::outcome("DAB_TUNE_FREQ", Si468x_DAB_tune_freq(index))) return failure;
  return Si468x_ErrorCode == out_of_time ? failed("the tune did not end") : std::nullopt;
}

live::Outcome await_services() {
  if (live::Outcome failure = await_ensemble()) return failure;
  return await_service_list();
}

live::Outcome start(const Play& play) {
  return live::outcome("START_DIGITAL_SERVICE",
                       Si468x_start_digital_service(Si468x_audio_service, play.service_id, play.component));
}

live::Outcome stop(const Play& play) {
  return live::outcome("STOP_DIGITAL_SERVICE",
                       Si468x_stop_digital_service(Si468x_audio_service, play.service_id, play.component));
}

live::Outcome seek(bool up) {
  constexpr uint32_t out_of_time = 160;
  Si468x_ErrorCode = 0;
  if (live::Outcome failure = live::outcome("FM_SEEK_START", Si468x_FM_seek(up))) return failure;
  return Si468x_ErrorCode == out_of_time ? failed("the seek did not end") : std::nullopt;
}

live::Outcome read_volume(uint16_t& level) {
  uint16_t volume[2] = {Si468x_audio_volume, 0};
  live::Outcome failure = live::outcome("GET_PROPERTY", Si468x_get_property(volume));
  if (!failure) level = volume[1];
  return failure;
}

live::Outcome set_volume(uint16_t level) {
  const uint16_t volume[2] = {Si468x_audio_volume, level};
  return live::outcome("SET_PROPERTY", Si468x_set_property(volume));
}

}  // namespace remote
