// SPDX-License-Identifier: GPL-3.0-or-later
// The command line of kelvo-watch.
#pragma once

#include <chrono>
#include <cstdint>

struct Options {
  std::chrono::milliseconds interval{500};  ///< between samples
  uint64_t count = 0;                       ///< samples; 0: until the user ends the program
  bool beep = false;
  bool json = false;  ///< JSON lines, as wanted or because standard output is no terminal
};

/// Ends the program with status 2 when the command line is wrong.
Options read_options(int argc, char** argv);
