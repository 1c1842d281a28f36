// SPDX-License-Identifier: GPL-3.0-or-later
// One program at a time on a board, real or simulated. bcm2835_init takes the lock; bcm2835_close and the end of the
// program, however it ends, release it. A program that lives long opens, acts and closes.
#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace lock {

/// How long bcm2835_init waits for a board that another program uses. It then fails and prints nothing. No limit, the
/// default: it waits until the board is free, and prints a line on standard error after a second.
void set_wait_limit(std::optional<std::chrono::milliseconds> limit);

/// After bcm2835_init failed because the board was in use for longer than the limit: by whom, as in
/// "process 4711 (kelvo)", or "another program" where the system does not show it. Nothing: it did not fail for this
/// reason.
std::optional<std::string> board_user();

/// For the implementations of bcm2835_init, which begin with it: from now on `board_user` returns nothing.
void forget_user();

/// For the same: waits for the lock (flock) on an open file of the board, which ends when
/// the file is closed. Messages call the file `name`.
/// @return 0; EWOULDBLOCK if the file was in use for longer than the limit; or another error number
int acquire(int descriptor, const std::string& name);

}  // namespace lock
