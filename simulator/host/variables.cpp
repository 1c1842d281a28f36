// SPDX-License-Identifier: GPL-3.0-or-later
// The environment variables of the simulated board.
#include "simulator/host/variables.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <string_view>

namespace sim {

namespace {

constexpr std::string_view prefix = "KELVO_SIM_";
constexpr std::string_view known[] = {"BROADCAST", "FAULTS", "KERNEL", "REALTIME", "STATE", "TRACE", "TRACE_BYTES"};

}  // namespace

std::string variable(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

std::vector<std::string> unknown_variables() {
  std::vector<std::string> unknown;
  for (char** entry = environ; *entry != nullptr; ++entry) {
    const std::string_view setting(*entry);
    const std::string_view name = setting.substr(0, setting.find('='));
    if (!name.starts_with(prefix)) continue;
    if (std::find(std::begin(known), std::end(known), name.substr(prefix.size())) == std::end(known))
      unknown.emplace_back(name);
  }
  return unknown;
}

}  // namespace sim
