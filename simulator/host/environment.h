// SPDX-License-Identifier: GPL-3.0-or-later
// The board that a program acts on.
#pragma once

#include "simulator/board/board.h"

namespace sim {

/// The board that the bcm2835 functions act on from now on; it stays the caller's. Null, as at the start: the
/// environment's board, which is made when it is first needed, from the variables in simulator/host/variables.h. Its
/// state is written when the program ends.
void use_board(Board* board);
Board& current_board();

}  // namespace sim
