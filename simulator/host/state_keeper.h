// SPDX-License-Identifier: GPL-3.0-or-later
// The file that keeps the state of a board while no program has the board open.
#pragma once

#include <sys/stat.h>

#include <optional>
#include <string>

#include "simulator/board/board_state.h"

namespace sim {

/// Each fault is printed as one line and ends no run: from then on the board's state is not kept.
class State_keeper {
 public:
  /// `path` names the file; empty or /dev/null: nothing is kept. A symbolic link is followed.
  explicit State_keeper(std::string path);
  State_keeper(const State_keeper&) = delete;
  State_keeper& operator=(const State_keeper&) = delete;
  ~State_keeper() { close(); }

  /// Locks the file (lock/board_lock.h), then reads it: `state` is set unless nothing is kept.
  /// @return false when another program has the lock for longer than the limit
  bool open(std::optional<Board_state>& state);
  /// Replaces the file as a whole: even if the program is killed, it holds the old state or the new one.
  void save(const Board_state& state);
  /// Lets the next program have the file.
  void close();

 private:
  bool lock(bool& in_use);
  Board_state read() const;
  void write(const std::string& text);

  std::string name_;    // as the user knows the file
  std::string target_;  // where it is, behind symbolic links
  bool keeping_;
  int opened_ = -1;       // as found by `open`; locked until `close`, since other programs wait for this version
  int written_ = -1;      // the latest version, locked too
  struct stat known_ {};  // the same, as this program last saw it
};

}  // namespace sim
