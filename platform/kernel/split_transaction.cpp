// SPDX-License-Identifier: GPL-3.0-or-later
// One transaction in several pieces.
#include "platform/kernel/split_transaction.h"

#include <algorithm>
#include <string>

#include "platform/kernel/link.h"

namespace kernel {

void Split_transaction::begin() {
  state_ = State::empty;
  used_ = 0;
}

void Split_transaction::piece(const uint8_t* sent, uint8_t* received, uint32_t length) {
  if (length == 0) return;
  if (state_ == State::empty) {
    state_ = sent[0] == 0 ? State::reads : State::writes;
    bytes_.fill(0);
    if (state_ == State::reads) link_.transfer(bytes_.data(), longest_transaction);
  }
  if (length > longest_transaction - used_) {
    link_.report("a packet of " + std::to_string(uint64_t{used_} + length) +
                 " bytes does not fit into a transaction of " + std::to_string(longest_transaction));
    state_ = State::too_long;
  }
  if (state_ == State::writes) std::copy_n(sent, length, bytes_.data() + used_);
  if (state_ == State::reads)
    std::copy_n(bytes_.data() + used_, length, received);
  else
    std::fill_n(received, length, uint8_t{0});
  if (state_ != State::too_long) used_ += length;
}

void Split_transaction::end() {
  if (state_ == State::writes) link_.transfer(bytes_.data(), used_);
  begin();
}

}  // namespace kernel
