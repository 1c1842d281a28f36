// SPDX-License-Identifier: GPL-3.0-or-later
// The steps of a boot, with the pauses between them and a message for the step that failed.
#include "frontend/boot.h"

#include <bcm2835.h>

#include <cstdio>

#include "firmware/firmware.h"
#include "si468x/si468x.h"

namespace {

constexpr unsigned hold_in_reset_ms = 2000;

int16_t load_patch() {
  static_cast<void>(Si468x_load_init());  // result ignored: the download after a refusal fails
  return Si468x_load_firmware_static(fw_rom00_patch016bin, sizeof fw_rom00_patch016bin);
}

int16_t load_image(bool dab) {
  static_cast<void>(Si468x_load_init());
  return dab ? Si468x_load_firmware_static(fw_dab_radio_5_0_5bin, sizeof fw_dab_radio_5_0_5bin)
             : Si468x_load_firmware_static(fw_fmhd_radio_5_0_4bin, sizeof fw_fmhd_radio_5_0_4bin);
}

void hold_in_reset() {
  Si468x_SPI_RSTB_low();
  Si468x_bus_disable();
  bcm2835_delay(hold_in_reset_ms);
}

}  // namespace

int16_t power_up_and_load_fw(uint8_t dab) {
  static_cast<void>(Si468x_bus_enable());  // result ignored: without a link the power-up fails
  Si468x_reset();
  if (Si468x_power_up() != 0) {
    std::puts("Could not power up the Si468x");
    return 0;
  }
  if (load_patch() != 0) {
    hold_in_reset();
    std::puts("Patch not transmitted successfully\n");
    return 0;
  }
  bcm2835_delay(Si468x_patch_settle_ms);
  if (load_image(dab != 0) != 0) {
    std::puts("Firmware not transmitted successfully\n");
    hold_in_reset();
    return 0;
  }
  bcm2835_delay(Si468x_image_settle_ms);
  if (Si468x_boot() != 0) {
    std::puts("Boot up failed\n");
    return 0;
  }
  std::puts("Boot up successful\n");
  return 1;
}
