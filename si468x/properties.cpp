// SPDX-License-Identifier: GPL-3.0-or-later
// The chip's 16-bit settings. Each write is verified by reading it back.
#include <array>

#include "si468x/command.h"
#include "si468x/reply_view.h"
#include "si468x/si468x.h"

namespace {

int16_t read_property(uint16_t id, uint16_t& value) {
  auto cmd = command<4>(Opcode::GET_PROPERTY, 0x01);  // one property
  put_le16(&cmd[2], id);
  std::array<uint8_t, 7> reply{};
  if (const int16_t r = send(cmd, reply); r != 0) return r;
  value = Reply_view(reply).u16(4);
  return 0;
}

}  // namespace

int16_t Si468x_set_property(const uint16_t* prop) {
  auto cmd = command<6>(Opcode::SET_PROPERTY);
  put_le16(&cmd[2], prop[0]);
  put_le16(&cmd[4], prop[1]);
  if (const int16_t r = send(cmd); r != 0) return Si468x_failure(r, 18);
  uint16_t kept = 0;
  if (const int16_t r = read_property(prop[0], kept); r != 0) return Si468x_failure(r, 118);
  if (kept != prop[1]) return Si468x_failure(-6, 218);
  return 0;
}

int16_t Si468x_get_property(uint16_t* prop) {
  if (const int16_t r = read_property(prop[0], prop[1]); r != 0) return Si468x_failure(r, 17);
  return 0;
}
