// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "simulator/board/faults.h"
#include "simulator/broadcast/json_reader.h"

namespace sim {

/// The "faults" of a broadcast file. @throws File_error
std::vector<Fault> read_faults(const Json_reader& json);

}  // namespace sim
