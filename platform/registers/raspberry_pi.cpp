// SPDX-License-Identifier: GPL-3.0-or-later
// Takes the place of bcm2835_init (the linker's --wrap). The bcm2835 library takes any machine for a Raspberry Pi and
// maps whatever lies at the addresses of a Pi's peripherals; the guard turns other machines away before that.
#include <bcm2835.h>
#include <sys/mman.h>
#include <unistd.h>

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

namespace {

// Without root the library maps nothing or, where /dev/gpiomem permits it, the pins alone, and then reports success.
int init_with_spi() {
  const int result = __real_bcm2835_init();
  if (result != 0 ? bcm2835_spi0 == MAP_FAILED : geteuid() != 0)
    std::fprintf(stderr,
                 "%s: the registers of SPI0 are mapped for root only; run it with sudo, or kelvo-spidev without\n",
                 program_invocation_short_name);
  return result;
}

}  // namespace

int __wrap_bcm2835_init() {
  std::ifstream file(machine_file, std::ios::binary);
  return init_on_raspberry_pi(std::string{std::istreambuf_iterator<char>(file), {}}, init_with_spi);
}
