// SPDX-License-Identifier: GPL-3.0-or-later
// The bcm2835 library's functions that a driver of the board calls, and the four split transfers, over the kernel's
// drivers. The library's own header declares the former.
#include <bcm2835.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>

#include "messages/messages.h"
#include "platform/kernel/clock.h"
#include "platform/kernel/errors.h"
#include "platform/kernel/link.h"
#include "si468x/spi/split_transfer.h"

namespace {

kernel::Link* link = nullptr;  // from bcm2835_init to bcm2835_close, or to the end of the program

void close_link() {
  delete link;
  link = nullptr;
}

void wait(std::chrono::nanoseconds span) {
  if (link != nullptr)
    link->wait(span);
  else
    kernel::sleep(span);
}

}  // namespace

int bcm2835_init(void) {
  close_link();
  messages::fill_standard_streams();
  kernel::expect_first_fault();
  link = new kernel::Link;
  static const bool closes_at_exit = std::atexit(close_link) == 0;  // so that the trace gets its totals
  if (closes_at_exit && link->open()) return 1;
  close_link();
  return 0;
}

int bcm2835_close(void) {
  close_link();
  return 1;
}

// No effect: the kernel has set up the pins of SPI0, including GPIO 7, the other chip select; a line gets its function
// together with its level.
void bcm2835_gpio_fsel(uint8_t /*pin*/, uint8_t /*mode*/) {}
void bcm2835_gpio_set_pud(uint8_t /*pin*/, uint8_t /*pud*/) {}

void bcm2835_gpio_write(uint8_t pin, uint8_t on) {
  if (link != nullptr) link->drive(pin, on != LOW);
}

int bcm2835_spi_begin(void) { return link != nullptr && link->begin_spi() ? 1 : 0; }

void bcm2835_spi_end(void) {
  if (link != nullptr) link->end_spi();
}

// No effect: bcm2835_spi_begin sets mode, bit order and polarity of the device in one call, and each transfer has its
// speed.
void bcm2835_spi_setBitOrder(uint8_t /*order*/) {}
void bcm2835_spi_setDataMode(uint8_t /*mode*/) {}
void bcm2835_spi_setClockDivider(uint16_t /*divider*/) {}
void bcm2835_spi_chipSelect(uint8_t /*cs*/) {}
void bcm2835_spi_setChipSelectPolarity(uint8_t /*cs*/, uint8_t /*active*/) {}

void bcm2835_spi_transfern(char* buf, uint32_t len) {
  if (link != nullptr)
    link->transfer(reinterpret_cast<uint8_t*>(buf), len);
  else
    std::fill_n(buf, len, '\0');
}

void bcm2835_delay(unsigned int millis) { wait(std::chrono::milliseconds(millis)); }

void bcm2835_delayMicroseconds(uint64_t micros) {
  constexpr uint64_t longest = 3'600'000'000;  // an hour; beyond centuries nanoseconds would overflow
  wait(std::chrono::microseconds(std::min(micros, longest)));
}

void bcm2835_spi_lowerCS() {
  if (link != nullptr) link->split().begin();
}

void bcm2835_spi_higherCS() {
  if (link != nullptr) link->split().end();
}

void bcm2835_spi_transfernb_noCS(uint8_t* tbuf, uint8_t* rbuf, uint32_t len) {
  if (link != nullptr)
    link->split().piece(tbuf, rbuf, len);
  else
    std::fill_n(rbuf, len, uint8_t{0});
}

void bcm2835_spi_transfern_noCS(uint8_t* buf, uint32_t len) { bcm2835_spi_transfernb_noCS(buf, buf, len); }
