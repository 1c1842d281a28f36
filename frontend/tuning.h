// SPDX-License-Identifier: GPL-3.0-or-later
// Tuning and playing by number.
#pragma once

#include <cstdint>

/// Tunes to entry `index` of the chip's DAB frequency list, waits up to about 2.5 s for an ensemble, and prints
/// the outcome. @return 0 when tuned, else -1.
int16_t tune_freq(uint8_t index);

/// Starts a service component of the tuned ensemble; prints a message on failure. @return 0, or -1.
int16_t play_station(uint32_t service, uint32_t component);
