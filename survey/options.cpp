// SPDX-License-Identifier: GPL-3.0-or-later
// The command line, read with argp.
#include "survey/options.h"

#include <argp.h>

#include <algorithm>
#include <string_view>

const char* argp_program_version = "kelvo-survey " KELVO_VERSION;
const char* argp_program_bug_address = "<kelvo@example.org>";

namespace {

constexpr const char* doc =
    "Shows what scans (kelvo -u) received: without an option as a table, blocks down and places across."
    "\v"
    "FILE has scans as kelvo writes them, or the same in valid JSON; - is standard input.\n"
    "\n"
    "Examples:\n"
    "\n"
    "Which place receives which block better, as a table and as a page:\n"
    "  kelvo-survey roof.json cellar.json\n"
    "  kelvo-survey --html roof.json cellar.json > places.html\n"
    "\n"
    "Play a station by its name:\n"
    "  kelvo-spidev $(kelvo-survey --play \"radio quellberg\" roof.json)\n";

// Keys of options without a letter, from `Output`.
constexpr int key_of(Output output) { return 256 + static_cast<int>(output); }

constexpr argp_option options[] = {
    {"stations", key_of(Output::stations), nullptr, 0, "One line per station, with the place that receives it best", 0},
    {"html", key_of(Output::html), nullptr, 0, "One page with the picture and the stations", 0},
    {"svg", key_of(Output::svg), nullptr, 0, "The picture alone", 0},
    {"json", key_of(Output::json), nullptr, 0, "Valid JSON, one line per scan, with labels as text and block names", 0},
    {"csv", key_of(Output::csv), nullptr, 0, "One row per station and place", 0},
    {"play", key_of(Output::play), "NAME", 0,
     "The options of kelvo that play the station of this name, or with this in its name; 6B/NAME looks in one block",
     0},
    {nullptr, 0, nullptr, 0, nullptr, 0}};

error_t take_option(int key, char* argument, argp_state* state) {
  auto& chosen = *static_cast<Options*>(state->input);
  if (key == ARGP_KEY_ARG) {
    const bool again = std::ranges::find(chosen.files, "-") != chosen.files.end();
    if (again && std::string_view(argument) == "-") argp_error(state, "- is given twice: standard input is read once");
    chosen.files.emplace_back(argument);
  } else if (key == ARGP_KEY_NO_ARGS) {
    argp_error(state, "a scan file is missing");
  } else if (key > key_of(Output::table) && key <= key_of(Output::play)) {
    if (chosen.output != Output::table) argp_error(state, "only one output can be chosen");
    chosen.output = static_cast<Output>(key - key_of(Output::table));
    if (argument != nullptr) chosen.name = argument;
    if (chosen.output == Output::play && chosen.name.empty()) argp_error(state, "--play needs a name");
  } else {
    return ARGP_ERR_UNKNOWN;
  }
  return 0;
}

}  // namespace

Options read_options(int argc, char** argv) {
  constexpr int usage_error = 2;
  constexpr argp parser = {options, take_option, "FILE...", doc, nullptr, nullptr, nullptr};
  argp_err_exit_status = usage_error;
  Options chosen;
  argp_parse(&parser, argc, argv, 0, nullptr, &chosen);
  return chosen;
}
