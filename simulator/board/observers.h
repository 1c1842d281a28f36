// SPDX-License-Identifier: GPL-3.0-or-later
// The observers of one board.
#pragma once

#include <string>
#include <vector>

#include "simulator/chip/observer.h"

namespace sim {

/// Passes each event on to every observer, in the order in which they were added.
class Observers : public Observer {
 public:
  void add(Observer& observer) { all_.push_back(&observer); }
  void remove(Observer& observer) { std::erase(all_, &observer); }

  void transaction(const trace::Transaction& done) override {
    for (Observer* observer : all_) observer->transaction(done);
  }
  void wait(Time now, Time span) override {
    for (Observer* observer : all_) observer->wait(now, span);
  }
  void pin(Time now, unsigned number, std::string_view change) override {
    for (Observer* observer : all_) observer->pin(now, number, change);
  }
  void event(Time now, std::string_view kind, const std::string& what) override {
    for (Observer* observer : all_) observer->event(now, kind, what);
  }
  void persistent_change(Time now) override {
    for (Observer* observer : all_) observer->persistent_change(now);
  }

 private:
  std::vector<Observer*> all_;
};

}  // namespace sim
