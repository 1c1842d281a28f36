// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>

#include "platform/kernel/gpio_line.h"

namespace kernel {

/// The values of the environment variables. An empty variable counts as not set.
struct Settings {
  std::optional<Line_place> reset;  ///< KELVO_RESET, as in "gpiochip1:17"; nothing: the pin that the driver names
  std::string trace;                ///< KELVO_TRACE, the file for the trace; empty: none
};

/// Ends the program when KELVO_RESET is malformed or names no line of this machine. The line itself is not touched.
Settings read_settings();

}  // namespace kernel
