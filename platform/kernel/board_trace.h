// SPDX-License-Identifier: GPL-3.0-or-later
// The trace of a board, KELVO_TRACE.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "trace/totals.h"
#include "trace/trace.h"

namespace kernel {

/// The program's actions on the board, with the monotonic time since the link was opened.
class Board_trace {
 public:
  /// Replaces an earlier trace at `path`. Ends the program if the file cannot be written.
  explicit Board_trace(const std::string& path);
  Board_trace(const Board_trace&) = delete;
  Board_trace& operator=(const Board_trace&) = delete;
  ~Board_trace();  ///< writes the totals

  /// Around each transaction: before it, then with what was received.
  void begin(const uint8_t* sent, uint32_t length);
  void end(const uint8_t* received);
  void wait(trace::Time span);
  void pin(unsigned number, bool high);

 private:
  trace::Time now() const;

  trace::File file_;
  trace::Trace trace_{file_};
  trace::Totals totals_;
  trace::Time opened_{};
  trace::Time start_of_transaction_{};
  std::vector<uint8_t> sent_;
};

}  // namespace kernel
