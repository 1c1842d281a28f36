// SPDX-License-Identifier: GPL-3.0-or-later
// One action on the receiver board at a time: open the link, act, close it.
#include "live/board.h"

#include <bcm2835.h>

#include "lock/board_lock.h"
#include "messages/messages.h"
#include "si468x/si468x.h"

namespace live {

namespace {

using namespace std::chrono_literals;

std::string_view meaning(int16_t result) {
  switch (result) {
    case -1:
      return "data was lost on the link";
    case -2:
      return "the chip refused the command";
    case -3:
      return "the chip does not answer";
    default:
      return "the chip's reply cannot be used";
  }
}

// Closed also when an action ends with an exception: the board's lock goes with it.
struct Open_link {
  Open_link() = default;
  Open_link(const Open_link&) = delete;
  Open_link& operator=(const Open_link&) = delete;
  ~Open_link() { Si468x_SPI_shutdown(); }
};

}  // namespace

Outcome outcome(const char* command, int16_t result) {
  if (result >= 0) return std::nullopt;
  return Failure{.cause = Failure::Cause::chip,
                 .why = std::string(command).append(": ").append(meaning(result)) + " (code " +
                        std::to_string(Si468x_ErrorCode) + ")"};
}

Outcome with_board(const std::function<Outcome()>& action) {
  const messages::Keeper said;  // the link's own words
  lock::set_wait_limit(1s);
  if (Si468x_bus_init() != 0) {
    bcm2835_close();
    if (const auto user = lock::board_user())
      return Failure{.cause = Failure::Cause::in_use, .why = "waiting: the board is in use by " + *user};
    return Failure{.cause = Failure::Cause::no_link,
                   .why = said.first().empty() ? "the link to the board cannot be opened" : said.first()};
  }
  Outcome result;
  {
    const Open_link link;
    result = action();
  }
  if (result && !said.first().empty()) result->why = said.first();
  return result;
}

}  // namespace live
