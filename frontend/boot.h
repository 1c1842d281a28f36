// SPDX-License-Identifier: GPL-3.0-or-later
// The boot of the chip from the embedded images.
#pragma once

#include <cstdint>

/// Resets the chip, downloads the ROM patch and the DAB image (`dab` non-zero) or the FM image, boots it, and prints
/// the outcome. After a failed download the chip is held in reset and SPI0 stopped.
/// @return 1 when the chip was booted, else 0.
int16_t power_up_and_load_fw(uint8_t dab);
