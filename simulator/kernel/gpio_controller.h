// SPDX-License-Identifier: GPL-3.0-or-later
// The GPIO character device of the simulated kernel.
#pragma once

#include <linux/gpio.h>

#include <cstdint>
#include <map>
#include <string>

#include "simulator/kernel/shared_board.h"

namespace sim {

/// A GPIO controller of the kernel, and the lines that programs have requested from it.
class Gpio_controller {
 public:
  /// How its lines are wired.
  struct Wiring {
    bool to_board = false;                 ///< to the pins with the same numbers; otherwise not connected
    uint32_t reset_line = 23;              ///< except this one: to the pin of the chip's reset
    const Shared_board* shared = nullptr;  ///< a board in place of the program's own
    bool keeps_levels = true;              ///< a released line keeps driving its level; otherwise it becomes an input
  };

  Gpio_controller(std::string label, uint32_t lines, Wiring wiring)
      : label_(std::move(label)), lines_(lines), wiring_(wiring) {}

  const std::string& label() const { return label_; }
  /// Marks a line as used by another program.
  void occupy(uint32_t line, const std::string& consumer) { consumers_[line] = consumer; }

  // The ioctls, of one line each. @return 0, or a negative error number
  void read_info(gpiochip_info& info) const;
  int read_line_info(gpio_v2_line_info& info) const;
  int request_line(const gpio_v2_line_request& request);
  int configure_line(uint32_t line, const gpio_v2_line_config& config) const;
  void release_line(uint32_t line);

 private:
  void apply(uint32_t line, const gpio_v2_line_config& config) const;
  unsigned pin_of(uint32_t line) const;

  std::string label_;
  uint32_t lines_;
  Wiring wiring_;
  std::map<uint32_t, std::string> consumers_{};  // of the lines in use
};

}  // namespace sim
