// SPDX-License-Identifier: GPL-3.0-or-later
// Programs that drive the board test for SPI by opening the system's device file. The linker leads every fopen of
// the program here (--wrap=fopen), and every fopen64, which is what fopen becomes on a 32-bit processor with 64-bit
// file offsets.
#include <cerrno>
#include <cstdio>
#include <string_view>

#include "simulator/host/environment.h"

namespace {

using Open = FILE*(const char* path, const char* mode);

FILE* open_file(Open* real, const char* path, const char* mode) {
  if (std::string_view(path) != "/dev/spidev0.0") return real(path, mode);
  if (sim::current_board().settings().spi_enabled) return real("/dev/null", mode);
  errno = ENOENT;
  return nullptr;
}

}  // namespace

extern "C" {

// The linker gives these their meaning and so their names.
// NOLINTBEGIN(bugprone-reserved-identifier)
Open __real_fopen, __real_fopen64, __wrap_fopen, __wrap_fopen64;
// NOLINTEND(bugprone-reserved-identifier)

FILE* __wrap_fopen(const char* path, const char* mode) { return open_file(__real_fopen, path, mode); }
FILE* __wrap_fopen64(const char* path, const char* mode) { return open_file(__real_fopen64, path, mode); }

}  // extern "C"
