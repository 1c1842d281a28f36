// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "simulator/board/faults.h"
#include "simulator/broadcast/broadcast.h"
#include "simulator/json/json_reader.h"

namespace sim {

/// A list of faults. @throws File_error
std::vector<Fault> read_faults(const Json_reader& json);

/// A file that holds a list of faults and nothing else. @throws File_error with one line: file, place, fault
std::vector<Fault> read_fault_file(const std::string& path);

struct Board_file {
  Broadcast air;
  std::vector<Fault> faults{};
};

/// A broadcast file with the faults that it sets on the board. @throws File_error with one line: file, place, fault
Board_file read_board_file(const std::string& path);

}  // namespace sim
