// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

#include "simulator/board/board_state.h"
#include "simulator/broadcast/json_reader.h"

namespace sim {

/// The text of a state file, which is JSON.
std::string format_state(const Board_state& state);

/// Reads it back; `name` stands for the file in messages. @throws File_error when it is damaged or contradicts itself
Board_state parse_state(std::string_view text, const std::string& name);

/// The state in a file, that of a board just switched on when there is no such file. @throws File_error
Board_state load_state(const std::string& path);

/// Replaces the file as a whole: whatever happens, it holds the old state or the new one. @throws File_error
void save_state(const std::string& path, const Board_state& state);

}  // namespace sim
