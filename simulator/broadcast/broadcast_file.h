// SPDX-License-Identifier: GPL-3.0-or-later
// The keys of a broadcast file.
#pragma once

#include <string>
#include <string_view>

#include "simulator/broadcast/broadcast.h"
#include "simulator/json/json_reader.h"

namespace sim {

/// What a broadcast file puts on the air. Its key "faults" is accepted and not read here: faults are the board's.
/// @throws File_error with one line that names file, place and fault
Broadcast read_broadcast(const Json_reader& json);

/// The same from a text; `name` is the file's name in messages.
Broadcast parse_broadcast(std::string_view text, const std::string& name);

}  // namespace sim
