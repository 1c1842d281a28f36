// SPDX-License-Identifier: GPL-3.0-or-later
// The SPI link to the receiver board and the chip's reset line.
//
// SPI0, chip select 0 active low, mode 0, most significant bit first, divider 32 (7.8125 MHz at a 250 MHz core clock);
// RSTB, the chip's reset, on GPIO 23, active low. Every transfer is full duplex and in place: each byte of the buffer
// is replaced by the byte received while it was sent. Transfers always succeed.
#pragma once

#include <cstdint>

/// Maps the peripherals, checks that "/dev/spidev0.0" exists, sets up the pins and SPI0. @return 0; -1 when a step
/// fails; the earlier steps stay in force.
[[nodiscard]] int16_t Si468x_SPI_setup();

/// Starts SPI0 and applies the settings. @return 0, or -1.
[[nodiscard]] int16_t Si468x_SPI_enable();

/// Stops SPI0.
void Si468x_SPI_disable();

/// Stops SPI0 and unmaps the peripherals; only Si468x_SPI_setup may follow.
void Si468x_SPI_shutdown();

/// Holds the chip in reset.
void Si468x_SPI_RSTB_low();

/// Releases the chip from reset.
void Si468x_SPI_RSTB_high();

/// Opens a transaction for several Si468x_SPI_RW_data_noCS calls. No other transfer may run until it is closed.
void Si468x_SPI_CS_low();

/// Closes the transaction that Si468x_SPI_CS_low opened.
void Si468x_SPI_CS_high();

/// One whole transaction: chip select for exactly the `len` bytes of `buf`. @return 0.
int16_t Si468x_SPI_RW_data(uint8_t* buf, uint16_t len);

/// `len` bytes of `buf` inside the transaction that Si468x_SPI_CS_low opened. @return 0.
int16_t Si468x_SPI_RW_data_noCS(uint8_t* buf, uint16_t len);
