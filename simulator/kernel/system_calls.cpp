// SPDX-License-Identifier: GPL-3.0-or-later
// The system calls that platform/kernel makes. The linker redirects every call of the program here (--wrap); calls for
// other files are passed on to the system. Time is the board's.
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <new>

#include "simulator/host/environment.h"
#include "simulator/kernel/simulated_kernel.h"

namespace {

// Callers pass `mode` only with O_CREAT; otherwise it is not read. Variable arguments are passed in the same places as
// fixed ones, so these definitions do without the ellipsis of the declarations.
using Open = int(const char* path, int flags, mode_t mode);
using Open_stream = FILE*(const char* path, const char* mode);

int open_device(const char* path) {
  sim::Simulated_kernel& kernel = sim::simulated_kernel();
  errno = kernel.access(path);
  return errno == 0 ? kernel.open(path) : -1;
}

FILE* open_stream(Open_stream* real, const char* path, const char* mode) {
  if (sim::Simulated_kernel::is_device(path)) {
    errno = sim::simulated_kernel().access(path);
    return errno == 0 ? real("/dev/null", mode) : nullptr;
  }
  if (std::string(path).starts_with("/sys/module/")) {
    static std::string text;  // lives as long as the stream
    text = sim::simulated_kernel().parameter(path);
    errno = ENOENT;
    return text.empty() ? nullptr : fmemopen(text.data(), text.size(), mode);
  }
  return real(path, mode);
}

int control(int descriptor, unsigned long request, void* argument) {
  sim::Simulated_kernel& kernel = sim::simulated_kernel();
  if (!kernel.has_open(descriptor)) {
    errno = EBADF;
    return -1;
  }
  if (kernel.interrupts()) {
    errno = EINTR;
    return -1;
  }
  int result = 0;
  try {  // callers do not expect a system call to throw
    result = kernel.control(descriptor, request, argument);
  } catch (const std::bad_alloc&) {
    result = -ENOMEM;
  }
  if (result >= 0) return result;
  errno = -result;
  return -1;
}

int read_clock(timespec* time) {
  const std::chrono::nanoseconds now = sim::current_board().now();
  time->tv_sec = static_cast<time_t>(now.count() / 1'000'000'000);
  time->tv_nsec = static_cast<decltype(time->tv_nsec)>(now.count() % 1'000'000'000);
  return 0;
}

// Interrupted at once: the whole span remains.
int sleep(const timespec* span, timespec* left) {
  if (sim::simulated_kernel().interrupts()) {
    *left = *span;
    return EINTR;
  }
  sim::simulated_kernel().wait(std::chrono::seconds(span->tv_sec) + std::chrono::nanoseconds(span->tv_nsec));
  return 0;
}

}  // namespace

extern "C" {

// The linker prescribes these names.
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl50-cpp)
Open __real_open, __real_open64, __wrap_open, __wrap_open64;
Open_stream __real_fopen, __real_fopen64, __wrap_fopen, __wrap_fopen64;
int __real_close(int descriptor);
int __wrap_close(int descriptor);
int __wrap_ioctl(int descriptor, unsigned long request, void* argument);
int __wrap___ioctl_time64(int descriptor, unsigned long request, void* argument);
int __wrap_clock_gettime(clockid_t clock, timespec* time);
int __wrap___clock_gettime64(clockid_t clock, timespec* time);
int __wrap_clock_nanosleep(clockid_t clock, int flags, const timespec* span, timespec* left);
int __wrap___clock_nanosleep_time64(clockid_t clock, int flags, const timespec* span, timespec* left);

int __wrap_open(const char* path, int flags, mode_t mode) {
  return sim::Simulated_kernel::is_device(path) ? open_device(path) : __real_open(path, flags, mode);
}
int __wrap_open64(const char* path, int flags, mode_t mode) {
  return sim::Simulated_kernel::is_device(path) ? open_device(path) : __real_open64(path, flags, mode);
}

FILE* __wrap_fopen(const char* path, const char* mode) { return open_stream(__real_fopen, path, mode); }
FILE* __wrap_fopen64(const char* path, const char* mode) { return open_stream(__real_fopen64, path, mode); }

int __wrap_close(int descriptor) {
  sim::close_in_kernel(descriptor);
  return __real_close(descriptor);
}

int __wrap_ioctl(int descriptor, unsigned long request, void* argument) {
  return control(descriptor, request, argument);
}
int __wrap___ioctl_time64(int descriptor, unsigned long request, void* argument) {
  return control(descriptor, request, argument);
}

int __wrap_clock_gettime(clockid_t /*clock*/, timespec* time) { return read_clock(time); }
int __wrap___clock_gettime64(clockid_t /*clock*/, timespec* time) { return read_clock(time); }

int __wrap_clock_nanosleep(clockid_t /*clock*/, int /*flags*/, const timespec* span, timespec* left) {
  return sleep(span, left);
}
int __wrap___clock_nanosleep_time64(clockid_t /*clock*/, int /*flags*/, const timespec* span, timespec* left) {
  return sleep(span, left);
}

// NOLINTEND(bugprone-reserved-identifier,cert-dcl50-cpp)

}  // extern "C"
