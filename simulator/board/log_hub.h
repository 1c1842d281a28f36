// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <vector>

#include "simulator/board/board_log.h"

namespace sim {

/// Passes each event on to every log that was added, in the order in which they were added.
class Log_hub : public Board_log {
 public:
  void add(Board_log& log) { logs_.push_back(&log); }
  void remove(Board_log& log) { logs_.erase(std::remove(logs_.begin(), logs_.end(), &log), logs_.end()); }

  void transaction(const Transaction& done) override {
    for (Board_log* log : logs_) log->transaction(done);
  }
  void wait(Time now, Time span) override {
    for (Board_log* log : logs_) log->wait(now, span);
  }
  void pin(Time now, unsigned number, std::string_view change) override {
    for (Board_log* log : logs_) log->pin(now, number, change);
  }
  void refused(Time now, const std::string& why) override {
    for (Board_log* log : logs_) log->refused(now, why);
  }
  void mistake(Time now, const std::string& what) override {
    for (Board_log* log : logs_) log->mistake(now, what);
  }
  void fault(Time now, const std::string& what) override {
    for (Board_log* log : logs_) log->fault(now, what);
  }
  void lasting_change(Time now) override {
    for (Board_log* log : logs_) log->lasting_change(now);
  }
  void hang(Time now, const std::string& what) override {
    for (Board_log* log : logs_) log->hang(now, what);
  }

 private:
  std::vector<Board_log*> logs_;
};

}  // namespace sim
