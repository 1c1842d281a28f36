// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/board/state_file.h"

#include <charconv>
#include <nlohmann/json.hpp>

namespace sim {

namespace {

struct Mode_name {
  Mode mode;
  std::string_view name;
};

constexpr Mode_name modes[] = {{Mode::reset, "reset"},
                               {Mode::waiting, "waiting"},
                               {Mode::bootloader, "bootloader"},
                               {Mode::dab, "dab"},
                               {Mode::fm, "fm"}};

constexpr unsigned pin_count = 54;
constexpr unsigned reset_pin = 23;
constexpr uint8_t output = 1;

std::string_view mode_name(Mode mode) {
  for (const Mode_name& known : modes)
    if (known.mode == mode) return known.name;
  return modes[0].name;
}

Mode read_mode(const Json_reader& json) {
  const std::string name = json.text();
  for (const Mode_name& known : modes)
    if (known.name == name) return known.mode;
  json.fail("unknown mode " + in_quotes(name));
}

// The keys of an object that stand for numbers.
unsigned key_number(const std::string& key, const Json_reader& json, unsigned largest) {
  unsigned number = 0;
  const char* const end = key.data() + key.size();
  const auto [rest, error] = std::from_chars(key.data(), end, number);
  if (error != std::errc() || rest != end || number > largest)
    json.fail("the key is not a number from 0 to " + std::to_string(largest));
  return number;
}

nlohmann::json write_dab(const Dab_state& dab) {
  nlohmann::json json = {{"loaded_frequencies", dab.loaded_frequencies},
                         {"antenna_cap", dab.antenna_cap},
                         {"tuning", dab.tuning},
                         {"tune_complete", dab.tune_complete},
                         {"status_interrupts", dab.status_interrupts},
                         {"events", dab.events},
                         {"lists_arrived", dab.lists_arrived},
                         {"running", nlohmann::json::array()}};
  if (dab.tuned_index) json["tuned_index"] = *dab.tuned_index;
  for (const Running_service& running : dab.running)
    json["running"].push_back({{"service_id", running.service_id},
                               {"component_id", running.component_id},
                               {"next_segment", running.next_segment}});
  return json;
}

Dab_state read_dab(const Json_reader& json) {
  json.expect_keys({"loaded_frequencies", "tuned_index", "antenna_cap", "tuning", "tune_complete", "status_interrupts",
                    "events", "lists_arrived", "running"});
  Dab_state dab;
  if (json.has("loaded_frequencies"))
    for (const Json_reader& khz : json.at("loaded_frequencies").elements())
      dab.loaded_frequencies.push_back(static_cast<uint32_t>(khz.whole_number(1, UINT32_MAX)));
  if (dab.loaded_frequencies.size() > UINT8_MAX) json.at("loaded_frequencies").fail("more than 255 frequencies");
  if (json.has("tuned_index"))
    dab.tuned_index = static_cast<uint8_t>(json.at("tuned_index").whole_number(0, UINT8_MAX));
  json.read("antenna_cap", dab.antenna_cap);
  json.read("tuning", dab.tuning);
  json.read("tune_complete", dab.tune_complete);
  json.read("status_interrupts", dab.status_interrupts);
  json.read("events", dab.events);
  json.read("lists_arrived", dab.lists_arrived);
  if (!json.has("running")) return dab;
  for (const Json_reader& entry : json.at("running").elements()) {
    entry.expect_keys({"service_id", "component_id", "next_segment"});
    Running_service running;
    entry.read("service_id", running.service_id);
    entry.read("component_id", running.component_id);
    entry.read("next_segment", running.next_segment);
    dab.running.push_back(running);
  }
  return dab;
}

nlohmann::json write_fm(const Fm_state& fm) {
  return {{"khz", fm.khz},
          {"seeking", fm.seeking},
          {"seek_complete", fm.seek_complete},
          {"band_limit", fm.band_limit},
          {"signal_interrupts", fm.signal_interrupts},
          {"next_group", fm.next_group}};
}

Fm_state read_fm(const Json_reader& json) {
  json.expect_keys({"khz", "seeking", "seek_complete", "band_limit", "signal_interrupts", "next_group"});
  Fm_state fm;
  json.read("khz", fm.khz, 87500, 108000);
  json.read("seeking", fm.seeking);
  json.read("seek_complete", fm.seek_complete);
  json.read("band_limit", fm.band_limit);
  json.read("signal_interrupts", fm.signal_interrupts);
  json.read("next_group", fm.next_group, 0, 3);
  return fm;
}

std::map<unsigned, Pin_state> read_pins(const Json_reader& json) {
  std::map<unsigned, Pin_state> pins;
  for (const auto& [key, entry] : json.members()) {
    entry.expect_keys({"function", "pull", "level"});
    Pin_state& pin = pins[key_number(key, entry, pin_count - 1)];
    entry.read("function", pin.function, 0, 7);
    entry.read("pull", pin.pull, 0, 2);
    entry.read("level", pin.level);
  }
  return pins;
}

}  // namespace

std::string format_state(const Board_state& state) {
  nlohmann::json json = {{"mode", mode_name(state.chip.mode)},
                         {"command_error", state.chip.command_error},
                         {"command_overflow", state.chip.command_overflow},
                         {"properties", nlohmann::json::object()},
                         {"pins", nlohmann::json::object()}};
  for (const auto& [id, value] : state.chip.properties) json["properties"][std::to_string(id)] = value;
  if (state.chip.mode == Mode::dab) json["dab"] = write_dab(state.chip.dab);
  if (state.chip.mode == Mode::fm) json["fm"] = write_fm(state.chip.fm);
  for (const auto& [number, pin] : state.pins)
    json["pins"][std::to_string(number)] = {{"function", pin.function}, {"pull", pin.pull}, {"level", pin.level}};
  return json.dump(2) + "\n";
}

Board_state parse_state(std::string_view text, const std::string& name) {
  const nlohmann::json parsed = parse_json(text, name);
  const Json_reader json(parsed, name);
  json.expect_keys({"mode", "command_error", "command_overflow", "properties", "dab", "fm", "pins"});
  Board_state state;
  state.chip.mode = read_mode(json.at("mode"));
  json.read("command_error", state.chip.command_error);
  json.read("command_overflow", state.chip.command_overflow);
  if (json.has("properties"))
    for (const auto& [key, value] : json.at("properties").members())
      state.chip.properties[static_cast<uint16_t>(key_number(key, value, UINT16_MAX))] =
          static_cast<uint16_t>(value.whole_number(0, UINT16_MAX));
  if (json.has("dab")) state.chip.dab = read_dab(json.at("dab"));
  if (json.has("fm")) state.chip.fm = read_fm(json.at("fm"));
  if (json.has("pins")) state.pins = read_pins(json.at("pins"));

  const auto reset = state.pins.find(reset_pin);
  const bool released = reset != state.pins.end() && reset->second.function == output && reset->second.level;
  if (released != (state.chip.mode != Mode::reset))
    json.fail("the chip is in mode " + in_quotes(mode_name(state.chip.mode)) + " with its reset line " +
              (released ? "high" : "low"));
  return state;
}

}  // namespace sim
