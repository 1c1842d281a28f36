// SPDX-License-Identifier: GPL-3.0-or-later
// The spidev of the simulated kernel.
#pragma once

#include <linux/spi/spidev.h>

#include <cstdint>

namespace sim {

/// The kernel's driver behind /dev/spidev0.0, with the limits of a 64-bit Raspberry Pi's kernel.
class Spidev_driver {
 public:
  /// `bufsiz`: the module's parameter. The device is removed at message number `unbound`, if that is not 0.
  Spidev_driver(uint32_t bufsiz, uint32_t unbound) : bufsiz_(bufsiz), unbound_(unbound) {}

  /// @return the driver's result; a negative one is an error number
  int control(unsigned long request, void* argument);

 private:
  int message(const spi_ioc_transfer* transfers, uint32_t count);
  int check(const spi_ioc_transfer* transfers, uint32_t count) const;
  void set_up(const spi_ioc_transfer& transfer) const;

  uint32_t bufsiz_;
  uint32_t unbound_;
  uint32_t messages_ = 0;
  uint8_t mode_ = SPI_MODE_3;  // left by another program
};

}  // namespace sim
