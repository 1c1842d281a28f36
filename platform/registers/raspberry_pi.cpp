// SPDX-License-Identifier: GPL-3.0-or-later
// Takes the place of bcm2835_init (the linker's --wrap). The bcm2835 library takes any machine for a Raspberry Pi and
// maps whatever lies at the addresses of a Pi's peripherals; the guard turns other machines away before that.
#include <bcm2835.h>
#include <sys/mman.h>

#include <cerrno>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

#include "platform/registers/guard.h"

// The linker's names for the wrapped function and its replacement.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {
int __real_bcm2835_init();
int __wrap_bcm2835_init();
}
// NOLINTEND(bugprone-reserved-identifier)

int __wrap_bcm2835_init() {
  std::ifstream file(machine_file, std::ios::binary);
  const int result = init_on_raspberry_pi(std::string{std::istreambuf_iterator<char>(file), {}}, __real_bcm2835_init);
  // Without root the library maps the pins alone, where /dev/gpiomem permits it, and reports success.
  if (result != 0 && bcm2835_spi0 == MAP_FAILED)
    std::fprintf(stderr, "%s: the registers of SPI0 are mapped for root only; run it with sudo\n",
                 program_invocation_short_name);
  return result;
}
