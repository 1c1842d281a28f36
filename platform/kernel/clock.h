// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>

namespace kernel {

/// The monotonic clock.
std::chrono::nanoseconds now();

/// Returns after `span` and not before, whatever signals arrive.
void sleep(std::chrono::nanoseconds span);

}  // namespace kernel
