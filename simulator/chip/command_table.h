// SPDX-License-Identifier: GPL-3.0-or-later
// The commands of the chip: form, modes, busy time, handler.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "simulator/chip/bytes.h"
#include "simulator/chip/chip_core.h"
#include "simulator/chip/chip_state.h"
#include "simulator/chip/clock.h"

namespace sim {

/// What a command gives: the response (from reply byte 4 on), or why it is refused.
struct Answer {
  std::vector<uint8_t> response{};
  std::string refusal{};  ///< empty: the command was carried out
};

inline Answer refuse(std::string why) { return {.refusal = std::move(why)}; }

/// Carries out a command. It gets the whole command, whose length has been checked.
using Command_handler = Answer(Chip_core& chip, Bytes command);

Command_handler power_up, load_init, host_load, flash_load, boot;
Command_handler get_part_info, get_sys_state, get_func_info, set_property, get_property;
Command_handler dab_set_freq_list, dab_get_freq_list, dab_tune_freq;
Command_handler dab_digrad_status, dab_get_event_status, dab_get_time;
Command_handler get_digital_service_list, start_digital_service, stop_digital_service;
Command_handler get_digital_service_data, dab_get_component_info;
Command_handler fm_seek_start, fm_rsq_status, fm_rds_status;

/// One command of the chip.
struct Command_rule {
  uint8_t opcode;
  uint8_t modes;      ///< the modes in which the command exists, as bits of Mode
  bool persistent;    ///< changes state that outlives the host's program
  uint16_t shortest;  ///< bytes that the host sends, opcode included
  uint16_t longest;
  Time busy;  ///< how long clear-to-send stays low
  Command_handler* carry_out;
};

/// The rule of a command; for an opcode that the chip does not know, one that always refuses.
const Command_rule& find_command(uint8_t opcode);

}  // namespace sim
