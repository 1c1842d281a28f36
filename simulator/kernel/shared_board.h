// SPDX-License-Identifier: GPL-3.0-or-later
// One simulated board for the simulated kernels of several programs, in a process of its own: kelvo-shared-board.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "simulator/chip/clock.h"

namespace sim {

/// What a kernel does with a board, as one packet on a socket (SOCK_SEQPACKET); the bytes of a transfer follow.
struct Board_request {
  enum Kind : uint32_t { transfer, reset_low, reset_high, wait };
  Kind kind = transfer;
  uint32_t reserved = 0;
  int64_t nanoseconds = 0;  ///< of a wait
};

/// A kernel's connection to the board. Ends the program when the board is gone.
class Shared_board {
 public:
  /// `socket` is the file that kelvo-shared-board was started with.
  explicit Shared_board(const std::string& socket);

  /// One whole transaction, in place.
  void transfer(std::vector<uint8_t>& bytes) const;
  void drive_reset(bool high) const { send({.kind = high ? Board_request::reset_high : Board_request::reset_low}); }
  void wait(Time span) const { send({.kind = Board_request::wait, .nanoseconds = span.count()}); }

 private:
  void send(const Board_request& request, const std::vector<uint8_t>& bytes = {}) const;

  int socket_;
};

}  // namespace sim
