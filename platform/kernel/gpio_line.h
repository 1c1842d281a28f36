// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <linux/gpio.h>

#include <cstdint>
#include <string>

#include "platform/kernel/device_file.h"

namespace kernel {

/// A line of a GPIO controller, in the kernel's terms.
struct Line_place {
  std::string controller;  ///< its device file, as in "/dev/gpiochip0"
  uint32_t offset = 0;
};

/// Reads label and number of lines of a controller. @return 0 or an error number
int read_controller(const std::string& path, gpiochip_info& info);

/// The device file of the controller of a Raspberry Pi's pins, found by its label: its number differs between models
/// and kernels. @return false if there is none; this is reported
bool find_pin_controller(std::string& path);

/// An output of this program, until the object or the program ends. Faults are reported.
class Gpio_line {
 public:
  /// Requests the line with its level, so that it is never driven with another one; then changes it. A pull to the same
  /// level goes with it: where the kernel makes a released line an input, the pull keeps the level.
  /// @return false: the line is not driven
  bool drive(const Line_place& place, bool high);

 private:
  std::string request(const Line_place& place, const gpio_v2_line_config& config);

  Device_file line_;
};

}  // namespace kernel
