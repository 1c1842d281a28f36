// SPDX-License-Identifier: GPL-3.0-or-later
// Keeps what happened on a simulated board.
#include "simulator/board/recorder.h"

namespace sim {

void Recorder::transaction(const trace::Transaction& done) {
  totals_.transaction(done);
  if (!keeping_) return;
  sent_.emplace_back(done.sent.begin(), done.sent.end());
  received_.emplace_back(done.received.begin(), done.received.end());
}

void Recorder::wait(Time now, Time span) {
  totals_.wait(now, span);
  if (keeping_) waits_.push_back(std::chrono::duration_cast<std::chrono::microseconds>(span));
}

void Recorder::event(Time /*now*/, std::string_view kind, const std::string& what) {
  if (kind == event::refused) refusals_.push_back(what);
  if (kind == event::mistake) mistakes_.push_back(what);
}

}  // namespace sim
