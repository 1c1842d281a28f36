// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>

#include "simulator/board/board_state.h"

namespace sim {

/// Keeps a board's state in a file between runs. Only a regular file is ever written, always as a whole, and what a
/// file held that is no state is kept under another name. A lock beside the file, held for the keeper's life, lets one
/// run after the other use it.
class State_keeper {
 public:
  using Complain = std::function<void(const std::string&)>;

  /// `path` empty or /dev/null: nothing is kept. A symbolic link is followed. Waits while another run holds the lock.
  /// Every problem is passed to `complain` as one line; the run goes on without what it concerns.
  State_keeper(const std::string& path, Complain complain);
  State_keeper(const State_keeper&) = delete;
  State_keeper& operator=(const State_keeper&) = delete;
  ~State_keeper();

  /// The kept state; a board just switched on when there is none, or none that can be read.
  Board_state load();
  /// Whatever happens, the file holds the old state or the new one.
  void save(const Board_state& state);

 private:
  bool usable();
  void lock();
  bool set_aside(std::string& name);
  void give_up(const std::string& why);

  std::string path_;  // of the file itself, behind symbolic links; empty: nothing is kept
  Complain complain_;
  bool writable_ = true;
  int lock_ = -1;
};

}  // namespace sim
