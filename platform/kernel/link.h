// SPDX-License-Identifier: GPL-3.0-or-later
// The program's link to the board.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/kernel/board_trace.h"
#include "platform/kernel/reset_line.h"
#include "platform/kernel/spi_device.h"
#include "platform/kernel/split_transaction.h"

namespace kernel {

/// It is closed at first; it can be opened and closed many times. While it is open, no other program can open one.
///
/// The first fault while it is open is printed: later ones come from the same cause. After a failed transfer or a
/// refused reset the chip is out of reach until the link is opened again: transfers receive zeros and reach no device,
/// as from a chip that does not answer, and no wait is longer than 100 µs. The driver does not learn of
/// the fault: otherwise it would take a part of an image for sent, or wait for minutes.
class Link {
 public:
  Link() = default;
  Link(const Link&) = delete;
  Link& operator=(const Link&) = delete;
  ~Link() = default;

  /// Waits for the board. Ends the program when a variable cannot be used.
  bool open();
  /// Ends the trace, releases the reset line and lets other programs have the board.
  void close();

  /// Sets up the SPI device; before it and after `end_spi` transfers receive zeros.
  bool begin_spi();
  void end_spi() { spi_in_use_ = false; }

  /// One whole transaction, in place.
  void transfer(uint8_t* bytes, uint32_t length);
  Split_transaction& split() { return split_; }
  /// `pin` is a Raspberry Pi's GPIO.
  void drive(uint8_t pin, bool high);
  void wait(trace::Time span);

  void report(const std::string& fault);

 private:
  bool succeeded(const std::optional<std::string>& fault);

  std::optional<Reset_line> reset_line_;  // while the link is open
  std::optional<Board_trace> trace_;      // while it is open, if KELVO_TRACE names a file
  Spi_device spi_;
  bool spi_in_use_ = false;
  bool out_of_reach_ = false;
  bool reported_ = false;   // since it was opened
  std::string last_fault_;  // not repeated by a program that opens the link again and again
  Split_transaction split_{*this};
};

}  // namespace kernel
