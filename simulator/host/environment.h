// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "simulator/board/board.h"

namespace sim {

/// The board of a program that was not given one. It is made on the first call, as these variables say, and is written
/// back when the program ends:
///   KELVO_SIM_BROADCAST  what is on the air (default: the built-in file)
///   KELVO_SIM_STATE      what the board keeps between runs (default: kelvo/board.json in the user's state directory)
///   KELVO_SIM_TRACE      file for the trace (default: none)
///   KELVO_SIM_REALTIME   1: simulated time takes real time
Board& environment_board();

}  // namespace sim
