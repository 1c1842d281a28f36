// SPDX-License-Identifier: GPL-3.0-or-later
// Keeps what happened on a simulated board.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "simulator/chip/clock.h"
#include "simulator/chip/observer.h"
#include "trace/totals.h"

namespace sim {

using Frames = std::vector<std::vector<uint8_t>>;
using Waits = std::vector<std::chrono::microseconds>;

/// Keeps what a test asks for afterwards.
class Recorder : public Observer {
 public:
  const Frames& sent() const { return sent_; }
  const Frames& received() const { return received_; }
  const Waits& waits() const { return waits_; }
  const std::vector<std::string>& mistakes() const { return mistakes_; }
  const std::vector<std::string>& refusals() const { return refusals_; }
  const trace::Totals& totals() const { return totals_; }

  void clear() {
    const bool keeping = keeping_;
    *this = {};
    keeping_ = keeping;
  }
  /// Without it no bytes and no waits are kept, only the rest.
  void set_keeping(bool on) { keeping_ = on; }

  void transaction(const trace::Transaction& done) override;
  void wait(Time now, Time span) override;
  void event(Time now, std::string_view kind, const std::string& what) override;

 private:
  Frames sent_;
  Frames received_;
  Waits waits_;
  std::vector<std::string> mistakes_;
  std::vector<std::string> refusals_;
  trace::Totals totals_;
  bool keeping_ = true;
};

}  // namespace sim
