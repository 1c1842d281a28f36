// SPDX-License-Identifier: GPL-3.0-or-later
// The bcm2835 library's functions that a driver of the board calls, acting on the simulated board. They are declared in
// the library's own header.
#include <bcm2835.h>

#include <algorithm>
#include <chrono>

#include "simulator/host/environment.h"
#include "simulator/host/spi_registers.h"

namespace {

// Only the addresses count: the registers themselves are the board's.
uint32_t spi0_addresses[8];

uint32_t offset_of(const volatile uint32_t* address) {
  return static_cast<uint32_t>((address - spi0_addresses) * static_cast<ptrdiff_t>(sizeof(uint32_t)));
}

}  // namespace

volatile uint32_t* bcm2835_spi0 = spi0_addresses;

int bcm2835_init(void) { return sim::open_board() && sim::current_board().open() ? 1 : 0; }

int bcm2835_close(void) {
  sim::current_board().close();
  sim::close_board();
  return 1;
}

uint32_t bcm2835_peri_read(volatile uint32_t* paddr) { return sim::current_board().read_register(offset_of(paddr)); }

uint32_t bcm2835_peri_read_nb(volatile uint32_t* paddr) { return bcm2835_peri_read(paddr); }

void bcm2835_peri_write(volatile uint32_t* paddr, uint32_t value) {
  sim::current_board().write_register(offset_of(paddr), value);
}

void bcm2835_peri_write_nb(volatile uint32_t* paddr, uint32_t value) { bcm2835_peri_write(paddr, value); }

void bcm2835_gpio_fsel(uint8_t pin, uint8_t mode) { sim::current_board().set_pin_function(pin, mode); }

void bcm2835_gpio_set_pud(uint8_t pin, uint8_t pud) { sim::current_board().set_pin_pull(pin, pud); }

void bcm2835_gpio_write(uint8_t pin, uint8_t on) { sim::current_board().write_pin(pin, on != LOW); }

int bcm2835_spi_begin(void) { return sim::current_board().spi_begin() ? 1 : 0; }

void bcm2835_spi_end(void) { sim::current_board().spi_end(); }

void bcm2835_spi_setBitOrder(uint8_t order) {
  sim::current_board().set_bit_order(order == BCM2835_SPI_BIT_ORDER_MSBFIRST);
}

void bcm2835_spi_setDataMode(uint8_t mode) {
  sim::set_cs_bits(static_cast<uint32_t>(mode) << 2, BCM2835_SPI0_CS_CPOL | BCM2835_SPI0_CS_CPHA);
}

void bcm2835_spi_setClockDivider(uint16_t divider) { sim::current_board().write_register(BCM2835_SPI0_CLK, divider); }

void bcm2835_spi_chipSelect(uint8_t cs) { sim::set_cs_bits(cs, BCM2835_SPI0_CS_CS); }

void bcm2835_spi_setChipSelectPolarity(uint8_t cs, uint8_t active) {
  const unsigned shift = 21U + (cs & 3U);  // CSPOL0 to CSPOL2
  sim::set_cs_bits(static_cast<uint32_t>(active) << shift, 1U << shift);
}

void bcm2835_spi_transfern(char* buf, uint32_t len) {
  auto* const bytes = reinterpret_cast<uint8_t*>(buf);
  sim::open_transaction();
  sim::move_bytes(bytes, bytes, len);
  while (!sim::transfer_done()) {
  }
  sim::close_transaction();
}

void bcm2835_delay(unsigned int millis) { sim::current_board().wait(std::chrono::milliseconds(millis)); }

void bcm2835_delayMicroseconds(uint64_t micros) {
  constexpr uint64_t longest = 3'600'000'000;  // an hour; the clock counts nanoseconds and must not overflow
  sim::current_board().wait(std::chrono::microseconds(std::min(micros, longest)));
}
