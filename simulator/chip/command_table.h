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

/// One command of the chip.
struct Command_rule {
  uint8_t opcode;
  uint8_t modes;      ///< the modes in which the command exists, as bits of Mode
  bool persistent;    ///< changes state that outlives the host's program
  uint16_t shortest;  ///< bytes that the host sends, opcode included
  uint16_t longest;
  Time busy;  ///< how long clear-to-send stays low
  Answer (*carry_out)(Chip_core& chip, Bytes command);
};

/// The rule of a command; for an opcode that the chip does not know, one that always refuses.
const Command_rule& find_command(uint8_t opcode);

// The commands, by what they are about. Each gets the whole command, whose length has been checked.

Answer power_up(Chip_core& chip, Bytes command);
Answer load_init(Chip_core& chip, Bytes command);
Answer host_load(Chip_core& chip, Bytes command);
Answer flash_load(Chip_core& chip, Bytes command);
Answer boot(Chip_core& chip, Bytes command);

Answer get_part_info(Chip_core& chip, Bytes command);
Answer get_sys_state(Chip_core& chip, Bytes command);
Answer get_func_info(Chip_core& chip, Bytes command);
Answer set_property(Chip_core& chip, Bytes command);
Answer get_property(Chip_core& chip, Bytes command);

Answer dab_set_freq_list(Chip_core& chip, Bytes command);
Answer dab_get_freq_list(Chip_core& chip, Bytes command);
Answer dab_tune_freq(Chip_core& chip, Bytes command);
Answer dab_digrad_status(Chip_core& chip, Bytes command);
Answer dab_get_event_status(Chip_core& chip, Bytes command);
Answer dab_get_time(Chip_core& chip, Bytes command);

Answer get_digital_service_list(Chip_core& chip, Bytes command);
Answer start_digital_service(Chip_core& chip, Bytes command);
Answer stop_digital_service(Chip_core& chip, Bytes command);
Answer get_digital_service_data(Chip_core& chip, Bytes command);
Answer dab_get_component_info(Chip_core& chip, Bytes command);

Answer fm_seek_start(Chip_core& chip, Bytes command);
Answer fm_rsq_status(Chip_core& chip, Bytes command);
Answer fm_rds_status(Chip_core& chip, Bytes command);

}  // namespace sim
