// SPDX-License-Identifier: GPL-3.0-or-later
// The command line of kelvo-remote.
#include "remote/options.h"

#include <argp.h>
#include <arpa/inet.h>

#include <charconv>
#include <string_view>

const char* argp_program_version = "kelvo-remote " KELVO_VERSION;
const char* argp_program_bug_address = "<kelvo@example.org>";

namespace {

enum Key { listen = 'l', interval = 'i', host = 256, pair, new_key };

constexpr argp_option options[] = {
    {"listen", listen, "ADDRESS:PORT", 0, "Where to listen; port 0: any free one (127.0.0.1:8468)", 0},
    {"host", host, "NAME", 0, "A further name of this machine that browsers may use; can be repeated", 0},
    {"interval", interval, "MS", 0, "Milliseconds between samples, 100 to 60000 (1000)", 0},
    {"pair", pair, nullptr, 0, "Print the link that pairs a phone and its QR code, and end", 0},
    {"new-key", new_key, nullptr, 0, "Make a new key, which ends every pairing; then as --pair", 0},
    {nullptr, 0, nullptr, 0, nullptr, 0}};

constexpr const char* doc =
    "The radio as a web page: finds stations, plays them and shows how well they are received."
    "\v"
    "With other addresses than that of this machine alone, as in --listen 0.0.0.0:8468, phones in the same network "
    "reach it. SCAN-FILEs are read, never written.";

// @return false: not a number from `least` to `most`
bool read_number(std::string_view text, unsigned least, unsigned most, unsigned& value) {
  const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc() && rest == text.data() + text.size() && value >= least && value <= most;
}

bool is_address(const std::string& text) {
  in6_addr parsed{};
  return inet_pton(AF_INET, text.c_str(), &parsed) == 1 || inet_pton(AF_INET6, text.c_str(), &parsed) == 1;
}

void take_address(std::string_view text, Options& chosen, argp_state* state) {
  constexpr unsigned last_port = 65535;
  const size_t colon = text.rfind(':');
  std::string_view address = text.substr(0, colon);
  const bool brackets = address.starts_with('[') && address.ends_with(']');
  if (brackets) address = address.substr(1, address.size() - 2);
  chosen.address = address;
  unsigned port = 0;
  if (colon == text.npos || brackets != (address.find(':') != address.npos) || !is_address(chosen.address) ||
      !read_number(text.substr(colon + 1), 0, last_port, port))
    argp_error(state, "%s: not an address and a port, as in 0.0.0.0:8468 or [::1]:8468", std::string(text).c_str());
  chosen.port = std::to_string(port);
}

error_t take_option(int key, char* argument, argp_state* state) {
  constexpr unsigned least_ms = 100, most_ms = 60000;
  auto& chosen = *static_cast<Options*>(state->input);
  unsigned value = 0;
  switch (key) {
    case listen:
      take_address(argument, chosen, state);
      return 0;
    case host:
      chosen.hosts.emplace_back(argument);
      return 0;
    case interval:
      if (!read_number(argument, least_ms, most_ms, value))
        argp_error(state, "%s: not a number from 100 to 60000", argument);
      chosen.interval = std::chrono::milliseconds(value);
      return 0;
    case pair:
      chosen.task = Options::Task::pair;
      return 0;
    case new_key:
      chosen.task = Options::Task::new_key;
      return 0;
    case ARGP_KEY_ARG:
      chosen.files.emplace_back(argument);
      return 0;
    default:
      return ARGP_ERR_UNKNOWN;
  }
}

}  // namespace

Options read_options(int argc, char** argv) {
  constexpr int usage_error = 2;
  constexpr argp parser = {options, take_option, "[SCAN-FILE...]", doc, nullptr, nullptr, nullptr};
  argp_err_exit_status = usage_error;
  Options chosen;
  argp_parse(&parser, argc, argv, 0, nullptr, &chosen);
  return chosen;
}
