// SPDX-License-Identifier: GPL-3.0-or-later
// What a board keeps between runs, as JSON.
#include "simulator/board/state_file.h"

#include <algorithm>
#include <utility>

#include "simulator/broadcast/broadcast.h"
#include "simulator/json/json_members.h"

namespace sim {

constexpr size_t most_frequencies = 255;
constexpr uint16_t last_pin = 53;
constexpr int64_t longest_ms = 1'000'000'000'000;  // decades; in nanoseconds 64 bits hold centuries

constexpr std::pair<Mode, std::string_view> modes[] = {{Mode::reset, "reset"},
                                                       {Mode::waiting, "waiting"},
                                                       {Mode::bootloader, "bootloader"},
                                                       {Mode::dab, "dab"},
                                                       {Mode::fm, "fm"}};

static nlohmann::json write_mode(Mode mode) {
  const auto* const known = std::ranges::find(modes, mode, &std::pair<Mode, std::string_view>::first);
  return known->second;
}

static void members(Json_members& json, Running_service& running) {
  json("service_id", running.service_id);
  json("component_id", running.component_id);
  json("next_segment", running.next_segment);
}

static void members(Json_members& json, Dab_state& dab) {
  json("loaded_frequencies", dab.loaded_frequencies, most_frequencies, 1);
  json("tuned_index", dab.tuned_index);
  json("antenna_cap", dab.antenna_cap);
  json("tuning", dab.tuning);
  json("tune_complete", dab.tune_complete);
  json("status_interrupts", dab.status_interrupts);
  json("events", dab.events);
  json("lists_arrived", dab.lists_arrived);
  json("running", dab.running);
}

static void members(Json_members& json, Fm_state& fm) {
  json("khz", fm.khz, fm_band_bottom, fm_band_top);
  json("seeking", fm.seeking);
  json("seek_complete", fm.seek_complete);
  json("band_limit", fm.band_limit);
  json("signal_interrupts", fm.signal_interrupts);
  json("next_group", fm.next_group, 0, 3);
}

static void members(Json_members& json, Pin_state& pin) {
  json("function", pin.function, 0, 7);
  json("pull", pin.pull, 0, 2);
  json("level", pin.level);
}

static void members(Json_members& json, Board_state& state) {
  Chip_state& chip = state.chip;
  json.need(
      "mode", [&](const Json_reader& mode) { chip.mode = mode.named(modes, "mode"); },
      [&] { return write_mode(chip.mode); });
  json("command_error", chip.command_error);
  json("command_overflow", chip.command_overflow);
  json("properties", chip.properties);
  if (!json.writing() || chip.mode == Mode::dab) json("dab", chip.dab);
  if (!json.writing() || chip.mode == Mode::fm) json("fm", chip.fm);
  if (!json.writing() || state.on_air_ms != 0) json("on_air_ms", state.on_air_ms, 0, longest_ms);
  json("pins", state.pins, last_pin);
}

std::string format_state(const Board_state& state) { return Json_members::write(state).dump(2) + "\n"; }

bool begins_as_state(std::string_view text) {
  constexpr std::string_view start = "{\n  \"command_error\": ";  // the members are in alphabetical order
  return start.starts_with(text.substr(0, start.size()));
}

Board_state parse_state(std::string_view text, const std::string& name) {
  const Json_file parsed = parse_json(text, name);
  Board_state state;
  Json_members::read(Json_reader(parsed), state);
  return state;
}

}  // namespace sim
