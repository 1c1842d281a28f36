// SPDX-License-Identifier: GPL-3.0-or-later
// What a board keeps between runs, as JSON.
#pragma once

#include <string>
#include <string_view>

#include "simulator/board/board_state.h"

namespace sim {

/// The text of a state file, which is JSON.
std::string format_state(const Board_state& state);

/// Whether a text may be the beginning of a state file, written in part or damaged.
bool begins_as_state(std::string_view text);

/// Reads a state file; `name` is the file's name in messages. @throws File_error when it is damaged or contradicts
/// itself
Board_state parse_state(std::string_view text, const std::string& name);

}  // namespace sim
