// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "simulator/board/board.h"

namespace sim {

/// The board of a program that did not choose one. It is made on the first call, from the variables in
/// simulator/host/variables.h, and its state is written when the program ends.
Board& environment_board();

}  // namespace sim
