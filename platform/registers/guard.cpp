// SPDX-License-Identifier: GPL-3.0-or-later
// Takes the place of bcm2835_init and bcm2835_close (the linker's --wrap). The bcm2835 library assumes that every
// machine is a Raspberry Pi that it knows, and maps whatever is at the addresses of a Pi's peripherals; and it lets
// programs mix their commands. The guard refuses other machines before anything is mapped, and lets one program at a
// time have the board.
#include <bcm2835.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <string>
#include <string_view>

#include "lock/board_lock.h"
#include "messages/messages.h"

// The linker's names for the wrapped functions and their replacements.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {
int __real_bcm2835_init();
int __wrap_bcm2835_init();
int __real_bcm2835_close();
int __wrap_bcm2835_close();
}
// NOLINTEND(bugprone-reserved-identifier)

namespace {

// The device tree's names for this machine, each ended by a zero byte.
constexpr const char* machine_file = "/proc/device-tree/compatible";
constexpr const char* spi_device = "/dev/spidev0.0";

constexpr std::string_view chips[] = {"brcm,bcm2708", "brcm,bcm2709", "brcm,bcm2710", "brcm,bcm2835",
                                      "brcm,bcm2836", "brcm,bcm2837", "brcm,bcm2711"};

// The Raspberry Pi 5: its pins are behind another controller.
constexpr std::string_view chip_with_other_pins = "brcm,bcm2712";

int locked = -1;  // the SPI device, while this program has the board

// Once, also for a program that tries again and again.
void print_once(const std::string& line) {
  static std::string last;
  if (line != last) messages::print(line);
  last = line;
}

// Empty where it cannot be read.
std::string machine() {
  std::FILE* const file = std::fopen(machine_file, "r");
  if (file == nullptr) return "";
  char names[4096];
  const size_t length = std::fread(names, 1, sizeof names, file);
  static_cast<void>(std::fclose(file));  // result ignored: the file was only read
  return {names, length};
}

std::string refusal(std::string_view names) {
  if (names.empty())
    return "cannot be read: not a Raspberry Pi, or a container that hides it; use kelvo-sim, in a program of your own "
           "si468x::simulator";
  if (names.find(chip_with_other_pins) != std::string_view::npos)
    return "names a Raspberry Pi 5, which the bcm2835 library does not know; use kelvo-spidev, in a program of your "
           "own si468x::spidev";
  return "does not name a Raspberry Pi Zero to 4; use kelvo-sim, in a program of your own si468x::simulator";
}

bool has_bcm2835_peripherals(std::string_view names) {
  return std::any_of(std::begin(chips), std::end(chips),
                     [&](std::string_view chip) { return names.find(chip) != std::string_view::npos; });
}

// Where SPI is not enabled there is no device and no lock. Never on a standard stream's descriptor, which the program
// may have been started without: what it prints would go to the chip.
// @return false: another program has the board
bool lock_board() {
  const int descriptor = open(spi_device, O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return true;
  locked = fcntl(descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  close(descriptor);
  const int error = lock::acquire(locked, spi_device);
  if (error != 0 && !lock::board_user()) print_once(spi_device + (": " + std::string(std::strerror(error))));
  return error == 0;
}

void unlock_board() {
  if (locked >= 0) close(locked);
  locked = -1;
}

// Without root the library maps nothing or, where /dev/gpiomem permits it, the pins alone, and then reports success.
int init_with_spi() {
  const int result = __real_bcm2835_init();
  if (result != 0 ? bcm2835_spi0 == MAP_FAILED : geteuid() != 0)
    print_once(
        "the registers of SPI0 are mapped for root only; use sudo, or without it kelvo-spidev, in a program of your "
        "own si468x::spidev");
  return result;
}

}  // namespace

int __wrap_bcm2835_init() {
  lock::forget_user();
  const std::string names = machine();
  if (!has_bcm2835_peripherals(names)) {
    print_once(std::string(machine_file) + " " + refusal(names));
    return 0;
  }
  unlock_board();
  const int result = lock_board() ? init_with_spi() : 0;
  if (result == 0) unlock_board();
  return result;
}

int __wrap_bcm2835_close() {
  const int result = __real_bcm2835_close();
  unlock_board();
  return result;
}
