// SPDX-License-Identifier: GPL-3.0-or-later
// Output that is printed only when all of it could be made.
#pragma once

#include <cstdio>
#include <memory>
#include <ostream>
#include <string_view>

namespace survey {

/// Keeps text in a temporary file, so that memory need not hold it. Throws File_error where the file fails.
class Spool {
 public:
  Spool();

  void add(std::string_view text);

  /// Writes everything that was added to `out`.
  void print(std::ostream& out);

 private:
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> file_;
};

}  // namespace survey
