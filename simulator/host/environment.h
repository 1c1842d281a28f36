// SPDX-License-Identifier: GPL-3.0-or-later
// The board that a program acts on.
#pragma once

#include "simulator/board/board.h"

namespace sim {

/// The board that the bcm2835 functions act on from now on; it stays the caller's. Null, as at the start: the
/// environment's board, which is made when it is first needed, from the variables in simulator/host/variables.h.
void use_board(Board* board);
Board& current_board();

/// Whether simulated time takes real time where KELVO_SIM_REALTIME is not set; to be set before the board is needed.
extern bool sleeps_by_default;

/// The environment's board: waits until no other program has it open (lock/board_lock.h), then continues from the state
/// in which the last program left it. @return false when another program has it open for longer than the limit
bool open_board();
/// Keeps the state and lets other programs have the board. The end of the program does the same.
void close_board();

}  // namespace sim
