// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/kernel/device_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <utility>

namespace kernel {

namespace {

int open_retrying(const char* path, int flags) {
  int descriptor = -1;
  do descriptor = ::open(path, flags);
  while (descriptor < 0 && errno == EINTR);
  return descriptor;
}

}  // namespace

Device_file& Device_file::operator=(Device_file&& other) noexcept {
  std::swap(descriptor_, other.descriptor_);
  return *this;
}

int Device_file::open(const std::string& path) {
  close();
  descriptor_ = open_retrying(path.c_str(), O_RDWR | O_CLOEXEC);
  return is_open() ? 0 : errno;
}

void Device_file::close() {
  if (is_open()) ::close(descriptor_);
  descriptor_ = -1;
}

}  // namespace kernel
