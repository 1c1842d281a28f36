// SPDX-License-Identifier: GPL-3.0-or-later
// The bcm2835 library's functions that a driver of the board calls, and the four split transfers, over the kernel's
// drivers. The library's own header declares the former.
#include <bcm2835.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>

#include "platform/kernel/link.h"
#include "si468x/spi/split_transfer.h"

namespace {

// Never destroyed: a program may end in the middle of a call.
kernel::Link& link = *new kernel::Link;

}  // namespace

int bcm2835_init(void) {
  static const bool closes_at_exit = std::atexit([] { link.close(); }) == 0;  // so that the trace gets its totals
  return closes_at_exit && link.open() ? 1 : 0;
}

int bcm2835_close(void) {
  link.close();
  return 1;
}

// No effect: the kernel has set up the pins of SPI0, including GPIO 7, the other chip select; a line gets its function
// together with its level.
void bcm2835_gpio_fsel(uint8_t /*pin*/, uint8_t /*mode*/) {}
void bcm2835_gpio_set_pud(uint8_t /*pin*/, uint8_t /*pud*/) {}

void bcm2835_gpio_write(uint8_t pin, uint8_t on) { link.drive(pin, on != LOW); }

int bcm2835_spi_begin(void) { return link.begin_spi() ? 1 : 0; }

void bcm2835_spi_end(void) { link.end_spi(); }

// No effect: bcm2835_spi_begin sets mode, bit order and polarity of the device in one call, and each transfer has its
// speed.
void bcm2835_spi_setBitOrder(uint8_t /*order*/) {}
void bcm2835_spi_setDataMode(uint8_t /*mode*/) {}
void bcm2835_spi_setClockDivider(uint16_t /*divider*/) {}
void bcm2835_spi_chipSelect(uint8_t /*cs*/) {}
void bcm2835_spi_setChipSelectPolarity(uint8_t /*cs*/, uint8_t /*active*/) {}

void bcm2835_spi_transfern(char* buf, uint32_t len) { link.transfer(reinterpret_cast<uint8_t*>(buf), len); }

void bcm2835_delay(unsigned int millis) { link.wait(std::chrono::milliseconds(millis)); }

void bcm2835_delayMicroseconds(uint64_t micros) {
  constexpr uint64_t longest = 3'600'000'000;  // an hour; beyond centuries nanoseconds would overflow
  link.wait(std::chrono::microseconds(std::min(micros, longest)));
}

void bcm2835_spi_lowerCS() { link.split().begin(); }

void bcm2835_spi_higherCS() { link.split().end(); }

void bcm2835_spi_transfernb_noCS(uint8_t* tbuf, uint8_t* rbuf, uint32_t len) { link.split().piece(tbuf, rbuf, len); }

void bcm2835_spi_transfern_noCS(uint8_t* buf, uint32_t len) { bcm2835_spi_transfernb_noCS(buf, buf, len); }
