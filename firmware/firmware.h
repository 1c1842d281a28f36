// SPDX-License-Identifier: GPL-3.0-or-later
// The chip maker's images, embedded by the build from KELVO_FIRMWARE_DIR; see docs/firmware.md.
#pragma once

#include <cstdint>

extern "C" {

extern const uint8_t fw_rom00_patch016bin[5796];      ///< patch of the chip's ROM, loaded before either image
extern const uint8_t fw_dab_radio_5_0_5bin[521448];   ///< DAB application
extern const uint8_t fw_fmhd_radio_5_0_4bin[530180];  ///< FM/HD application
}
