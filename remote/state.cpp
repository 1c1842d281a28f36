// SPDX-License-Identifier: GPL-3.0-or-later
// What is known of the receiver.
#include "remote/state.h"

#include <nlohmann/json.hpp>

#include "survey/text/codes.h"

namespace remote {

namespace {

using Json = nlohmann::ordered_json;

std::string_view mode_name(Mode mode) {
  constexpr std::string_view names[] = {"unknown", "off", "DAB", "FM"};
  return names[static_cast<size_t>(mode)];
}

Json playing_json(const State& state, const Stations& stations) {
  if (!state.playing) return state.unknown_service ? Json("unknown") : Json(nullptr);
  return {{"name", stations.name(*state.playing)},
          {"service_id", state.playing->service_id},
          {"component", state.playing->component},
          {"index", state.playing->index},
          {"block", survey::block_name(state.khz)}};
}

// That of a sample; one that failed says nothing of it.
Mode mode_of(const live::Sample& sample, Mode known) {
  if (std::holds_alternative<live::Dab_signal>(sample.reading)) return Mode::dab;
  if (std::holds_alternative<live::Fm_signal>(sample.reading)) return Mode::fm;
  return std::holds_alternative<live::Not_booted>(sample.reading) ? Mode::off : known;
}

}  // namespace

void State::set_mode(Mode now) {
  mode = now;
  volume.reset();
  set_tuning(0);
  index.reset();
}

void State::set_tuning(uint8_t now) {
  index = now;
  khz = 0;
  playing.reset();
  unknown_service = false;
}

void State::set_playing(const Play& play) {
  playing = play;
  unknown_service = false;
}

bool State::notice(const live::Sample& sample) {
  const Mode now = mode_of(sample, mode);
  const bool other_mode = now != mode;
  if (other_mode) set_mode(now);
  const auto* const dab = std::get_if<live::Dab_signal>(&sample.reading);
  if (dab == nullptr) return other_mode;
  const bool is_tuned = dab->frequency != 0;
  const bool changed = other_mode || is_tuned != index.has_value() || (is_tuned && index != dab->index);
  if (changed) {
    set_tuning(dab->index);
    if (!is_tuned) index.reset();
    unknown_service = is_tuned;
  }
  khz = dab->frequency;
  return changed;
}

std::string to_json(const State& state, const Stations& stations) {
  const Json json{{"doing", state.doing ? Json(*state.doing) : Json(nullptr)},
                  {"mode", mode_name(state.mode)},
                  {"playing", playing_json(state, stations)},
                  {"volume", state.volume ? Json(*state.volume) : Json(nullptr)},
                  {"stations", stations.size()}};
  return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace remote
