// SPDX-License-Identifier: GPL-3.0-or-later
// The chip's 16-bit settings. Each write is verified by reading it back.
#include <array>

#include "si468x/command_bytes.h"
#include "si468x/reply_view.h"
#include "si468x/si468x.h"

namespace {

int16_t read_property(uint16_t id, uint16_t& value) {
  std::array<uint8_t, 4> cmd{0x14, 0x01};  // GET_PROPERTY, one property
  put_le16(&cmd[2], id);
  std::array<uint8_t, 7> reply{};
  if (const int16_t r = Si468x_send_cmd(cmd.data(), reply.data(), cmd.size(), reply.size()); r != 0) return r;
  value = Reply_view(reply).u16(4);
  return 0;
}

}  // namespace

int16_t Si468x_set_property(const uint16_t* prop) {
  std::array<uint8_t, 6> cmd{0x13, 0x00};  // SET_PROPERTY
  put_le16(&cmd[2], prop[0]);
  put_le16(&cmd[4], prop[1]);
  if (const int16_t r = Si468x_send_cmd(cmd.data(), nullptr, cmd.size(), 0); r != 0) return Si468x_failure(r, 18);
  uint16_t kept = 0;
  if (const int16_t r = read_property(prop[0], kept); r != 0) return Si468x_failure(r, 118);
  return kept == prop[1] ? int16_t{0} : Si468x_failure(-6, 218);
}

int16_t Si468x_get_property(uint16_t* prop) {
  if (const int16_t r = read_property(prop[0], prop[1]); r != 0) return Si468x_failure(r, 17);
  return 0;
}
