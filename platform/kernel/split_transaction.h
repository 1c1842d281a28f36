// SPDX-License-Identifier: GPL-3.0-or-later
// One transaction in several pieces.
#pragma once

#include <array>
#include <cstdint>

#include "platform/kernel/spi_device.h"

namespace kernel {

class Link;

/// One transaction in several pieces, over a link that takes only whole ones: not every controller keeps chip select
/// active between two messages.
///
/// The bytes of a write are collected and sent at its end; its pieces receive zeros. A read (it begins with a byte 0,
/// as the chip's RD_REPLY does) reads ahead at its first piece and returns the bytes piece by piece. A piece beyond
/// the longest transaction is reported; it receives zeros, and a write is then not sent.
class Split_transaction {
 public:
  /// `link` makes the whole transactions.
  explicit Split_transaction(Link& link) : link_(link) {}

  void begin();
  void piece(const uint8_t* sent, uint8_t* received, uint32_t length);
  void end();

 private:
  enum class State { empty, writes, reads, too_long };

  Link& link_;
  State state_ = State::empty;
  std::array<uint8_t, longest_transaction> bytes_{};
  uint32_t used_ = 0;  // bytes collected, or returned
};

}  // namespace kernel
