// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/registers/guard.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <iterator>

namespace {

// Not the Raspberry Pi 5 (brcm,bcm2712): its pins are behind another controller.
constexpr std::string_view chips[] = {"brcm,bcm2708", "brcm,bcm2709", "brcm,bcm2710", "brcm,bcm2835",
                                      "brcm,bcm2836", "brcm,bcm2837", "brcm,bcm2711"};

bool has_bcm2835_peripherals(std::string_view machine) {
  return std::any_of(std::begin(chips), std::end(chips),
                     [&](std::string_view chip) { return machine.find(chip) != std::string_view::npos; });
}

}  // namespace

int init_on_raspberry_pi(std::string_view machine, int (*init)()) {
  if (has_bcm2835_peripherals(machine)) return init();
  std::fprintf(stderr, "%s: %s %s; to try without a board, run kelvo-sim\n", program_invocation_short_name,
               machine_file,
               machine.empty() ? "cannot be read: not a Raspberry Pi, or a container that hides it"
                               : "does not name a Raspberry Pi Zero to 4");
  return 0;
}
