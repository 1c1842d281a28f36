// SPDX-License-Identifier: GPL-3.0-or-later
// Building and sending a command. Internal to the driver.
#pragma once

#include <bcm2835.h>

#include <array>
#include <cstdint>
#include <span>

#include "si468x/protocol.h"

/// The first byte of a command; the chip's names.
enum class Opcode : uint8_t {
  RD_REPLY = 0x00,
  POWER_UP = 0x01,
  HOST_LOAD = 0x04,
  FLASH_LOAD = 0x05,
  LOAD_INIT = 0x06,
  BOOT = 0x07,
  GET_PART_INFO = 0x08,
  GET_SYS_STATE = 0x09,
  GET_FUNC_INFO = 0x12,
  SET_PROPERTY = 0x13,
  GET_PROPERTY = 0x14,
  FM_SEEK_START = 0x31,
  FM_RSQ_STATUS = 0x32,
  FM_RDS_STATUS = 0x34,
  GET_DIGITAL_SERVICE_LIST = 0x80,
  START_DIGITAL_SERVICE = 0x81,
  STOP_DIGITAL_SERVICE = 0x82,
  GET_DIGITAL_SERVICE_DATA = 0x84,
  DAB_TUNE_FREQ = 0xB0,
  DAB_DIGRAD_STATUS = 0xB2,
  DAB_GET_EVENT_STATUS = 0xB3,
  DAB_SET_FREQ_LIST = 0xB8,
  DAB_GET_FREQ_LIST = 0xB9,
  DAB_GET_COMPONENT_INFO = 0xBB,
  DAB_GET_TIME = 0xBC,
};

/// The bytes of a command: opcode and the first arguments; the rest of `length` is 0.
template <size_t length>
constexpr std::array<uint8_t, length> command(Opcode opcode, auto... arguments) {
  return std::array<uint8_t, length>{static_cast<uint8_t>(opcode), static_cast<uint8_t>(arguments)...};
}

/// Multi-byte arguments are little-endian.
inline void put_le16(uint8_t* at, uint16_t value) {
  at[0] = static_cast<uint8_t>(value);
  at[1] = static_cast<uint8_t>(value >> 8);
}

inline void put_le32(uint8_t* at, uint32_t value) {
  put_le16(at, static_cast<uint16_t>(value));
  put_le16(at + 2, static_cast<uint16_t>(value >> 16));
}

/// Si468x_send_cmd with a reply of the buffer's length, if there is one.
[[nodiscard]] inline int16_t send(std::span<uint8_t> cmd, std::span<uint8_t> reply = {}) {
  return Si468x_send_cmd(cmd.data(), reply.data(), static_cast<uint16_t>(cmd.size()),
                         static_cast<uint16_t>(reply.size()));
}

/// The same for a command of one argument byte.
[[nodiscard]] inline int16_t query(Opcode opcode, uint8_t argument, std::span<uint8_t> reply) {
  auto cmd = command<2>(opcode, argument);
  return send(cmd, reply);
}

/// Calls `ready(poll)` `polls` times at most, from 0, with a pause after each call that returns false. Each pause is
/// `step_us` longer than the one before. @return whether `ready` returned true.
template <typename Ready>
[[nodiscard]] bool poll_until(uint32_t polls, uint32_t pause_us, uint32_t step_us, Ready ready) {
  for (uint32_t poll = 0; poll < polls; ++poll, pause_us += step_us) {
    if (ready(poll)) return true;
    bcm2835_delayMicroseconds(pause_us);
  }
  return false;
}
