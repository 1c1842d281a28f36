// SPDX-License-Identifier: GPL-3.0-or-later
// The system's calls as a link to a board needs them: files, time, reasons.
#pragma once

#include <sys/ioctl.h>

#include <cerrno>
#include <chrono>
#include <string>

namespace kernel {

/// The system's text for an error number.
std::string reason(int error);

/// The monotonic clock.
std::chrono::nanoseconds now();

/// Sleeps for at least `span`; signals do not shorten it.
void sleep(std::chrono::nanoseconds span);

/// An open device file, or none. It is closed with the object.
class Device_file {
 public:
  Device_file() = default;
  /// Takes over a descriptor that an ioctl returned.
  explicit Device_file(int descriptor) : descriptor_(descriptor) {}
  Device_file(const Device_file&) = delete;
  Device_file& operator=(const Device_file&) = delete;
  Device_file(Device_file&& other) noexcept : descriptor_(other.descriptor_) { other.descriptor_ = -1; }
  Device_file& operator=(Device_file&& other) noexcept;
  ~Device_file() { close(); }

  /// @return 0 or an error number
  int open(const std::string& path);
  void close();
  bool is_open() const { return descriptor_ >= 0; }
  int descriptor() const { return descriptor_; }

  /// One ioctl, repeated when a signal interrupts it. @return 0 or an error number
  template <typename Argument>
  int control(unsigned long request, Argument& argument) const {
    while (ioctl(descriptor_, request, &argument) < 0)
      if (errno != EINTR) return errno;
    return 0;
  }

 private:
  int descriptor_ = -1;
};

}  // namespace kernel
