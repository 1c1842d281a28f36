// SPDX-License-Identifier: GPL-3.0-or-later
// The chip's commands by name.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace trace {

/// Reads the status and the reply of the last command; it is not a command itself.
inline constexpr uint8_t rd_reply_opcode = 0x00;

struct Command_name {
  uint8_t opcode;
  std::string_view name;
};

/// The chip maker's names of the commands.
inline constexpr Command_name command_names[] = {
    {rd_reply_opcode, "RD_REPLY"},
    {0x01, "POWER_UP"},
    {0x04, "HOST_LOAD"},
    {0x05, "FLASH_LOAD"},
    {0x06, "LOAD_INIT"},
    {0x07, "BOOT"},
    {0x08, "GET_PART_INFO"},
    {0x09, "GET_SYS_STATE"},
    {0x12, "GET_FUNC_INFO"},
    {0x13, "SET_PROPERTY"},
    {0x14, "GET_PROPERTY"},
    {0x31, "FM_SEEK_START"},
    {0x32, "FM_RSQ_STATUS"},
    {0x34, "FM_RDS_STATUS"},
    {0x80, "GET_DIGITAL_SERVICE_LIST"},
    {0x81, "START_DIGITAL_SERVICE"},
    {0x82, "STOP_DIGITAL_SERVICE"},
    {0x84, "GET_DIGITAL_SERVICE_DATA"},
    {0xB0, "DAB_TUNE_FREQ"},
    {0xB2, "DAB_DIGRAD_STATUS"},
    {0xB3, "DAB_GET_EVENT_STATUS"},
    {0xB8, "DAB_SET_FREQ_LIST"},
    {0xB9, "DAB_GET_FREQ_LIST"},
    {0xBB, "DAB_GET_COMPONENT_INFO"},
    {0xBC, "DAB_GET_TIME"},
};

/// "unknown" for an opcode that is not in the table.
constexpr std::string_view command_name(uint8_t opcode) {
  for (const Command_name& known : command_names)
    if (known.opcode == opcode) return known.name;
  return "unknown";
}

constexpr std::optional<uint8_t> command_opcode(std::string_view name) {
  for (const Command_name& known : command_names)
    if (known.name == name) return known.opcode;
  return std::nullopt;
}

}  // namespace trace
