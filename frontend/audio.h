// SPDX-License-Identifier: GPL-3.0-or-later
// Audio output and volume.
#pragma once

#include <cstdint>

/// Buffer for the messages of set_volume.
extern char buffer[5000];

/// Routes the audio to the I2S output (`enable` non-zero), which turns the analogue output off, or to the analogue one.
/// @return 0, or -1 at the first property that cannot be written.
int16_t set_properties_output(uint8_t enable);

/// Sets the volume, 0 (low) to 63 (high), and prints a message; prints another one for any other level. @return 0
int16_t set_volume(uint32_t level);
