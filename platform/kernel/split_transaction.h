// SPDX-License-Identifier: GPL-3.0-or-later
// One transaction in several pieces.
#pragma once

#include <array>
#include <cstdint>
#include <functional>

#include "platform/kernel/spi_device.h"

namespace kernel {

/// One transaction in several pieces, over a device that takes only whole ones: not every controller keeps chip select
/// active between two messages.
///
/// The bytes of a write are collected and sent at its end; its pieces receive zeros. A read (it begins with a byte 0,
/// as the chip's RD_REPLY does) reads ahead at its first piece and returns the bytes piece by piece. A piece beyond
/// the longest transaction is reported; it receives zeros, and a write is then not sent.
class Split_transaction {
 public:
  /// `exchange` makes one whole transaction; each byte is replaced by the byte received while it was sent.
  using Exchange = std::function<void(uint8_t* bytes, uint32_t length)>;
  explicit Split_transaction(Exchange exchange) : exchange_(std::move(exchange)) {}

  void begin();
  void piece(const uint8_t* sent, uint8_t* received, uint32_t length);
  void end();

 private:
  enum class State { empty, writes, reads, too_long };

  Exchange exchange_;
  State state_ = State::empty;
  std::array<uint8_t, longest_transaction> bytes_{};
  uint32_t used_ = 0;  // bytes collected, or returned
};

}  // namespace kernel
