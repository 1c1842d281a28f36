// SPDX-License-Identifier: GPL-3.0-or-later
// The board's side of the program that drives real hardware. The bcm2835 library takes any machine for a Raspberry Pi
// and maps whatever lies where a Pi has its peripherals; this stands before its first step and turns other machines
// away. A Raspberry Pi 5 is one of those: its pins hang on another controller.
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

// The linker's names for the wrapped function and its replacement.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {
int __real_bcm2835_init();
int __wrap_bcm2835_init();
}
// NOLINTEND(bugprone-reserved-identifier)

namespace {

constexpr const char* machine_file = "/proc/device-tree/compatible";
constexpr std::string_view chips[] = {"brcm,bcm2708", "brcm,bcm2709", "brcm,bcm2710", "brcm,bcm2835",
                                      "brcm,bcm2836", "brcm,bcm2837", "brcm,bcm2711"};

// The names that the device tree has for this machine, each ended by a zero byte; empty where it cannot be read.
std::string machine_names() {
  std::ifstream file(machine_file, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

bool has_bcm2835_peripherals(const std::string& machine) {
  return std::any_of(std::begin(chips), std::end(chips),
                     [&](std::string_view chip) { return machine.find(chip) != std::string::npos; });
}

}  // namespace

int __wrap_bcm2835_init() {
  const std::string machine = machine_names();
  if (has_bcm2835_peripherals(machine)) return __real_bcm2835_init();
  std::fprintf(stderr, "kelvo: %s %s; to try without a board, run kelvo-sim\n", machine_file,
               machine.empty() ? "cannot be read: not a Raspberry Pi, or a container that hides it"
                               : "does not name a Raspberry Pi Zero to 4");
  return 0;
}
