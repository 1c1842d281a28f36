// SPDX-License-Identifier: GPL-3.0-or-later
// Messages to the user on standard error: one line each, which begins with the program's name and follows all of the
// program's own output.
#pragma once

#include <string>

namespace kernel {

/// The system's text for an error number.
std::string reason(int error);

/// A fault of the board's devices. Only the first of a run is printed: later faults come from the same cause.
void report(const std::string& fault);
/// The next fault is the first of a run.
void expect_first_fault();

void warn(const std::string& what);

/// The user's settings cannot be used: ends the program with status 2.
[[noreturn]] void refuse(const std::string& fault);

}  // namespace kernel
