// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/chip/command_table.h"

#include <charconv>

namespace sim {

namespace {

using namespace std::chrono_literals;

constexpr uint8_t waiting = static_cast<uint8_t>(Mode::waiting);
constexpr uint8_t loader = static_cast<uint8_t>(Mode::bootloader);
constexpr uint8_t dab = static_cast<uint8_t>(Mode::dab);
constexpr uint8_t fm = static_cast<uint8_t>(Mode::fm);

// A frequency list holds up to 48 entries of 4 bytes behind its 4-byte head; a load transaction up to 4092 image bytes.
constexpr Command_rule rules[] = {
    // clang-format off
    // name                     opcode modes             lasting bytes  busy
    {"POWER_UP",                 0x01, waiting,           false, 16, 16,  4ms,   power_up},
    {"HOST_LOAD",                0x04, loader,            false, 5, 4096, 90us,  host_load},
    {"FLASH_LOAD",               0x05, loader,            false, 12, 12,  500us, flash_load},
    {"LOAD_INIT",                0x06, loader,            false, 2, 2,    200us, load_init},
    {"BOOT",                     0x07, loader,            true,  2, 2,    63ms,  boot},
    {"GET_PART_INFO",            0x08, loader | dab | fm, false, 2, 2,    120us, get_part_info},
    {"GET_SYS_STATE",            0x09, loader | dab | fm, false, 2, 2,    110us, get_sys_state},
    {"GET_FUNC_INFO",            0x12, dab | fm,          false, 2, 2,    130us, get_func_info},
    {"SET_PROPERTY",             0x13, dab | fm,          true,  6, 6,    250us, set_property},
    {"GET_PROPERTY",             0x14, dab | fm,          false, 4, 4,    150us, get_property},
    {"FM_SEEK_START",            0x31, fm,                true,  6, 6,    300us, fm_seek_start},
    {"FM_RSQ_STATUS",            0x32, fm,                false, 2, 2,    140us, fm_rsq_status},
    {"FM_RDS_STATUS",            0x34, fm,                false, 2, 2,    140us, fm_rds_status},
    {"GET_DIGITAL_SERVICE_LIST", 0x80, dab,               false, 2, 2,    400us, get_digital_service_list},
    {"START_DIGITAL_SERVICE",    0x81, dab,               true,  12, 12,  2ms,   start_digital_service},
    {"STOP_DIGITAL_SERVICE",     0x82, dab,               true,  12, 12,  1ms,   stop_digital_service},
    {"GET_DIGITAL_SERVICE_DATA", 0x84, dab,               false, 2, 2,    25us,  get_digital_service_data},
    {"DAB_TUNE_FREQ",            0xB0, dab,               true,  6, 6,    300us, dab_tune_freq},
    {"DAB_DIGRAD_STATUS",        0xB2, dab,               false, 2, 2,    140us, dab_digrad_status},
    {"DAB_GET_EVENT_STATUS",     0xB3, dab,               false, 2, 2,    140us, dab_get_event_status},
    {"DAB_SET_FREQ_LIST",        0xB8, dab,               true,  8, 196,  800us, dab_set_freq_list},
    {"DAB_GET_FREQ_LIST",        0xB9, dab,               false, 2, 2,    180us, dab_get_freq_list},
    {"DAB_GET_COMPONENT_INFO",   0xBB, dab,               false, 12, 12,  220us, dab_get_component_info},
    {"DAB_GET_TIME",             0xBC, dab,               false, 2, 2,    120us, dab_get_time},
    // clang-format on
};

Answer refuse_unknown(Chip_core& /*chip*/, Bytes /*command*/) { return refuse("the chip has no such command"); }

constexpr Command_rule unknown_command = {.name = "unknown",
                                          .opcode = 0xFF,
                                          .modes = 0xFF,
                                          .lasting = false,
                                          .shortest = 1,
                                          .longest = 4096,
                                          .busy = 100us,
                                          .carry_out = refuse_unknown};

}  // namespace

const Command_rule& find_command(uint8_t opcode) {
  for (const Command_rule& rule : rules)
    if (rule.opcode == opcode) return rule;
  return unknown_command;
}

std::string_view command_name(uint8_t opcode) {
  return opcode == rd_reply_opcode ? "RD_REPLY" : find_command(opcode).name;
}

std::optional<uint8_t> command_opcode(const std::string& name) {
  if (name == "RD_REPLY") return rd_reply_opcode;
  for (const Command_rule& rule : rules)
    if (rule.name == name) return rule.opcode;
  if (!name.starts_with("0x")) return std::nullopt;
  uint8_t opcode = 0;
  const char* const end = name.data() + name.size();
  const auto [rest, error] = std::from_chars(name.data() + 2, end, opcode, 16);
  if (error != std::errc() || rest != end) return std::nullopt;
  return opcode;
}

}  // namespace sim
