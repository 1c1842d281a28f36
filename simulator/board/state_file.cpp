// SPDX-License-Identifier: GPL-3.0-or-later
// What a board keeps between runs, as JSON.
#include "simulator/board/state_file.h"

#include <charconv>

#include "simulator/broadcast/broadcast.h"
#include "simulator/broadcast/json_members.h"

namespace sim {

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

static std::string_view mode_name(Mode mode) {
  for (const Mode_name& known : modes)
    if (known.mode == mode) return known.name;
  return modes[0].name;
}

static Mode read_mode(const Json_reader& json) {
  const std::string name = json.text();
  for (const Mode_name& known : modes)
    if (known.name == name) return known.mode;
  json.fail("unknown mode " + in_quotes(name));
}

// The keys of an object that are numbers.
static unsigned key_number(const std::string& key, const Json_reader& json, unsigned largest) {
  unsigned number = 0;
  const char* const end = key.data() + key.size();
  const auto [rest, error] = std::from_chars(key.data(), end, number);
  if (error != std::errc() || rest != end || number > largest)
    json.fail("the key is not a number from 0 to " + std::to_string(largest));
  return number;
}

static void read_khz(const Json_reader& json, std::vector<uint32_t>& khz) {
  for (const Json_reader& entry : json.elements(UINT8_MAX))
    khz.push_back(static_cast<uint32_t>(entry.whole_number(1, UINT32_MAX)));
}

static void members(Json_members& json, Running_service& running) {
  json("service_id", running.service_id);
  json("component_id", running.component_id);
  json("next_segment", running.next_segment);
}

static void members(Json_members& json, Dab_state& dab) {
  json(
      "loaded_frequencies", [&](const Json_reader& khz) { read_khz(khz, dab.loaded_frequencies); },
      [&] { return nlohmann::json(dab.loaded_frequencies); });
  json(
      "tuned_index",
      [&](const Json_reader& index) { dab.tuned_index = static_cast<uint8_t>(index.whole_number(0, UINT8_MAX)); },
      [&] { return dab.tuned_index ? nlohmann::json(*dab.tuned_index) : nlohmann::json(); });
  json("antenna_cap", dab.antenna_cap);
  json("tuning", dab.tuning);
  json("tune_complete", dab.tune_complete);
  json("status_interrupts", dab.status_interrupts);
  json("events", dab.events);
  json("lists_arrived", dab.lists_arrived);
  json(
      "running",
      [&](const Json_reader& running) {
        for (const Json_reader& entry : running.elements()) Json_members::read(entry, dab.running.emplace_back());
      },
      [&] {
        nlohmann::json running = nlohmann::json::array();
        for (const Running_service& service : dab.running) running.push_back(Json_members::write(service));
        return running;
      });
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

static void read_properties(const Json_reader& json, std::map<uint16_t, uint16_t>& properties) {
  for (const auto& [key, value] : json.members())
    properties[static_cast<uint16_t>(key_number(key, value, UINT16_MAX))] =
        static_cast<uint16_t>(value.whole_number(0, UINT16_MAX));
}

static nlohmann::json write_properties(const std::map<uint16_t, uint16_t>& properties) {
  nlohmann::json json = nlohmann::json::object();
  for (const auto& [id, value] : properties) json[std::to_string(id)] = value;
  return json;
}

static void read_pins(const Json_reader& json, std::map<unsigned, Pin_state>& pins) {
  for (const auto& [key, entry] : json.members())
    Json_members::read(entry, pins[key_number(key, entry, pin_count - 1)]);
}

static nlohmann::json write_pins(const std::map<unsigned, Pin_state>& pins) {
  nlohmann::json json = nlohmann::json::object();
  for (const auto& [number, pin] : pins) json[std::to_string(number)] = Json_members::write(pin);
  return json;
}

// A record of the application that runs; that of the other one is not written.
template <typename State>
static void application(Json_members& json, std::string_view key, State& state, bool runs) {
  json(
      key, [&state](const Json_reader& value) { Json_members::read(value, state); },
      [&state, runs] { return runs ? Json_members::write(state) : nlohmann::json(); });
}

static void members(Json_members& json, Board_state& state) {
  Chip_state& chip = state.chip;
  json.need(
      "mode", [&](const Json_reader& mode) { chip.mode = read_mode(mode); },
      [&] { return nlohmann::json(mode_name(chip.mode)); });
  json("command_error", chip.command_error);
  json("command_overflow", chip.command_overflow);
  json(
      "properties", [&](const Json_reader& value) { read_properties(value, chip.properties); },
      [&] { return write_properties(chip.properties); });
  application(json, "dab", chip.dab, chip.mode == Mode::dab);
  application(json, "fm", chip.fm, chip.mode == Mode::fm);
  json(
      "pins", [&](const Json_reader& value) { read_pins(value, state.pins); }, [&] { return write_pins(state.pins); });
}

std::string format_state(const Board_state& state) { return Json_members::write(state).dump(2) + "\n"; }

Board_state parse_state(std::string_view text, const std::string& name) {
  const nlohmann::json parsed = parse_json(text, name);
  const Json_reader json(parsed, name);
  Board_state state;
  Json_members::read(json, state);
  const auto reset = state.pins.find(reset_pin);
  const bool released = reset != state.pins.end() && reset->second.function == output && reset->second.level;
  if (released != (state.chip.mode != Mode::reset))
    json.fail("the chip is in mode " + in_quotes(mode_name(state.chip.mode)) + " with its reset line " +
              (released ? "high" : "low"));
  return state;
}

}  // namespace sim
