// SPDX-License-Identifier: GPL-3.0-or-later
// Runs the whole program as a function, thousands of times in one process.
#pragma once

#include <cstdint>
#include <string>

/// How one run of the program ended.
struct Ended {
  int status;          ///< exit status
  std::string hang;    ///< what the board stopped the program for; empty: nothing
  std::string output;  ///< standard output and standard error
  uint64_t allocations;
};

/// From now on standard output is kept for `run_kelvo`, and `answers` stand on standard input for each run. What the
/// caller has to say itself goes to standard error.
void take_standard_streams(const std::string& answers);

/// Runs `kelvo OPTIONS` (words separated by blanks) on the board chosen with sim::use_board. When `last_allocation` is
/// not 0, there is no memory after so many allocations.
Ended run_kelvo(const std::string& options, uint64_t last_allocation);
