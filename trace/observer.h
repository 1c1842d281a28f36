// SPDX-License-Identifier: GPL-3.0-or-later
// The events on the bus of a receiver board, real or simulated, and the interface that receives them.
#pragma once

#include <chrono>
#include <cstdint>
#include <span>
#include <string_view>

namespace trace {

/// Time since the start of the run, and spans of it.
using Time = std::chrono::nanoseconds;

using Bytes = std::span<const uint8_t>;

/// One chip-select period. The bytes belong to the caller and are valid during the call only.
struct Transaction {
  Time start;                ///< chip select went low
  Time end;                  ///< chip select went high
  std::string_view command;  ///< as `command_name` gives it; "-" for an empty transaction
  Bytes sent;                ///< by the host
  Bytes received;            ///< by the host, as many as it sent
};

/// Receives each transaction and each change of a pin when it is complete, and each wait when it begins. `now` is the
/// board's time.
class Observer {
 public:
  Observer() = default;
  Observer(const Observer&) = default;
  Observer& operator=(const Observer&) = default;
  virtual ~Observer() = default;

  virtual void transaction(const Transaction& /*done*/) {}
  virtual void wait(Time /*now*/, Time /*span*/) {}
  virtual void pin(Time /*now*/, unsigned /*pin*/, std::string_view /*change*/) {}
};

}  // namespace trace
