// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>

namespace sim {

/// An advisory lock (flock) on an empty file of its own, held by one program at a time. It ends with the program,
/// however that ends; programs that it starts do not inherit it.
class Run_lock {
 public:
  Run_lock() = default;
  Run_lock(const Run_lock&) = delete;
  Run_lock& operator=(const Run_lock&) = delete;
  ~Run_lock() { release(); }

  /// Creates the file at `path` if needed and waits until no other program holds the lock; calls `waiting` once when
  /// that takes longer than a second.
  /// @return 0, or the error number of the system
  int acquire(const std::string& path, const std::function<void()>& waiting);
  /// Ends the lock and removes the file, unless there is something in it: then somebody else made it.
  void release();
  bool held() const { return descriptor_ >= 0; }

 private:
  int descriptor_ = -1;
  std::string path_;
};

}  // namespace sim
