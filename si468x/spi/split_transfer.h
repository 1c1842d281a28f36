// SPDX-License-Identifier: GPL-3.0-or-later
// Four operations in addition to the bcm2835 library's: one SPI0 transaction in several pieces.
#pragma once

#include <cstdint>

extern "C" {

/// Opens a transaction: clears both FIFOs of SPI0, then raises TA, which drives the selected chip select active.
void bcm2835_spi_lowerCS();

/// Closes the transaction: drops TA, which releases chip select.
void bcm2835_spi_higherCS();

/// Clocks `len` bytes of `tbuf` out and `len` bytes into `rbuf` inside an open transaction; chip select stays active.
/// The buffers belong to the caller, hold `len` bytes each and may be the same. Waits for DONE without a time-out.
void bcm2835_spi_transfernb_noCS(uint8_t* tbuf, uint8_t* rbuf, uint32_t len);

/// The same in place: each byte of `buf` is replaced by the byte received while it was sent.
void bcm2835_spi_transfern_noCS(uint8_t* buf, uint32_t len);
}
