// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/registers/guard.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <iterator>

namespace {

constexpr std::string_view chips[] = {"brcm,bcm2708", "brcm,bcm2709", "brcm,bcm2710", "brcm,bcm2835",
                                      "brcm,bcm2836", "brcm,bcm2837", "brcm,bcm2711"};

// The Raspberry Pi 5: its pins are behind another controller.
constexpr std::string_view chip_with_other_pins = "brcm,bcm2712";

const char* refusal(std::string_view machine) {
  if (machine.empty())
    return "cannot be read: not a Raspberry Pi, or a container that hides it; to try without a board, run kelvo-sim";
  if (machine.find(chip_with_other_pins) != std::string_view::npos)
    return "names a Raspberry Pi 5, which the bcm2835 library does not know; run kelvo-spidev, which needs no sudo";
  return "does not name a Raspberry Pi Zero to 4; to try without a board, run kelvo-sim";
}

bool has_bcm2835_peripherals(std::string_view machine) {
  return std::any_of(std::begin(chips), std::end(chips),
                     [&](std::string_view chip) { return machine.find(chip) != std::string_view::npos; });
}

}  // namespace

int init_on_raspberry_pi(std::string_view machine, int (*init)()) {
  if (has_bcm2835_peripherals(machine)) return init();
  std::fprintf(stderr, "%s: %s %s\n", program_invocation_short_name, machine_file, refusal(machine));
  return 0;
}
