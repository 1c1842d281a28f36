// SPDX-License-Identifier: GPL-3.0-or-later
// The files that a board is made from: broadcast files and files of faults.
#pragma once

#include <string>
#include <string_view>

#include "simulator/board/board_settings.h"
#include "simulator/board/faults.h"
#include "simulator/broadcast/broadcast.h"

namespace sim {

/// What a broadcast file holds.
struct Board_file {
  Broadcast air{};
  Board_settings settings{};
  Faults faults{};
};

/// A broadcast file; `name` is its name in messages. @throws File_error with one line: file, place, fault
Board_file parse_board_file(std::string_view text, const std::string& name);

/// Sets the faults of a file that holds a list of them and nothing else. @throws File_error likewise
void parse_fault_file(std::string_view text, const std::string& name, Faults& faults);

}  // namespace sim
