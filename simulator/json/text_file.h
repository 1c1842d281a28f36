// SPDX-License-Identifier: GPL-3.0-or-later
// Reading a file of the simulated board, and the error for one that cannot be used.
#pragma once

#include <stdexcept>
#include <string>

namespace sim {

/// A file of the simulated board cannot be used. The message is one line: file, place in it, fault.
class File_error : public std::runtime_error {
 public:
  File_error(const std::string& file, const std::string& fault);
};

/// The whole text of a file of at most 16 MiB. @throws File_error
std::string read_text(const std::string& path);

}  // namespace sim
