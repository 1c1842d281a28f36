// SPDX-License-Identifier: GPL-3.0-or-later
// The system's calls as a link to a board needs them: files, time, reasons.
#include "platform/kernel/system.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstring>
#include <ctime>
#include <utility>

namespace kernel {

namespace {

using std::chrono::nanoseconds;
using std::chrono::seconds;

int open_retrying(const char* path, int flags) {
  int descriptor = -1;
  do descriptor = ::open(path, flags);
  while (descriptor < 0 && errno == EINTR);
  return descriptor;
}

}  // namespace

std::string reason(int error) { return std::strerror(error); }

nanoseconds now() {
  timespec time{};
  clock_gettime(CLOCK_MONOTONIC, &time);
  return seconds(time.tv_sec) + nanoseconds(time.tv_nsec);
}

void sleep(nanoseconds span) {
  const auto whole = std::chrono::duration_cast<seconds>(span);
  timespec left{};
  left.tv_sec = static_cast<time_t>(whole.count());
  left.tv_nsec = static_cast<decltype(left.tv_nsec)>((span - whole).count());
  while (clock_nanosleep(CLOCK_MONOTONIC, 0, &left, &left) == EINTR) {
  }
}

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
