// SPDX-License-Identifier: GPL-3.0-or-later
// The device files of a kernel over the simulated board.
#pragma once

#include <map>
#include <optional>
#include <string>

#include "simulator/kernel/gpio_controller.h"
#include "simulator/kernel/kernel_settings.h"
#include "simulator/kernel/shared_board.h"
#include "simulator/kernel/spidev_driver.h"

namespace sim {

/// The device files of a kernel on a Raspberry Pi with the current board, and the files that a program has open.
class Simulated_kernel {
 public:
  explicit Simulated_kernel(const Kernel_settings& settings);
  Simulated_kernel(const Simulated_kernel&) = delete;
  Simulated_kernel& operator=(const Simulated_kernel&) = delete;
  ~Simulated_kernel() = default;

  /// @return whether the path belongs to this kernel, even if the file does not exist
  static bool is_device(const std::string& path);
  /// 0 if the program may open the device file; otherwise an error number.
  int access(const std::string& path) const;
  /// @return a descriptor of the device file, or -1
  int open(const std::string& path);
  bool has_open(int descriptor) const { return files_.contains(descriptor); }
  /// @return the kernel's result; a negative one is an error number
  int control(int descriptor, unsigned long request, void* argument);
  void close(int descriptor);
  void close_all();

  /// The text of a module's parameter; empty if there is no such file.
  std::string parameter(const std::string& path) const;
  void wait(Time span) const;
  /// Whether a signal interrupts this call.
  bool interrupts() { return settings_.interrupted != 0 && (++calls_ % 2) != 0; }

 private:
  struct Open_file {
    Gpio_controller* controller = nullptr;  // null: the SPI device
    bool is_line = false;
    uint32_t line = 0;
  };
  int control_controller(Gpio_controller& controller, unsigned long request, void* argument);

  Kernel_settings settings_;
  std::optional<Shared_board> shared_;
  Spidev_driver spidev_;
  std::map<std::string, Gpio_controller> controllers_;  // by the path of the device file
  std::map<int, Open_file> files_{};                    // by descriptor
  unsigned calls_ = 0;
};

/// The program's kernel, configured by its environment and created on the first call. At the end of the program it
/// closes all open files.
Simulated_kernel& simulated_kernel();
/// Closes one of its files; does nothing for other descriptors.
void close_in_kernel(int descriptor);

}  // namespace sim
