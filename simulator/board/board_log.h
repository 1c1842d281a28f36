// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "simulator/chip/bytes.h"
#include "simulator/chip/clock.h"

namespace sim {

/// One chip-select period. The bytes belong to the board and are gone when the call that shows them returns.
struct Transaction {
  Time start;                ///< chip select went low
  Time end;                  ///< chip select went high
  std::string_view command;  ///< the chip's name of the command; "RD_REPLY" for a read, "-" for an empty transaction
  Bytes sent;                ///< by the host
  Bytes received;            ///< by the host, as many as it sent
};

/// Sees what happens on a board. Each call is made when it has happened; `now` is the board's time.
class Board_log {
 public:
  Board_log() = default;
  Board_log(const Board_log&) = default;
  Board_log& operator=(const Board_log&) = default;
  virtual ~Board_log() = default;

  virtual void transaction(const Transaction& /*done*/) {}
  virtual void wait(Time /*now*/, Time /*span*/) {}
  virtual void pin(Time /*now*/, unsigned /*pin*/, std::string_view /*change*/) {}
  virtual void refused(Time /*now*/, const std::string& /*why*/) {}   ///< the chip refused a command
  virtual void mistake(Time /*now*/, const std::string& /*what*/) {}  ///< the host did what a board punishes
  virtual void fault(Time /*now*/, const std::string& /*what*/) {}    ///< a fault that was set has been met
  virtual void lasting_change(Time /*now*/) {}                        ///< of what stays when the host's program ends
  virtual void hang(Time /*now*/, const std::string& /*what*/) {}     ///< the host waits for what cannot come
};

}  // namespace sim
