// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/host/run_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <thread>

namespace sim {

namespace {

using namespace std::chrono_literals;

// Read-only: the lock file of another user is enough, and a write to it by mistake fails. It is created only where it
// is missing, since some systems refuse O_CREAT on another user's file. Without waiting: a FIFO may have the name.
int open_lock_file(const std::string& path) {
  constexpr int flags = O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
  const int descriptor = open(path.c_str(), flags);
  return descriptor < 0 && errno == ENOENT ? open(path.c_str(), flags | O_CREAT, 0666) : descriptor;
}

// The same file on a descriptor above the three standard ones, which a program may have been started without.
int above_standard(int descriptor) {
  if (descriptor < 0 || descriptor > STDERR_FILENO) return descriptor;
  const int moved = fcntl(descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  close(descriptor);
  return moved;
}

// @return 0 or an error number
int wait_for_lock(int descriptor, bool& told, const std::function<void()>& waiting) {
  constexpr auto poll_interval = 10ms;
  constexpr auto notice_after = 1000ms;
  const auto start = std::chrono::steady_clock::now();
  while (!told) {
    if (flock(descriptor, LOCK_EX | LOCK_NB) == 0) return 0;
    if (errno != EWOULDBLOCK && errno != EINTR) return errno;
    if (std::chrono::steady_clock::now() - start >= notice_after) {
      waiting();
      told = true;
    }
    std::this_thread::sleep_for(poll_interval);
  }
  while (flock(descriptor, LOCK_EX) != 0)
    if (errno != EINTR) return errno;
  return 0;
}

// The previous holder removes the file: a lock on a file that is no longer at this path protects nothing.
bool is_at(const struct stat& opened, const std::string& path) {
  struct stat present {};
  return lstat(path.c_str(), &present) == 0 && present.st_dev == opened.st_dev && present.st_ino == opened.st_ino;
}

}  // namespace

int Run_lock::acquire(const std::string& path, const std::function<void()>& waiting) {
  bool told = false;
  for (;;) {
    const int descriptor = above_standard(open_lock_file(path));
    if (descriptor < 0) return errno;
    struct stat opened {};
    int error = fstat(descriptor, &opened) == 0 ? 0 : errno;
    if (error == 0) error = S_ISREG(opened.st_mode) ? wait_for_lock(descriptor, told, waiting) : EINVAL;
    if (error == 0 && is_at(opened, path)) {
      descriptor_ = descriptor;
      path_ = path;
      return 0;
    }
    close(descriptor);
    if (error != 0) return error;
  }
}

void Run_lock::release() {
  if (!held()) return;
  struct stat opened {};
  if (fstat(descriptor_, &opened) == 0 && opened.st_size == 0 && is_at(opened, path_)) unlink(path_.c_str());
  close(descriptor_);
  descriptor_ = -1;
}

}  // namespace sim
