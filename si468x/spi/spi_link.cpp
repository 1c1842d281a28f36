// SPDX-License-Identifier: GPL-3.0-or-later
// Set-up and transfers of SPI0, and the board's pins, through the bcm2835 library.
#include "si468x/spi/spi_link.h"

#include <bcm2835.h>

#include <cstdio>

#include "si468x/spi/split_transfer.h"

namespace {

constexpr uint8_t rstb_pin = 23;
constexpr uint8_t chip_select_1_pin = 7;  // not wired to the chip; pulled up so that it never floats
constexpr uint16_t clock_divider = 32;
constexpr const char* spi_device = "/dev/spidev0.0";

// The file exists where SPI is enabled in the system; all traffic goes through the mapped registers.
bool spi_enabled_in_system() {
  std::FILE* const device = std::fopen(spi_device, "r");
  if (device == nullptr) return false;
  static_cast<void>(std::fclose(device));  // result ignored: the file was only read
  return true;
}

}  // namespace

int16_t Si468x_SPI_setup() {
  if (bcm2835_init() == 0) return -1;
  if (!spi_enabled_in_system()) return -1;
  bcm2835_gpio_fsel(rstb_pin, BCM2835_GPIO_FSEL_OUTP);
  bcm2835_gpio_fsel(chip_select_1_pin, BCM2835_GPIO_FSEL_INPT);
  bcm2835_gpio_set_pud(chip_select_1_pin, BCM2835_GPIO_PUD_UP);
  return Si468x_SPI_enable();
}

int16_t Si468x_SPI_enable() {
  if (bcm2835_spi_begin() == 0) return -1;
  bcm2835_spi_setBitOrder(BCM2835_SPI_BIT_ORDER_MSBFIRST);
  bcm2835_spi_setDataMode(BCM2835_SPI_MODE0);
  bcm2835_spi_setClockDivider(clock_divider);
  bcm2835_spi_chipSelect(BCM2835_SPI_CS0);
  bcm2835_spi_setChipSelectPolarity(BCM2835_SPI_CS0, LOW);
  return 0;
}

void Si468x_SPI_disable() { bcm2835_spi_end(); }

void Si468x_SPI_shutdown() {
  bcm2835_spi_end();
  bcm2835_close();
}

void Si468x_SPI_RSTB_low() { bcm2835_gpio_write(rstb_pin, LOW); }
void Si468x_SPI_RSTB_high() { bcm2835_gpio_write(rstb_pin, HIGH); }
void Si468x_SPI_CS_low() { bcm2835_spi_lowerCS(); }
void Si468x_SPI_CS_high() { bcm2835_spi_higherCS(); }

int16_t Si468x_SPI_RW_data(uint8_t* buf, uint16_t len) {
  bcm2835_spi_transfern(reinterpret_cast<char*>(buf), len);
  return 0;
}

int16_t Si468x_SPI_RW_data_noCS(uint8_t* buf, uint16_t len) {
  bcm2835_spi_transfern_noCS(buf, len);
  return 0;
}
