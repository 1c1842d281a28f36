// SPDX-License-Identifier: GPL-3.0-or-later
// The sums of a board's trace.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>

#include "trace/observer.h"

namespace trace {

/// Sums over a run.
class Totals : public Observer {
 public:
  uint64_t transactions = 0;
  uint64_t bytes = 0;
  Time on_wire{};                                           ///< chip select low
  Time waited{};                                            ///< in waits of the host
  std::map<std::string, uint64_t, std::less<>> commands{};  ///< transactions by command

  void transaction(const Transaction& done) override {
    transactions += 1;
    bytes += done.sent.size();
    on_wire += done.end - done.start;
    auto count = commands.find(done.command);
    if (count == commands.end()) count = commands.emplace(done.command, 0).first;
    count->second += 1;
  }
  void wait(Time /*now*/, Time span) override { waited += span; }
};

}  // namespace trace
