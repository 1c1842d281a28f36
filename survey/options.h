// SPDX-License-Identifier: GPL-3.0-or-later
// The options of the command line.
#pragma once

#include <string>
#include <vector>

enum class Output { table, stations, html, svg, json, csv, play };

struct Options {
  Output output = Output::table;
  std::string name;  ///< of the station to play
  std::vector<std::string> files;
};

/// Ends the program for --help, --version and, with status 2, for an invalid command line.
Options read_options(int argc, char** argv);
