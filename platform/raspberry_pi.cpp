// SPDX-License-Identifier: GPL-3.0-or-later
// The board's side of the program that drives real hardware. The bcm2835 library takes any machine for a Raspberry Pi
// and maps whatever lies where a Pi has its peripherals; this stands before its first step and turns other machines
// away. A Raspberry Pi 5 is one of those: its pins hang on another controller.
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

bool has_bcm2835_peripherals() {
  std::ifstream file(machine_file, std::ios::binary);
  const std::string machine{std::istreambuf_iterator<char>(file), {}};  // names, each ended by a zero byte
  for (const std::string_view chip : chips)
    if (machine.find(chip) != std::string::npos) return true;
  return false;
}

}  // namespace

int __wrap_bcm2835_init() {
  if (has_bcm2835_peripherals()) return __real_bcm2835_init();
  std::fprintf(stderr, "kelvo: this machine is not a Raspberry Pi Zero to 4 (%s); to try without one, run kelvo-sim\n",
               machine_file);
  return 0;
}
