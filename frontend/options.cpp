// SPDX-License-Identifier: GPL-3.0-or-later
// The options as glibc's argp sees them, with their help texts.
#include "frontend/options.h"

#include <argp.h>

#include <cstdlib>

// The version of the command line: its options and texts, which releases of the project (PROJECT_VERSION) do not
// change.
const char* argp_program_version = "kelvo 1.0.0";
const char* argp_program_bug_address = "<kelvo@example.org>";

namespace {

constexpr const char* doc = "kelvo - simple DAB radio interface to the Si468x for the terminal";
constexpr const char* args_doc =
    "Commands and options can be combined. The command: 'sudo ./kelvo -b D -c 12 -e 17333 -f 33 -g -p -l 50' for "
    "example will boot up with DAB firmware, tune to the frequency with index 33 and the service with id 17333 and "
    "component id 12, start playing, print the service list and adjust the volume to a level of 50.";

constexpr argp_option options[] = {
    {"level", 'l', "LEVEL", 0, "Set the volume level of the radio to a value between 0 (low) and 63 (high)", 0},
    {"boot", 'b', "FIRMWARE", 0,
     "Load the firmware and boot the Si468x. Use argument 'D' to load the DAB firmware, 'F' to load the FMHD firmware.",
     0},
    {"shutdown", 'k', nullptr, 0, "Shut down the Si468x", 0},
    {"chip_info", 'i', nullptr, 0, "Prints Si468x information", 0},
    {"digrad_status", 'd', nullptr, 0, "Prints the digital radio status", 0},
    {"event_status", 'n', nullptr, 0, "Prints the digital radio event status", 0},
    {"digital_service_list", 'g', nullptr, 0,
     "Prints the digital service list of the ensemble, including service data, always as json", 0},
    {"datetime", 't', nullptr, 0, "Prints ensemble date-time as ISO string", 0},
    {"play", 'p', nullptr, 0,
     "Play a station. Service and component have to be given and the Si468x has to be tuned to the right frequency "
     "already.",
     0},
    {"frequency", 'f', "FREQUENCY", 0, "Frequency index of the ensemble", 0},
    {"service", 'e', "SERVICE", 0, "Service id", 0},
    {"component", 'c', "SERVICE", 0, "Component id", 0},
    {"i2s_out", 'o', "ENABLE", 0,
     "Enable (i2s_out=1) i2s as output - analog out will be deactivated. To disable, use i2s_out=0. The board must "
     "support his and custom kernel needed. The Si468x must not be tuned to change this.",
     0},
    {"next", 'x', nullptr, 0, "Tune to the next FMHD station", 0},
    {"rds_status", 'r', nullptr, 0, "Print RDS status information", 0},
    {"format_json", 'j', nullptr, 0, "Output info as json, if implemented", 0},
    {"full_scan", 'u', nullptr, 0,
     "Scan all (European) DAB frequencies for ensembles and save to the file \"full_scan.json\" in json format.", 0},
    {},
};

// Leading blanks, a sign, digits up to the first other character; 0 without digits. Read as 64 bits, because `long` has
// 32 on some processors: service ids and the low bits of any number are then the same everywhere.
int32_t number(const char* text) { return static_cast<int32_t>(std::strtoll(text, nullptr, 10)); }

// The options without an argument.
constexpr struct {
  int key;
  int32_t arguments::*flag;
} flags[] = {
    {'k', &arguments::shutdown},     {'i', &arguments::chip_info}, {'d', &arguments::digrad_status},
    {'n', &arguments::event_status}, {'t', &arguments::datetime},  {'g', &arguments::digital_service_list},
    {'p', &arguments::play},         {'x', &arguments::next},      {'r', &arguments::rds_status},
    {'j', &arguments::format_json},  {'u', &arguments::full_scan},
};

error_t parse_opt(int key, char* arg, argp_state* state) {
  auto& parsed = *static_cast<arguments*>(state->input);
  for (const auto& option : flags) {
    if (option.key != key) continue;
    parsed.*option.flag = 1;
    return 0;
  }
  switch (key) {
    case 'l':
      parsed.level = number(arg);
      parsed.set_level = 1;
      break;
    case 'b':
      parsed.boot = 1;
      parsed.firmware = arg[0];
      break;
    case 'o':
      parsed.i2s_out = 1;
      parsed.i2s_enable = number(arg);
      break;
    case 'e':
      parsed.service = number(arg);
      break;
    case 'c':
      parsed.component = number(arg);
      break;
    case 'f':
      parsed.frequency = static_cast<uint8_t>(number(arg));
      break;
    default:
      return ARGP_ERR_UNKNOWN;
  }
  return 0;
}

constexpr argp parser{options, parse_opt, args_doc, doc, nullptr, nullptr, nullptr};

}  // namespace

arguments read_options(int argc, char** argv) {
  arguments parsed;
  argp_parse(&parser, argc, argv, 0, nullptr, &parsed);
  return parsed;
}
