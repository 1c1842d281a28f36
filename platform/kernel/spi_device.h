// SPDX-License-Identifier: GPL-3.0-or-later
// SPI0 with chip select 0, through the kernel's spidev.
#pragma once

#include <cstdint>

#include "platform/kernel/device_file.h"

namespace kernel {

/// The longest transaction that the kernel takes unless its module parameter `bufsiz` is changed. As one transfer: of
/// several, each counts with its length rounded up to what DMA needs.
inline constexpr uint32_t longest_transaction = 4096;

/// SPI0 with chip select 0, through the kernel's spidev. Faults are reported.
class Spi_device {
 public:
  bool open();
  /// Sets mode 0, most significant bit first, chip select active low: the device keeps the settings of its last user.
  bool set_up();
  /// One whole transaction at 7.8125 MHz, or the next lower speed of the controller. Each byte is replaced by the byte
  /// received while it was sent, or by zero if the transfer fails.
  void transfer(uint8_t* bytes, uint32_t length);

 private:
  Device_file file_;
};

}  // namespace kernel
