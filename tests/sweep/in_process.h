// SPDX-License-Identifier: GPL-3.0-or-later
// Runs the whole program as a function, thousands of times in one process.
#pragma once

#include <cstdint>
#include <string>

/// How one run of the program ended.
struct Ended {
  int status;          ///< exit status
  std::string hang;    ///< why the board stopped the program; empty if it did not
  std::string output;  ///< standard output and standard error
  uint64_t allocations;
};

/// From now on `run_kelvo` collects standard output, and each run reads `answers` from standard input. Callers print to
/// standard error.
void take_standard_streams(const std::string& answers);

/// Runs `kelvo OPTIONS` (words separated by blanks) on the board chosen with sim::use_board. If `last_allocation` is
/// not 0, every later allocation fails.
Ended run_kelvo(const std::string& options, uint64_t last_allocation);
