// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

#include "simulator/broadcast/broadcast.h"
#include "simulator/broadcast/json_reader.h"

namespace sim {

/// Reads a broadcast file. @throws File_error with one line that names file, place and fault
Broadcast read_broadcast(const std::string& path);

/// The same from a text; `name` stands for the file in messages.
Broadcast parse_broadcast(std::string_view text, const std::string& name);

}  // namespace sim
