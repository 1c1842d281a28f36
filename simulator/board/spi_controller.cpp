// SPDX-License-Identifier: GPL-3.0-or-later
// The BCM2835's SPI0 as its registers show it.
#include "simulator/board/spi_controller.h"

#include <bcm2835.h>

namespace sim {

namespace {

// CS   .. LEN DMA POL2 POL1 POL0 | RXF RXR TXD RXD DONE | ... | TA POL CLEAR(2) CPOL CPHA CS(2)
constexpr uint32_t status_mask =
    BCM2835_SPI0_CS_RXF | BCM2835_SPI0_CS_RXR | BCM2835_SPI0_CS_TXD | BCM2835_SPI0_CS_RXD | BCM2835_SPI0_CS_DONE;
constexpr size_t needs_reading = 12;        // RXR: the receive FIFO is three quarters full
constexpr unsigned longest_idle = 100'000;  // a correct program never reads so often between two bytes

}  // namespace

bool Spi_controller::transfer_active() const { return (control_ & BCM2835_SPI0_CS_TA) != 0; }

void Spi_controller::reset() {
  control_ = 0;
  divider_ = 0;
  transmit_.clear();
  receive_.clear();
  idle_reads_ = 0;
  update();
}

uint32_t Spi_controller::read(uint32_t offset) {
  if (++idle_reads_ > longest_idle) hang();
  switch (offset) {
    case BCM2835_SPI0_CS:
      if (hidden_reads_ == 0) return control_ | status_;
      --hidden_reads_;
      return control_ | (status_ & ~uint32_t{BCM2835_SPI0_CS_RXD});
    case BCM2835_SPI0_FIFO: {
      if (receive_.empty()) {
        observer_.event(clock_.now(), event::mistake, "receive FIFO read while it is empty");
        return 0;
      }
      const uint8_t byte = receive_.pop();
      update();
      return byte;
    }
    case BCM2835_SPI0_CLK:
      return divider_;
    default:
      return 0;  // the registers of DMA and LoSSI transfers, which the board does not use
  }
}

void Spi_controller::write(uint32_t offset, uint32_t value) {
  switch (offset) {
    case BCM2835_SPI0_CS:
      write_cs(value);
      break;
    case BCM2835_SPI0_FIFO:
      if (transmit_.full())
        observer_.event(clock_.now(), event::mistake, "transmit FIFO written while it is full: the byte is lost");
      else
        transmit_.push(static_cast<uint8_t>(value));
      break;
    case BCM2835_SPI0_CLK:
      divider_ = value & 0xFFFF;
      break;
    default:
      break;
  }
  update();
}

void Spi_controller::write_cs(uint32_t value) {
  const bool was_active = transfer_active();
  clear_fifos(value);
  control_ = value & ~(status_mask | BCM2835_SPI0_CS_CLEAR);
  if (was_active && transfer_active()) wire_.select_again();
  if (!was_active && transfer_active()) wire_.select(control_, divider_);
  if (was_active && !transfer_active()) wire_.deselect();
}

// The CLEAR bits act once and always read as 0.
void Spi_controller::clear_fifos(uint32_t value) {
  if ((value & BCM2835_SPI0_CS_CLEAR_TX) != 0) {
    if (!transmit_.empty())
      observer_.event(clock_.now(), event::mistake,
                      std::to_string(transmit_.size()) + " byte(s) in the transmit FIFO cleared unsent");
    transmit_.clear();
  }
  if ((value & BCM2835_SPI0_CS_CLEAR_RX) != 0) receive_.clear();
}

// Moves what can move, then works out the flags.
void Spi_controller::update() {
  if (transfer_active()) {
    while (!transmit_.empty() && !receive_.full()) {
      receive_.push(wire_.exchange(transmit_.pop()));
      idle_reads_ = 0;
      hidden_reads_ = receive_delay_;
    }
  }
  status_ = 0;
  if (transfer_active() && transmit_.empty() && !wire_.never_done()) status_ |= BCM2835_SPI0_CS_DONE;
  if (!receive_.empty()) status_ |= BCM2835_SPI0_CS_RXD;
  if (!transmit_.full()) status_ |= BCM2835_SPI0_CS_TXD;
  if (transfer_active() && receive_.size() >= needs_reading) status_ |= BCM2835_SPI0_CS_RXR;
  if (receive_.full()) status_ |= BCM2835_SPI0_CS_RXF;
}

void Spi_controller::hang() {
  idle_reads_ = 0;
  const std::string what = "the host reads SPI0 registers without end: no byte moves and no time passes";
  observer_.event(clock_.now(), event::hang, what);
  throw Hang(what);
}

}  // namespace sim
