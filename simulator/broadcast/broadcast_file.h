// SPDX-License-Identifier: GPL-3.0-or-later
// The keys of a broadcast file.
#pragma once

#include "simulator/broadcast/broadcast.h"
#include "simulator/json/json_members.h"

namespace sim {

/// What a broadcast file puts on the air. The reader throws File_error for what cannot be received.
void members(Json_members& json, Broadcast& air);

}  // namespace sim
