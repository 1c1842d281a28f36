// SPDX-License-Identifier: GPL-3.0-or-later
// The BCM2835's SPI0 as its registers show it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>

#include "simulator/board/spi_wire.h"
#include "simulator/chip/observer.h"

namespace sim {

/// Thrown when the host keeps reading registers although no byte moves and no time passes: on a real board it would
/// wait for ever.
class Hang : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A 16-byte FIFO of the controller.
class Fifo {
 public:
  bool empty() const { return count_ == 0; }
  bool full() const { return count_ == bytes_.size(); }
  size_t size() const { return count_; }
  void push(uint8_t byte) { bytes_[(first_ + count_++) % bytes_.size()] = byte; }
  uint8_t pop() {
    const uint8_t byte = bytes_[first_];
    first_ = (first_ + 1) % bytes_.size();
    --count_;
    return byte;
  }
  void clear() { count_ = 0; }

 private:
  std::array<uint8_t, 16> bytes_{};
  size_t first_ = 0;
  size_t count_ = 0;
};

/// The BCM2835's SPI0 as its registers show it: CS (control and status), FIFO and CLK. Polled transfers only.
class Spi_controller {
 public:
  Spi_controller(Spi_wire& wire, const Clock& clock, Observer& observer)
      : wire_(wire), clock_(clock), observer_(observer) {}

  uint32_t read(uint32_t offset);
  void write(uint32_t offset, uint32_t value);
  bool transfer_active() const;
  /// Time has passed: a program that polls with waits does not hang.
  void time_passed() { idle_reads_ = 0; }
  /// A byte received shows in the flags (RXD) only after CS was read so many times; 0 at power-on.
  void set_receive_delay(unsigned reads) { receive_delay_ = reads; }
  /// As after power-on of the board.
  void reset();

 private:
  void write_cs(uint32_t value);
  void clear_fifos(uint32_t value);
  void update();
  [[noreturn]] void hang();

  Spi_wire& wire_;
  const Clock& clock_;
  Observer& observer_;
  uint32_t control_ = 0;  // the bits of CS that the host sets
  uint32_t status_ = 0;   // the bits of CS that the controller sets
  uint32_t divider_ = 0;
  Fifo transmit_;
  Fifo receive_;
  unsigned idle_reads_ = 0;
  unsigned receive_delay_ = 0;
  unsigned hidden_reads_ = 0;  // of CS, until the latest byte shows
};

}  // namespace sim
