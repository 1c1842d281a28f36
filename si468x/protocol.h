// SPDX-License-Identifier: GPL-3.0-or-later
// One exchange with the chip, for commands that the driver does not offer. Included by si468x/si468x.h.
#pragma once

#include <cstdint>

/// Code of the driver's latest failure, 0 before the first. Success leaves it as it is; the driver never reads it.
extern uint32_t Si468x_ErrorCode;

/// Sends a command and polls for clear-to-send, immediately and then with growing pauses (50 polls, about 1.23 s);
/// checks the status; reads `reply_len` bytes into `reply` (response bytes + 5; 0 with a null `reply` reads nothing);
/// checks the status again.
/// @return 0; -3 with code 160 (no clear-to-send); -1 or -2 with code 260 or 560 (bad status, before or in the reply);
/// -6 with code 360 (`reply_len` without `reply`).
[[nodiscard]] int16_t Si468x_send_cmd(uint8_t* cmd, uint8_t* reply, uint16_t cmd_len, uint16_t reply_len);

/// Sends a command and does not wait. @return 0; -1 with code 57.
[[nodiscard]] int16_t Si468x_send_cmd_simple(uint8_t* cmd, uint16_t len);

/// Reads `len` bytes of the chip's reply (RD_REPLY) into `buf` and checks nothing. @return 0; -1 with code 56.
[[nodiscard]] int16_t Si468x_read_reply(uint8_t* buf, uint16_t len);

/// Reads 7 bytes of the reply into `buf` and checks the status. @return 0; -1 with code 14; -1 or -2 with code 114.
[[nodiscard]] int16_t Si468x_rd_reply(uint8_t* buf);

/// Stores `code` in Si468x_ErrorCode. @return `result`.
[[nodiscard]] int16_t Si468x_failure(int16_t result, uint32_t code);

/// Zeroes `len` bytes of `buf`, the last one first.
void Si468x_clear_array(uint8_t* buf, uint16_t len);

/// @return the smaller one.
int16_t Si468x_min(int16_t a, int16_t b);

/// Prints `label`, then each byte as two hex digits and a space, then a line end.
void Si468x_hex_print(const uint8_t* buf, uint16_t len, const char* label);
