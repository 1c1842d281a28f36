// SPDX-License-Identifier: GPL-3.0-or-later
// "Find stations".
#include "remote/finder.h"

#include <algorithm>
#include <array>
#include <sstream>

#include "remote/receiver.h"
#include "scan/ensemble_list.h"

namespace remote {

namespace {

using live::Outcome;

struct Frequencies {
  std::array<uint32_t, ensemble_capacity> khz{};
  uint8_t count = 0;
};

Outcome read_frequencies(Frequencies& list) {
  Outcome failure =
      live::outcome("DAB_GET_FREQ_LIST", Si468x_DAB_get_freq_list(list.khz.data(), &list.count, ensemble_capacity));
  list.count = std::min<uint8_t>(list.count, ensemble_capacity);
  return failure;
}

int with_sign(uint8_t byte) { return static_cast<int8_t>(byte); }

// A frequency that cannot be tuned has no result, as in every scan; a chip without its application ends the search.
Outcome visit(uint8_t index, Ensemble_list& ensembles, Find_step& step) {
  std::array<uint8_t, service_list_capacity> buffer{};
  Si468x_DAB_digrad_status status;
  Si468x_digital_service_list list;
  Si468x_time time;
  const int16_t tuned = Si468x_DAB_tune_freq_save(index, status);
  if (tuned < -1) {
    if (Outcome failure = check_dab()) return failure;
  }
  read_ensemble(tuned, buffer.data(), list, time);
  if (tuned == 0 || tuned == 1) ensembles.add_ensemble(index, list, status, time);
  step.services = list.num_services;
  step.rssi = with_sign(status.rssi);
  step.snr = with_sign(status.snr);
  return std::nullopt;
}

// Another program may have the board; each attempt waits for a second.
Outcome with_board_soon(const std::function<Outcome()>& action, const std::function<bool()>& goes_on) {
  constexpr int attempts = 10;
  for (int attempt = 1;; ++attempt) {
    Outcome failure = live::with_board(action);
    if (!failure || failure->cause != live::Failure::Cause::in_use || attempt == attempts || !goes_on()) return failure;
  }
}

}  // namespace

Found find_stations(const std::function<void(const Find_step&)>& report, const std::function<bool()>& goes_on) {
  Frequencies list;
  if (Outcome failure = with_board_soon([&] { return read_frequencies(list); }, goes_on)) return {.failure = failure};
  Ensemble_list ensembles;
  for (uint8_t index = 0; index < list.count; ++index) {
    if (!goes_on()) return {};
    Find_step step{.step = index + 1U, .of = list.count, .index = index, .khz = list.khz.at(index)};
    if (Outcome failure = with_board_soon([&] { return visit(index, ensembles, step); }, goes_on))
      return {.failure = failure};
    report(step);
  }
  std::stringstream text;
  text.exceptions(std::ios::badbit);  // throw on allocation failure instead of truncating
  ensembles.write_text(text);
  return {.complete = true, .text = std::move(text).str()};
}

}  // namespace remote
