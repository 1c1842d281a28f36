// SPDX-License-Identifier: GPL-3.0-or-later
// Runs the whole program as a function, thousands of times in one process.
#pragma once

#include <string>

/// How one run of the program ended.
struct Ended {
  int status;          ///< exit status
  std::string hang;    ///< what the board stopped the program for; empty: nothing
  std::string output;  ///< standard output
};

/// From now on standard output is kept for `run_kelvo`, and `answers` stand on standard input for each run. Messages
/// of the caller's own go to standard error.
void take_standard_streams(const std::string& answers);

/// Runs `kelvo OPTIONS` (words separated by blanks) on the board chosen with sim::use_board.
Ended run_kelvo(const std::string& options);
