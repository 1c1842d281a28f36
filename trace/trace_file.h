// SPDX-License-Identifier: GPL-3.0-or-later
// The file, device or pipe that a trace is written to.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace trace {

/// Each line is in the file when `write` returns. A trace that cannot be written any more ends with one message on
/// standard error; the program goes on, also when a pipe's reader has left.
class File {
 public:
  File() = default;
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  ~File();

  /// An earlier trace or an empty file is replaced, any other file is left as it is; devices, and pipes that somebody
  /// reads, are written to. @return why there can be no trace
  std::optional<std::string> open(const std::string& path);
  void write(const std::string& line);

 private:
  int descriptor_ = -1;
  std::string path_;
};

}  // namespace trace
