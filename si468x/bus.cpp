// SPDX-License-Identifier: GPL-3.0-or-later
// The link with error codes, and the reset pulse.
#include "si468x/bus.h"

#include <bcm2835.h>

#include "si468x/protocol.h"
#include "si468x/spi/spi_link.h"

int16_t Si468x_bus_init() { return Si468x_SPI_setup() == 0 ? int16_t{0} : Si468x_failure(-6, 1); }
int16_t Si468x_bus_enable() { return Si468x_SPI_enable() == 0 ? int16_t{0} : Si468x_failure(-6, 3); }
void Si468x_bus_disable() { Si468x_SPI_disable(); }

void Si468x_reset() {
  Si468x_SPI_RSTB_low();
  bcm2835_delay(200);
  Si468x_SPI_RSTB_high();
  bcm2835_delay(50);
}
