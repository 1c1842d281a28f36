// SPDX-License-Identifier: GPL-3.0-or-later
// The command line of kelvo-watch.
#include "watch/options.h"

#include <argp.h>
#include <unistd.h>

#include <charconv>
#include <cstring>

const char* argp_program_version = "kelvo-watch " KELVO_VERSION;
const char* argp_program_bug_address = "<kelvo@example.org>";

namespace {

enum Key { interval = 'i', count = 'n', beep = 'b', json = 256 };

constexpr argp_option options[] = {{"interval", interval, "MS", 0, "Milliseconds between samples, 0 to 60000 (500)", 0},
                                   {"count", count, "N", 0, "End after N samples", 0},
                                   {"beep", beep, nullptr, 0, "The terminal's bell: the better the SNR, the faster", 0},
                                   {"json", json, nullptr, 0, "JSON lines, also to a terminal", 0},
                                   {nullptr, 0, nullptr, 0, nullptr, 0}};

constexpr const char* doc =
    "Shows the received signal as it changes: in a terminal on the full screen, into a pipe or a file as JSON lines."
    "\v"
    "It never tunes: what is tuned is shown, and kelvo-spidev can run beside it.\n"
    "Keys: space marks a position, + and - change the interval, b the beep, q ends.\n";

template <typename Number>
Number number(const char* text, Number most, const char* what, argp_state* state) {
  Number value = 0;
  const char* const end = text + std::strlen(text);
  const auto [rest, error] = std::from_chars(text, end, value);
  if (error != std::errc() || rest != end || value > most) argp_error(state, "%s: not a number up to %s", text, what);
  return value;
}

error_t take_option(int key, char* argument, argp_state* state) {
  auto& chosen = *static_cast<Options*>(state->input);
  switch (key) {
    case interval:
      chosen.interval = std::chrono::milliseconds(number<unsigned>(argument, 60000, "60000", state));
      return 0;
    case count:
      chosen.count = number<uint64_t>(argument, UINT32_MAX, "4294967295", state);
      if (chosen.count == 0) argp_error(state, "--count needs a number from 1 up");
      return 0;
    case beep:
      chosen.beep = true;
      return 0;
    case json:
      chosen.json = true;
      return 0;
    case ARGP_KEY_END:
      if (isatty(STDOUT_FILENO) != 1 || isatty(STDIN_FILENO) != 1) chosen.json = true;
      if (chosen.json && chosen.beep) argp_error(state, "--beep needs the full screen of a terminal");
      return 0;
    default:
      return ARGP_ERR_UNKNOWN;
  }
}

}  // namespace

Options read_options(int argc, char** argv) {
  constexpr int usage_error = 2;
  constexpr argp parser = {options, take_option, nullptr, doc, nullptr, nullptr, nullptr};
  argp_err_exit_status = usage_error;
  Options chosen;
  argp_parse(&parser, argc, argv, 0, nullptr, &chosen);
  return chosen;
}
