// SPDX-License-Identifier: GPL-3.0-or-later
// The wait for the end of a DAB tune or an FM seek. Internal to the driver.
#pragma once

#include <cstdint>

/// Polls for seek/tune complete (STCINT): immediately, then every 100 ms, 100 times at most. A poll that fails records
/// code 14 or 114 but does not end the wait.
/// @return 0 when complete; out of time, the last poll's result, 0, -1 or -2, with `timeout_code`.
[[nodiscard]] int16_t wait_for_seek_tune_complete(uint32_t timeout_code);
