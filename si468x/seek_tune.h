// SPDX-License-Identifier: GPL-3.0-or-later
// The wait that DAB tuning and FM seeking share. For the driver's own files.
#pragma once

#include <cstdint>

/// Looks for seek/tune complete (STCINT) at once and then every 100 ms, 100 times at most. A look that shows an error
/// leaves its code (14 or 114) and does not end the wait.
/// @return 0 when complete; out of time, the outcome of the last look, 0, -1 or -2, with `timeout_code`.
int16_t wait_for_seek_tune_complete(uint32_t timeout_code);
