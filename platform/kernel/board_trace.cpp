// SPDX-License-Identifier: GPL-3.0-or-later
// The trace of a board, KELVO_TRACE.
#include "platform/kernel/board_trace.h"

#include "messages/messages.h"
#include "platform/kernel/system.h"
#include "trace/command_names.h"
#include "trace/trace_file.h"

namespace kernel {

Board_trace::Board_trace(const std::string& path) {
  if (const std::optional<std::string> reason = file_.open(path))
    messages::refuse(path + ": the trace cannot be written: " + *reason);
  opened_ = kernel::now();
}

Board_trace::~Board_trace() { trace_.write_totals(now(), totals_); }

trace::Time Board_trace::now() const { return kernel::now() - opened_; }

void Board_trace::begin(const uint8_t* sent, uint32_t length) {
  sent_.assign(sent, sent + length);
  start_of_transaction_ = now();
}

void Board_trace::end(const uint8_t* received) {
  const trace::Transaction done{.start = start_of_transaction_,
                                .end = now(),
                                .command = sent_.empty() ? "-" : trace::command_name(sent_.front()),
                                .sent = sent_,
                                .received = {received, sent_.size()}};
  trace_.transaction(done);
  totals_.transaction(done);
}

void Board_trace::wait(trace::Time span) {
  trace_.wait(now(), span);
  totals_.wait(now(), span);
}

void Board_trace::pin(unsigned number, bool high) { trace_.pin(now(), number, high ? "high" : "low"); }

}  // namespace kernel
