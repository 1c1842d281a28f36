// SPDX-License-Identifier: GPL-3.0-or-later
// Messages to the user on standard error: one line each, which begins with the program's own name.
#pragma once

#include <exception>
#include <string>
#include <string_view>

namespace messages {

/// `text` as one line that is safe to print: control characters become '?'; of a text longer than 1000 bytes only its
/// beginning remains, followed by "...".
std::string one_line(std::string_view text);

/// Prints "program: line", with `line` as `one_line` returns it, behind everything written to standard output so far.
void print(std::string_view line);

/// Prints what the exception says, or "out of memory".
void print(const std::exception& error);

/// While it exists, lines are kept instead of printed: for a program that shows in its own way what went wrong. One at
/// a time.
class Keeper {
 public:
  Keeper();
  Keeper(const Keeper&) = delete;
  Keeper& operator=(const Keeper&) = delete;
  ~Keeper();

  const std::string& first() const { return first_; }  ///< the first line, without the program's name; empty: none

 private:
  friend void print(std::string_view line);
  std::string first_;
};

/// Prints the line and ends the program with exit status 2: it was started with something that it cannot use.
[[noreturn]] void refuse(std::string_view line);

/// Opens /dev/null in place of each standard stream that the program was started without. Called before a program opens
/// a file or a device, it keeps what the program prints from going there.
void fill_standard_streams();

}  // namespace messages
