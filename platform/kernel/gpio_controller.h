// SPDX-License-Identifier: GPL-3.0-or-later
// The machine's GPIO controllers.
#pragma once

#include <linux/gpio.h>

#include <algorithm>
#include <optional>
#include <string>

namespace kernel {

/// A text of the kernel's GPIO records, which ends with a zero byte unless it fills its field.
template <size_t size>
std::string text(const char (&field)[size]) {
  return {field, std::find(field, field + size, '\0')};
}

/// Reads label and number of lines of a controller. @return 0 or an error number
int read_controller(const std::string& path, gpiochip_info& info);

/// What a user can do about the error of a GPIO controller, as the end of a message; empty: nothing special.
std::string cure(int error);

/// Finds the device file of the controller of a Raspberry Pi's pins. @return why it cannot be found
std::optional<std::string> find_pin_controller(std::string& path);

/// Why a line of this controller loses its level when it is released. Nothing: it keeps the level, or the controller is
/// none of a Raspberry Pi.
std::optional<std::string> loses_levels(const std::string& path);

}  // namespace kernel
