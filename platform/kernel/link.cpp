// SPDX-License-Identifier: GPL-3.0-or-later
// The program's link to the board.
#include "platform/kernel/link.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "lock/board_lock.h"
#include "messages/messages.h"
#include "platform/kernel/system.h"

namespace kernel {

bool Link::open() {
  close();
  lock::forget_user();
  messages::fill_standard_streams();
  reset_line_.emplace();
  if (!reported_) last_fault_.clear();
  out_of_reach_ = reported_ = false;
  std::optional<std::string> fault = spi_.open();
  if (!fault) {
    if (const char* const path = std::getenv("KELVO_TRACE"); path != nullptr && *path != '\0') trace_.emplace(path);
    fault = Spi_device::try_open();  // the driver opens it too, as a check of the set-up, and gives no reason
  }
  if (!fault) return true;
  if (!lock::board_user()) report(*fault);
  close();
  return false;
}

void Link::close() {
  trace_.reset();
  reset_line_.reset();
  spi_in_use_ = false;
  spi_.close();
}

bool Link::begin_spi() {
  spi_in_use_ = reset_line_ && !out_of_reach_ && succeeded(spi_.set_up());
  return spi_in_use_;
}

void Link::transfer(uint8_t* bytes, uint32_t length) {
  const bool reaches_the_bus = spi_in_use_ && !out_of_reach_;
  if (trace_ && reaches_the_bus) trace_->begin(bytes, length);
  if (!reaches_the_bus || !succeeded(spi_.transfer(bytes, length))) std::fill_n(bytes, length, uint8_t{0});
  if (trace_ && reaches_the_bus) trace_->end(bytes);
}

void Link::drive(uint8_t pin, bool high) {
  if (reset_line_ && succeeded(reset_line_->drive(pin, high)) && trace_) trace_->pin(pin, high);
}

void Link::wait(trace::Time span) {
  constexpr trace::Time longest_out_of_reach = std::chrono::microseconds(100);
  if (out_of_reach_) return sleep(std::min(span, longest_out_of_reach));
  if (trace_) trace_->wait(span);
  sleep(span);
}

void Link::report(const std::string& fault) {
  if (!std::exchange(reported_, true) && fault != last_fault_) messages::print(fault);
  last_fault_ = fault;
}

bool Link::succeeded(const std::optional<std::string>& fault) {
  if (!fault) return true;
  report(*fault);
  out_of_reach_ = true;
  return false;
}

}  // namespace kernel
