// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <sys/stat.h>

#include <functional>
#include <optional>
#include <string>

#include "simulator/board/board_state.h"
#include "simulator/host/run_lock.h"

namespace sim {

/// Keeps the state of a board in a file. From `load` to `release` no other run can use the same file.
class State_keeper {
 public:
  /// `path` names the file; empty or /dev/null: nothing is kept. A symbolic link is followed. `complain` receives each
  /// fault as one line; no fault ends the run.
  State_keeper(std::string path, std::function<void(const std::string&)> complain);

  /// Waits until no other run uses the file, then reads it. A file that is no state is renamed to NAME.bad.
  /// @return the state; that of a board just switched on when there is none
  Board_state load();
  /// Replaces the file as a whole: whatever happens, it holds the old state or the new one. After a fault nothing is
  /// written any more.
  void save(const Board_state& state);
  /// Lets the next run have the file. Nothing is written afterwards.
  void release();

 private:
  void stop(const std::string& fault);
  bool find_file();
  bool lock();
  Board_state read();
  void set_aside(const std::string& fault);
  void remove_drafts_of_killed_runs() const;
  int write(const std::string& text);

  std::string name_;    // as the user knows the file
  std::string target_;  // where it is, behind symbolic links
  std::function<void(const std::string&)> complain_;
  bool keeping_;
  std::optional<struct stat> replaced_{};  // owner and permissions that the next version gets
  Run_lock lock_;
};

}  // namespace sim
