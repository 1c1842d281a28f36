// SPDX-License-Identifier: GPL-3.0-or-later
// The events of a simulated board: those of every board, and those that only a model can show.
#pragma once

#include <string>
#include <string_view>

#include "simulator/chip/clock.h"
#include "trace/observer.h"

namespace sim {

/// The kinds of events that only a simulated board can show, as its trace names them.
namespace event {
inline constexpr std::string_view chip = "chip";        ///< something that a user waits for
inline constexpr std::string_view refused = "refused";  ///< the chip refused a command
inline constexpr std::string_view mistake = "mistake";  ///< a mistake of the program that a real board punishes
inline constexpr std::string_view fault = "fault";      ///< from here on a fault applies
inline constexpr std::string_view hang = "hang";        ///< the program waits for what cannot come
}  // namespace event

/// Receives all of them; `now` is the board's time.
class Observer : public trace::Observer {
 public:
  virtual void event(Time /*now*/, std::string_view /*kind*/, const std::string& /*what*/) {}
  virtual void persistent_change(Time /*now*/) {}  ///< of state that outlives the program
};

}  // namespace sim
