// SPDX-License-Identifier: GPL-3.0-or-later
// The reader of service lists in broadcast files.
#pragma once

#include <string>
#include <vector>

#include "simulator/broadcast/broadcast.h"
#include "simulator/json/json_reader.h"

namespace sim {

/// The "lists" of an ensemble in a broadcast file. @throws File_error
std::vector<Service_list> read_service_lists(const Json_reader& json);

/// A label of at most `longest` characters up to U+00FF, each of which becomes one byte. @throws File_error
std::string read_label(const Json_reader& json, size_t longest);

}  // namespace sim
