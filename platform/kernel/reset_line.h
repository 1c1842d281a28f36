// SPDX-License-Identifier: GPL-3.0-or-later
// The line that resets the chip.
#pragma once

#include <linux/gpio.h>

#include <cstdint>
#include <optional>
#include <string>

#include "platform/kernel/system.h"

namespace kernel {

/// A line of a GPIO controller, in the kernel's terms.
struct Line_place {
  std::string controller;  ///< its device file, as in "/dev/gpiochip0"
  uint32_t offset = 0;
};

/// It becomes an output of this program when it is first driven: an earlier request would need a level, and the wrong
/// one resets a playing chip. The end of the object or of the program releases it.
class Reset_line {
 public:
  /// Reads KELVO_RESET, as in "gpiochip1:17". Ends the program if the variable is malformed or names no line of this
  /// machine. The line itself is not touched.
  Reset_line();

  /// Drives GPIO `pin` of a Raspberry Pi, or in its place the line of KELVO_RESET. The line is requested together with
  /// its level, so that it never has the other one. A pull to the same level goes with it: where the kernel makes a
  /// released line an input, the pull keeps the level.
  /// @return why the line is not driven
  std::optional<std::string> drive(uint8_t pin, bool high);

 private:
  std::optional<std::string> request(const gpio_v2_line_config& config);

  std::optional<Line_place> place_;
  Device_file line_;
};

}  // namespace kernel
