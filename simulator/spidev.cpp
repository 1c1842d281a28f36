// SPDX-License-Identifier: GPL-3.0-or-later
//
// Programs that drive the board test for SPI with a look at the system's device file. The linker leads every fopen of
// the program here (--wrap=fopen).
#include <cerrno>
#include <cstdio>
#include <string_view>

#include "simulator/board.h"

extern "C" {

// The linker gives these two their meaning and so their names.
// NOLINTBEGIN(bugprone-reserved-identifier)
FILE* __real_fopen(const char* path, const char* mode);
FILE* __wrap_fopen(const char* path, const char* mode);
// NOLINTEND(bugprone-reserved-identifier)

FILE* __wrap_fopen(const char* path, const char* mode) {
  if (std::string_view(path) != "/dev/spidev0.0") return __real_fopen(path, mode);
  if (sim::current_board().air().spi_enabled) return __real_fopen("/dev/null", mode);
  errno = ENOENT;
  return nullptr;
}

}  // extern "C"
