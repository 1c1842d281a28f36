// SPDX-License-Identifier: GPL-3.0-or-later
// SPI0 as a polling program drives it, on the current board.
#include "simulator/host/spi_registers.h"

#include <bcm2835.h>

#include "simulator/host/environment.h"

namespace sim {

void set_cs_bits(uint32_t value, uint32_t mask) {
  Board& board = current_board();
  const uint32_t cs = board.read_register(BCM2835_SPI0_CS);
  board.write_register(BCM2835_SPI0_CS, (cs & ~mask) | (value & mask));
}

void open_transaction() {
  set_cs_bits(BCM2835_SPI0_CS_CLEAR, BCM2835_SPI0_CS_CLEAR);
  set_cs_bits(BCM2835_SPI0_CS_TA, BCM2835_SPI0_CS_TA);
}

void move_bytes(const uint8_t* sent, uint8_t* received, uint32_t length) {
  Board& board = current_board();
  uint32_t written = 0;
  uint32_t read = 0;
  while (written < length || read < length) {
    while (written < length && (board.read_register(BCM2835_SPI0_CS) & BCM2835_SPI0_CS_TXD) != 0)
      board.write_register(BCM2835_SPI0_FIFO, sent[written++]);
    while (read < length && (board.read_register(BCM2835_SPI0_CS) & BCM2835_SPI0_CS_RXD) != 0)
      received[read++] = static_cast<uint8_t>(board.read_register(BCM2835_SPI0_FIFO));
  }
}

bool transfer_done() { return (current_board().read_register(BCM2835_SPI0_CS) & BCM2835_SPI0_CS_DONE) != 0; }

void close_transaction() { set_cs_bits(0, BCM2835_SPI0_CS_TA); }

}  // namespace sim
