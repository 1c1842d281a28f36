// SPDX-License-Identifier: GPL-3.0-or-later
// The SPI link as a whole, and the chip's reset. Included by si468x/si468x.h.
#pragma once

#include <cstdint>

/// Maps the peripherals, checks that "/dev/spidev0.0" exists (SPI enabled in the system), sets up the pins and SPI0.
/// Once per run, before anything else. @return 0; -6 with code 1 when a step fails; the earlier steps stay in force.
[[nodiscard]] int16_t Si468x_bus_init();

/// Starts SPI0 again with its settings. @return 0; -6 with code 3 when the library cannot start it.
[[nodiscard]] int16_t Si468x_bus_enable();

/// Stops SPI0 and gives its pins back; the registers stay mapped.
void Si468x_bus_disable();

/// Reset pulse: RSTB low for 200 ms, then high, then 50 ms for the chip to wake.
void Si468x_reset();
