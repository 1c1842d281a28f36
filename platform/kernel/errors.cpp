// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/kernel/errors.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace kernel {

namespace {

constexpr int exit_bad_setting = 2;

bool reported = false;

// Control bytes become '?': names of files, and of the programs that use a line, may have any.
void print(std::string line) {
  for (char& c : line)
    if (static_cast<unsigned char>(c) < ' ' || c == 0x7F) c = '?';
  std::fflush(stdout);
  std::fprintf(stderr, "%s: %s\n", program_invocation_short_name, line.c_str());
}

}  // namespace

std::string reason(int error) { return std::strerror(error); }

void report(const std::string& fault) {
  if (!reported) print(fault);
  reported = true;
}

void expect_first_fault() { reported = false; }

void warn(const std::string& what) { print("warning: " + what); }

void refuse(const std::string& fault) {
  print(fault);
  std::exit(exit_bad_setting);
}

}  // namespace kernel
