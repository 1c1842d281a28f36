// SPDX-License-Identifier: GPL-3.0-or-later
// The table of commands.
#include "simulator/chip/command_table.h"

#include "trace/command_names.h"

namespace sim {

namespace {

using namespace std::chrono_literals;

constexpr uint8_t waiting = static_cast<uint8_t>(Mode::waiting);
constexpr uint8_t loader = static_cast<uint8_t>(Mode::bootloader);
constexpr uint8_t dab = static_cast<uint8_t>(Mode::dab);
constexpr uint8_t fm = static_cast<uint8_t>(Mode::fm);

// The opcode of a command; a name that is not in the table of names does not compile.
consteval uint8_t op(std::string_view name) { return trace::command_opcode(name).value(); }

// A frequency list holds up to 48 entries of 4 bytes behind its 4-byte head; a load transaction up to 4092 image bytes.
constexpr Command_rule rules[] = {
    // clang-format off
    // name                         modes             persistent bytes busy
    {op("POWER_UP"),                 waiting,           false, 16, 16,  4ms,   power_up},
    {op("HOST_LOAD"),                loader,            false, 5, 4096, 90us,  host_load},
    {op("FLASH_LOAD"),               loader,            false, 12, 12,  500us, flash_load},
    {op("LOAD_INIT"),                loader,            false, 2, 2,    200us, load_init},
    {op("BOOT"),                     loader,            true,  2, 2,    63ms,  boot},
    {op("GET_PART_INFO"),            loader | dab | fm, false, 2, 2,    120us, get_part_info},
    {op("GET_SYS_STATE"),            loader | dab | fm, false, 2, 2,    110us, get_sys_state},
    {op("GET_FUNC_INFO"),            dab | fm,          false, 2, 2,    130us, get_func_info},
    {op("SET_PROPERTY"),             dab | fm,          true,  6, 6,    250us, set_property},
    {op("GET_PROPERTY"),             dab | fm,          false, 4, 4,    150us, get_property},
    {op("FM_SEEK_START"),            fm,                true,  6, 6,    300us, fm_seek_start},
    {op("FM_RSQ_STATUS"),            fm,                false, 2, 2,    140us, fm_rsq_status},
    {op("FM_RDS_STATUS"),            fm,                false, 2, 2,    140us, fm_rds_status},
    {op("GET_DIGITAL_SERVICE_LIST"), dab,               false, 2, 2,    400us, get_digital_service_list},
    {op("START_DIGITAL_SERVICE"),    dab,               true,  12, 12,  2ms,   start_digital_service},
    {op("STOP_DIGITAL_SERVICE"),     dab,               true,  12, 12,  1ms,   stop_digital_service},
    {op("GET_DIGITAL_SERVICE_DATA"), dab,               false, 2, 2,    25us,  get_digital_service_data},
    {op("DAB_TUNE_FREQ"),            dab,               true,  6, 6,    300us, dab_tune_freq},
    {op("DAB_DIGRAD_STATUS"),        dab,               false, 2, 2,    140us, dab_digrad_status},
    {op("DAB_GET_EVENT_STATUS"),     dab,               false, 2, 2,    140us, dab_get_event_status},
    {op("DAB_SET_FREQ_LIST"),        dab,               true,  8, 196,  800us, dab_set_freq_list},
    {op("DAB_GET_FREQ_LIST"),        dab,               false, 2, 2,    180us, dab_get_freq_list},
    {op("DAB_GET_COMPONENT_INFO"),   dab,               false, 12, 12,  220us, dab_get_component_info},
    {op("DAB_GET_TIME"),             dab,               false, 2, 2,    120us, dab_get_time},
    // clang-format on
};

Answer refuse_unknown(Chip_core& /*chip*/, Bytes /*command*/) { return refuse("the chip has no such command"); }

constexpr Command_rule unknown_command = {0xFF, 0xFF, false, 1, 4096, 100us, refuse_unknown};

}  // namespace

const Command_rule& find_command(uint8_t opcode) {
  for (const Command_rule& rule : rules)
    if (rule.opcode == opcode) return rule;
  return unknown_command;
}

}  // namespace sim
