// SPDX-License-Identifier: GPL-3.0-or-later
// How the simulated kernel is configured.
#pragma once

#include <cstdint>
#include <string>

namespace sim {

/// A kernel's configuration: KELVO_SIM_KERNEL, words NAME=VALUE such as "chip=4 label=pinctrl-rp1". The broadcast file
/// decides whether SPI is enabled and whether the user may use the devices, as it does without a kernel.
struct Kernel_settings {
  uint32_t chip = 0;                      ///< number of the GPIO controller with the board's pins
  std::string label = "pinctrl-bcm2711";  ///< and its label
  uint32_t line = 23;                     ///< its line that the chip's reset is wired to
  std::string persist = "Y";              ///< its driver's parameter persist_gpio_outputs; "none": it has none
  std::string busy{};                     ///< who uses the reset line; empty: nobody
  uint32_t bufsiz = 4096;                 ///< spidev's parameter
  std::string spidev{};                   ///< the file that programs lock as /dev/spidev0.0; empty: none share it
  uint32_t unbound = 0;                   ///< number of the message at which the device is removed; 0: never
  uint32_t failing = 0;                   ///< number of the message that fails; 0: none
  std::string board{};                    ///< the socket of a shared board (kelvo-shared-board); empty: an own one
  uint32_t gpio_denied = 0;               ///< 1: the user may not open GPIO controllers
  uint32_t interrupted = 0;               ///< 1: a signal interrupts every second ioctl and every second sleep
};

/// Ends the program with status 2 if the variable cannot be used.
Kernel_settings read_kernel_settings();

}  // namespace sim
