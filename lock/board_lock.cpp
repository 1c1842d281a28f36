// SPDX-License-Identifier: GPL-3.0-or-later
// One program at a time on a board: advisory locks of whole files (flock).
#include "lock/board_lock.h"

#include <sys/file.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <cerrno>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <thread>

#include "messages/messages.h"

namespace lock {

namespace {

using namespace std::chrono_literals;
using Steady = std::chrono::steady_clock;

std::optional<std::chrono::milliseconds> wait_limit;
std::optional<std::string> user;

// The name of a file in /proc/locks: its device's numbers in hexadecimal, then its own.
std::string name_in_table(int descriptor) {
  struct stat file {};
  if (fstat(descriptor, &file) != 0) return "";
  char device[32];
  std::snprintf(device, sizeof device, "%02x:%02x:", major(file.st_dev), minor(file.st_dev));
  return device + std::to_string(file.st_ino);
}

// Who holds the lock. Some file systems show other numbers in the table than to programs.
std::string holder(int descriptor) {
  const std::string wanted = name_in_table(descriptor);
  std::ifstream table("/proc/locks");
  for (std::string line; std::getline(table, line);) {
    std::istringstream fields(line);
    std::string number, kind, advisory, access, process, file;
    fields >> number >> kind >> advisory >> access >> process >> file;
    if (kind != "FLOCK" || file != wanted) continue;
    std::string name;
    std::getline(std::ifstream("/proc/" + process + "/comm"), name);
    return "process " + process + (name.empty() ? "" : " (" + name + ")");
  }
  return "another program";
}

}  // namespace

void set_wait_limit(std::optional<std::chrono::milliseconds> limit) { wait_limit = limit; }

std::optional<std::string> board_user() { return user; }

void forget_user() { user.reset(); }

int acquire(int descriptor, const std::string& name) {
  constexpr auto poll_interval = 10ms;
  constexpr auto notice_after = 1000ms;
  const auto give_up_at = Steady::now() + wait_limit.value_or(notice_after);
  int operation = LOCK_EX | LOCK_NB;
  while (flock(descriptor, operation) != 0) {
    if (errno == EINTR) continue;
    if (errno != EWOULDBLOCK) return errno;
    if (Steady::now() < give_up_at) {
      std::this_thread::sleep_for(poll_interval);
    } else if (wait_limit) {
      user = holder(descriptor);
      return EWOULDBLOCK;
    } else {
      messages::print(name + ": in use by " + holder(descriptor) + "; waiting");
      operation = LOCK_EX;
    }
  }
  return 0;
}

}  // namespace lock
