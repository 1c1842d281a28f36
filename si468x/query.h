// SPDX-License-Identifier: GPL-3.0-or-later
// The commands with one argument byte and a reply of fixed length. Internal to the driver.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "si468x/si468x.h"

/// Sends the command and reads its whole reply. @return the result of Si468x_send_cmd, with its code
template <size_t reply_length>
int16_t query(uint8_t opcode, uint8_t argument, std::array<uint8_t, reply_length>& reply) {
  std::array<uint8_t, 2> cmd{opcode, argument};
  return Si468x_send_cmd(cmd.data(), reply.data(), cmd.size(), uint16_t{reply_length});
}
