// SPDX-License-Identifier: GPL-3.0-or-later
// The command line of kelvo-remote.
#pragma once

#include <chrono>
#include <string>
#include <vector>

struct Options {
  enum class Task { serve, pair, new_key };

  Task task = Task::serve;
  std::string address = "127.0.0.1";  ///< numeric; of IPv6 without brackets
  std::string port = "8468";
  std::vector<std::string> hosts{};          ///< further names under which browsers may address the program
  std::chrono::milliseconds interval{1000};  ///< between samples
  std::vector<std::string> files{};          ///< scan files, read only
};

/// Ends the program with status 2 when the command line is wrong.
Options read_options(int argc, char** argv);
