// SPDX-License-Identifier: GPL-3.0-or-later
// The observers of one board.
#pragma once

#include <vector>

#include "simulator/chip/clock.h"
#include "trace/observer.h"

namespace sim {

/// Passes each event on to every observer, in the order in which they were added.
class Observers : public trace::Observer {
 public:
  void add(trace::Observer& observer) { all_.push_back(&observer); }
  void remove(trace::Observer& observer) { std::erase(all_, &observer); }

  void transaction(const trace::Transaction& done) override {
    for (trace::Observer* observer : all_) observer->transaction(done);
  }
  void wait(Time now, Time span) override {
    for (trace::Observer* observer : all_) observer->wait(now, span);
  }
  void pin(Time now, unsigned number, std::string_view change) override {
    for (trace::Observer* observer : all_) observer->pin(now, number, change);
  }
  void chip_event(Time now, const std::string& what) override {
    for (trace::Observer* observer : all_) observer->chip_event(now, what);
  }
  void refused(Time now, const std::string& why) override {
    for (trace::Observer* observer : all_) observer->refused(now, why);
  }
  void mistake(Time now, const std::string& what) override {
    for (trace::Observer* observer : all_) observer->mistake(now, what);
  }
  void fault(Time now, const std::string& what) override {
    for (trace::Observer* observer : all_) observer->fault(now, what);
  }
  void persistent_change(Time now) override {
    for (trace::Observer* observer : all_) observer->persistent_change(now);
  }
  void hang(Time now, const std::string& what) override {
    for (trace::Observer* observer : all_) observer->hang(now, what);
  }

 private:
  std::vector<trace::Observer*> all_;
};

}  // namespace sim
