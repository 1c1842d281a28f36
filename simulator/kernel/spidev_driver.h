// SPDX-License-Identifier: GPL-3.0-or-later
// The spidev of the simulated kernel.
#pragma once

#include <linux/spi/spidev.h>

#include <cstdint>
#include <vector>

#include "simulator/kernel/kernel_settings.h"
#include "simulator/kernel/shared_board.h"

namespace sim {

/// The kernel's driver behind /dev/spidev0.0, with the limits of a 64-bit Raspberry Pi's kernel.
class Spidev_driver {
 public:
  /// `shared`: the board, unless it is the program's own; it belongs to the caller.
  Spidev_driver(const Kernel_settings& settings, const Shared_board* shared)
      : bufsiz_(settings.bufsiz), unbound_(settings.unbound), failing_(settings.failing), shared_(shared) {}

  /// @return the driver's result; a negative one is an error number
  int control(unsigned long request, void* argument);

 private:
  int message(const spi_ioc_transfer* transfers, uint32_t count);
  int check(const spi_ioc_transfer* transfers, uint32_t count) const;
  bool exchange(std::vector<uint8_t>& bytes, const spi_ioc_transfer& first) const;
  void set_up(const spi_ioc_transfer& transfer) const;

  uint32_t bufsiz_;
  uint32_t unbound_;
  uint32_t failing_;
  const Shared_board* shared_;
  uint32_t messages_ = 0;
  uint8_t mode_ = SPI_MODE_3;  // left by another program
};

}  // namespace sim
