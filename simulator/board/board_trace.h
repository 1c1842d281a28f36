// SPDX-License-Identifier: GPL-3.0-or-later
// The trace of a simulated board: that of every board, with the events and totals that only a model can show.
#pragma once

#include <optional>
#include <string>

#include "simulator/board/faults.h"
#include "simulator/chip/observer.h"
#include "trace/trace.h"

namespace sim {

class Board_trace : public Observer {
 public:
  /// As trace::Trace.
  explicit Board_trace(trace::File& out, std::optional<size_t> most) : trace_(out, most) {}

  void transaction(const trace::Transaction& done) override { trace_.transaction(done); }
  void wait(Time now, Time span) override { trace_.wait(now, span); }
  void pin(Time now, unsigned number, std::string_view change) override { trace_.pin(now, number, change); }
  void event(Time now, std::string_view kind, const std::string& what) override { trace_.line(now, kind, what); }

  /// The sums at the end, and the faults that changed nothing.
  void write_totals(Time now, const trace::Totals& totals, const Faults& faults) {
    trace_.write_totals(now, totals);
    for (const std::string& fault : faults.never_triggered()) trace_.line(now, "total", "never triggered " + fault);
    for (const std::string& fault : faults.overridden()) trace_.line(now, "total", "overridden " + fault);
  }

 private:
  trace::Trace trace_;
};

}  // namespace sim
