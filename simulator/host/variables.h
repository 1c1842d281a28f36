// SPDX-License-Identifier: GPL-3.0-or-later
// The environment variables of the simulated board.
#pragma once

#include <string>
#include <vector>

namespace sim {

/// The known variables:
///   KELVO_SIM_BROADCAST    what is on the air (default: the built-in file)
///   KELVO_SIM_FAULTS       faults, beside those of the broadcast file (default: none)
///   KELVO_SIM_KERNEL       the simulated kernel, in programs that have one (default: see Kernel_settings)
///   KELVO_SIM_STATE        what the board keeps between runs (default: kelvo/board.json in the user's state directory)
///   KELVO_SIM_TRACE        file for the trace (default: none)
///   KELVO_SIM_TRACE_BYTES  bytes shown of each transaction, or all (default: all but the image download's)
///   KELVO_SIM_REALTIME     1: simulated time takes real time
/// @return the variable's value, empty when it is not set
std::string variable(const char* name);

/// Variables whose names begin like these but that are none of them.
std::vector<std::string> unknown_variables();

}  // namespace sim
