// SPDX-License-Identifier: GPL-3.0-or-later
// Messages to the user on standard error.
#include "messages/messages.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <new>

namespace messages {

namespace {

constexpr int exit_refused = 2;
constexpr size_t longest_line = 1000;

Keeper* keeper = nullptr;  // of the lines, in place of standard error

bool continues_character(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }  // in UTF-8

}  // namespace

std::string one_line(std::string_view text) {
  size_t length = text.size();
  if (length > longest_line) {
    length = longest_line;
    while (length > 0 && continues_character(text[length])) --length;
  }
  std::string line(text.substr(0, length));
  unsigned char previous = 0;
  for (char& c : line) {
    const auto byte = static_cast<unsigned char>(c);
    if (previous == 0xC2 && byte >= 0x80 && byte < 0xA0) (&c)[-1] = c = '?';  // terminals obey U+0080 to U+009F too
    if (byte < ' ' || byte == 0x7F) c = '?';
    previous = byte;
  }
  return length < text.size() ? line + "..." : line;
}

Keeper::Keeper() { keeper = this; }
Keeper::~Keeper() { keeper = nullptr; }

void print(std::string_view line) {
  if (keeper != nullptr) {
    if (keeper->first_.empty()) keeper->first_ = one_line(line);
    return;
  }
  std::fflush(stdout);
  std::fprintf(stderr, "%s: %s\n", program_invocation_short_name, one_line(line).c_str());
}

void print(const std::exception& error) {
  print(dynamic_cast<const std::bad_alloc*>(&error) != nullptr ? "out of memory" : error.what());
}

void refuse(std::string_view line) {
  keeper = nullptr;
  print(line);
  std::exit(exit_refused);
}

void fill_standard_streams() {
  int descriptor = -1;
  do descriptor = open("/dev/null", O_RDWR);
  while (descriptor >= 0 && descriptor <= STDERR_FILENO);
  if (descriptor >= 0) close(descriptor);
}

}  // namespace messages
