// SPDX-License-Identifier: GPL-3.0-or-later
// The faults of the board's devices.
#pragma once

#include <string>

namespace kernel {

/// The system's text for an error number.
std::string reason(int error);

/// A fault of the board's devices. Only the first of a run is printed: later faults come from the same cause.
void report(const std::string& fault);
/// The next fault is the first of a run.
void expect_first_fault();

}  // namespace kernel
