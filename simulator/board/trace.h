// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <ostream>
#include <string>

#include "simulator/board/board_log.h"
#include "simulator/board/recorder.h"

namespace sim {

/// Bytes in hexadecimal, separated by blanks; more than 8 equal ones in a row as "00*4092".
std::string hex(Bytes bytes);

/// Writes one line per event: the board's time in microseconds, the kind of the event, then what belongs to it. Each
/// line leaves at once.
class Trace : public Board_log {
 public:
  /// `out` belongs to the caller.
  explicit Trace(std::ostream& out) : out_(out) {}

  void transaction(const Transaction& done) override;
  void wait(Time now, Time span) override;
  void pin(Time now, unsigned number, std::string_view change) override;
  void refused(Time now, const std::string& why) override;
  void mistake(Time now, const std::string& what) override;
  void fault(Time now, const std::string& what) override;
  void hang(Time now, const std::string& what) override;

  /// The sums at the end.
  void write_totals(Time now, const Totals& totals);

 private:
  std::ostream& line(Time now, std::string_view kind);

  std::ostream& out_;
};

}  // namespace sim
