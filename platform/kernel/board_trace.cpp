// SPDX-License-Identifier: GPL-3.0-or-later
// The trace of a board, KELVO_TRACE.
#include "platform/kernel/board_trace.h"

#include "messages/messages.h"
#include "platform/kernel/clock.h"
#include "trace/command_names.h"
#include "trace/trace_file.h"

namespace kernel {

Board_trace::Board_trace(const std::string& path) : path_(path) {
  if (path_.empty()) return;
  if (const std::optional<std::string> reason = file_.open(path_))
    messages::refuse(path_ + ": the trace cannot be written: " + *reason);
  start_of_run_ = kernel::now();
}

Board_trace::~Board_trace() {
  if (!path_.empty()) trace_.write_totals(now(), totals_);
}

trace::Time Board_trace::now() const { return kernel::now() - start_of_run_; }

void Board_trace::begin(const uint8_t* sent, uint32_t length) {
  if (path_.empty()) return;
  sent_.assign(sent, sent + length);
  start_of_transaction_ = now();
}

void Board_trace::end(const uint8_t* received) {
  if (path_.empty()) return;
  const trace::Transaction done{.start = start_of_transaction_,
                                .end = now(),
                                .command = sent_.empty() ? "-" : trace::command_name(sent_.front()),
                                .sent = sent_,
                                .received = {received, sent_.size()}};
  trace_.transaction(done);
  totals_.transaction(done);
}

void Board_trace::wait(trace::Time span) {
  if (path_.empty()) return;
  trace_.wait(now(), span);
  totals_.wait(now(), span);
}

void Board_trace::pin(unsigned number, bool high) {
  if (!path_.empty()) trace_.pin(now(), number, high ? "high" : "low");
}

}  // namespace kernel
