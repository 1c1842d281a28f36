// SPDX-License-Identifier: GPL-3.0-or-later
// One action on the receiver board at a time: open the link, act, close it.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace live {

/// Why an action was not carried out.
struct Failure {
  enum class Cause {
    in_use,   ///< another program held the board for longer than a second
    no_link,  ///< the link to the board cannot be opened
    chip,     ///< a command failed
  };
  Cause cause = Cause::chip;
  std::string why;  ///< in words, for the user
};

/// Nothing when the action is done.
using Outcome = std::optional<Failure>;

/// The outcome of a driver's operation from its result, and from the code in Si468x_ErrorCode; `command` is the chip's
/// name of the command.
Outcome outcome(const char* command, int16_t result);

/// Opens the link, which takes the board's lock, calls `action`, and closes the link, so that other programs get their
/// turn. Waits for the board for a second at most. The chip keeps its state: it is never powered down.
/// @return what `action` returns, or why the link cannot be opened
Outcome with_board(const std::function<Outcome()>& action);

}  // namespace live
