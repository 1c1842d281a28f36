// SPDX-License-Identifier: GPL-3.0-or-later
// SPI0 with chip select 0, through the kernel's spidev.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/kernel/system.h"

namespace kernel {

/// The longest transaction that the kernel takes unless its module parameter `bufsiz` is changed. As one transfer: of
/// several, each counts with its length rounded up to what DMA needs.
inline constexpr uint32_t longest_transaction = 4096;

/// Each function returns why it failed.
class Spi_device {
 public:
  /// Waits until no other program has the device open for itself, then opens it for this one.
  std::optional<std::string> open();
  void close() { file_.close(); }
  /// Sets mode 0, most significant bit first, chip select active low: the device keeps the settings of its last user.
  std::optional<std::string> set_up();
  /// One whole transaction at 7.8125 MHz, or the next lower speed of the controller. Each byte is replaced by the byte
  /// received while it was sent.
  std::optional<std::string> transfer(uint8_t* bytes, uint32_t length);
  /// Opens the file once more, and closes it.
  static std::optional<std::string> try_open();

 private:
  Device_file file_;
};

}  // namespace kernel
