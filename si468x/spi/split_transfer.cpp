// SPDX-License-Identifier: GPL-3.0-or-later
// Split transfers, made with the registers of SPI0 as the library makes its own.
#include "si468x/spi/split_transfer.h"

#include <bcm2835.h>

namespace {

// The library sets the addresses in bcm2835_init, so they are read on every call.
volatile uint32_t* cs_register() { return bcm2835_spi0 + BCM2835_SPI0_CS / 4; }
volatile uint32_t* fifo_register() { return bcm2835_spi0 + BCM2835_SPI0_FIFO / 4; }

}  // namespace

void bcm2835_spi_lowerCS() {
  volatile uint32_t* const cs = cs_register();
  bcm2835_peri_write(cs, bcm2835_peri_read(cs) | BCM2835_SPI0_CS_CLEAR);
  bcm2835_peri_write(cs, bcm2835_peri_read(cs) | BCM2835_SPI0_CS_TA);
}

void bcm2835_spi_higherCS() {
  volatile uint32_t* const cs = cs_register();
  bcm2835_peri_write(cs, bcm2835_peri_read(cs) & ~static_cast<uint32_t>(BCM2835_SPI0_CS_TA));
}

void bcm2835_spi_transfernb_noCS(uint8_t* tbuf, uint8_t* rbuf, uint32_t len) {
  volatile uint32_t* const cs = cs_register();
  volatile uint32_t* const fifo = fifo_register();
  uint32_t sent = 0;
  uint32_t received = 0;
  while (sent < len || received < len) {
    while (sent < len && (bcm2835_peri_read(cs) & BCM2835_SPI0_CS_TXD) != 0) bcm2835_peri_write_nb(fifo, tbuf[sent++]);
    while (received < len && (bcm2835_peri_read(cs) & BCM2835_SPI0_CS_RXD) != 0)
      rbuf[received++] = static_cast<uint8_t>(bcm2835_peri_read_nb(fifo));
  }
  while ((bcm2835_peri_read_nb(cs) & BCM2835_SPI0_CS_DONE) == 0) {
  }
}

void bcm2835_spi_transfern_noCS(uint8_t* buf, uint32_t len) { bcm2835_spi_transfernb_noCS(buf, buf, len); }
