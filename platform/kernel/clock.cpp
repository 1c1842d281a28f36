// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/kernel/clock.h"

#include <cerrno>
#include <ctime>

namespace kernel {

namespace {

using std::chrono::nanoseconds;
using std::chrono::seconds;

}  // namespace

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

}  // namespace kernel
