// SPDX-License-Identifier: GPL-3.0-or-later
// The exchange that every command makes, and its parts.
#include "si468x/protocol.h"

#include <array>
#include <cstdio>

#include "si468x/command.h"
#include "si468x/reply_view.h"
#include "si468x/spi/spi_link.h"

uint32_t Si468x_ErrorCode = 0;

namespace {

constexpr uint32_t cts_polls = 50;
constexpr uint32_t first_pause_us = 50;
constexpr uint32_t pause_step_us = 1000;
constexpr uint16_t status_read_length = 7;

}  // namespace

int16_t Si468x_failure(int16_t result, uint32_t code) {
  Si468x_ErrorCode = code;
  return result;
}

int16_t Si468x_send_cmd(uint8_t* cmd, uint8_t* reply, uint16_t cmd_len, uint16_t reply_len) {
  if (Si468x_SPI_RW_data(cmd, cmd_len) != 0) return Si468x_failure(-1, 59);

  std::array<uint8_t, status_read_length> status{};
  const Reply_view polled(status);
  int16_t transfer = 0;
  const bool polling_ended = poll_until(cts_polls, first_pause_us, pause_step_us, [&](uint32_t poll) {
    status = command<status_read_length>(Opcode::RD_REPLY);
    if (Si468x_SPI_RW_data(status.data(), status_read_length) != 0) transfer = Si468x_failure(-1, 1059 + 100 * poll);
    return transfer != 0 || polled.clear_to_send();
  });
  if (transfer != 0) return transfer;
  if (!polling_ended) return Si468x_failure(-3, 160);
  if (const int16_t r = polled.status_result(); r != 0) return Si468x_failure(r, 260);

  if (reply_len == 0) return 0;
  if (reply == nullptr) return Si468x_failure(-6, 360);
  Si468x_clear_array(reply, reply_len);
  if (Si468x_SPI_RW_data(reply, reply_len) != 0) return Si468x_failure(-1, 460);
  if (reply_len < 5) return 0;  // too short to hold the status bytes
  if (const int16_t r = Reply_view({reply, reply_len}).status_result(); r != 0) return Si468x_failure(r, 560);
  return 0;
}

int16_t Si468x_send_cmd_simple(uint8_t* cmd, uint16_t len) {
  if (Si468x_SPI_RW_data(cmd, len) != 0) return Si468x_failure(-1, 57);
  return 0;
}

int16_t Si468x_read_reply(uint8_t* buf, uint16_t len) {
  Si468x_clear_array(buf, len);
  if (Si468x_SPI_RW_data(buf, len) != 0) return Si468x_failure(-1, 56);
  return 0;
}

int16_t Si468x_rd_reply(uint8_t* buf) {
  Si468x_clear_array(buf, status_read_length);
  if (Si468x_SPI_RW_data(buf, status_read_length) != 0) return Si468x_failure(-1, 14);
  if (const int16_t r = Reply_view({buf, status_read_length}).status_result(); r != 0) return Si468x_failure(r, 114);
  return 0;
}

void Si468x_clear_array(uint8_t* buf, uint16_t len) {
  while (len > 0) buf[--len] = 0;
}

int16_t Si468x_min(int16_t a, int16_t b) { return a < b ? a : b; }

void Si468x_hex_print(const uint8_t* buf, uint16_t len, const char* label) {
  std::printf("%s", label);
  for (uint16_t i = 0; i < len; ++i) std::printf("%02x ", buf[i]);
  std::putchar('\n');
}
