// SPDX-License-Identifier: GPL-3.0-or-later
// Asks the system about the terminal.
#include "survey/output/terminal.h"

#include <langinfo.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <charconv>
#include <cstdlib>
#include <cstring>

namespace survey {

Terminal standard_output() {
  Terminal terminal;
  terminal.unicode = std::strcmp(nl_langinfo(CODESET), "UTF-8") == 0;
  const char* const no_colour = std::getenv("NO_COLOR");
  const bool is_terminal = isatty(STDOUT_FILENO) == 1;
  terminal.colour = is_terminal && (no_colour == nullptr || *no_colour == '\0');
  winsize size{};
  if (is_terminal && ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col != 0) terminal.width = size.ws_col;
  if (const char* const columns = std::getenv("COLUMNS")) {
    size_t number = 0;
    const auto [end, fault] = std::from_chars(columns, columns + std::strlen(columns), number);
    if (fault == std::errc() && *end == '\0' && number != 0) terminal.width = number;
  }
  return terminal;
}

}  // namespace survey
