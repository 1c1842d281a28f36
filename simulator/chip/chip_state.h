// SPDX-License-Identifier: GPL-3.0-or-later
// The chip's state that outlives the program.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

namespace sim {

/// What the chip is doing; each command is for some of these only.
enum class Mode : uint8_t {
  reset = 1,       ///< held by its reset line
  waiting = 2,     ///< out of reset, before POWER_UP
  bootloader = 4,  ///< POWER_UP done, images can be loaded
  dab = 8,         ///< the DAB application runs
  fm = 16,         ///< the FM application runs
};

/// A started component.
struct Running_service {
  uint32_t service_id = 0;
  uint32_t component_id = 0;
  uint32_t next_segment = 0;  ///< first packet that the host has not fetched
};

struct Dab_state {
  std::vector<uint32_t> loaded_frequencies{};  ///< kHz, as DAB_SET_FREQ_LIST loaded them; empty: the chip's own list
  std::optional<uint8_t> tuned_index{};
  uint16_t antenna_cap = 0;       ///< as the tune asked for it, 0: chosen by the chip
  bool tuning = false;            ///< the tune is not over
  bool tune_complete = true;      ///< STCINT; true, since a state made by hand names an index that is tuned to
  uint8_t status_interrupts = 0;  ///< unacknowledged, as DAB_DIGRAD_STATUS reports them
  uint8_t events = 0;             ///< unacknowledged, as DAB_GET_EVENT_STATUS reports them
  uint32_t lists_arrived = 0;     ///< versions of the ensemble's service list so far
  std::vector<Running_service> running{};
};

/// Before the first tune.
inline const Dab_state not_tuned{.tune_complete = false};

struct Fm_state {
  uint32_t khz = 87500;
  bool seeking = false;
  bool seek_complete = false;     ///< STCINT
  bool band_limit = false;        ///< the last seek ended without a station
  uint8_t signal_interrupts = 0;  ///< unacknowledged, as FM_RSQ_STATUS reports them
  uint8_t next_group = 0;         ///< which radio data group comes next, 0 to 3
};

/// All that the chip keeps while no program runs. Anything in progress counts as finished when it is restored.
/// A state made by hand names only what matters: {.mode = Mode::dab, .dab = {.tuned_index = 33}}.
struct Chip_state {
  Mode mode = Mode::reset;
  bool command_error = false;                 ///< the last command was refused
  bool command_overflow = false;              ///< bytes of a command were dropped
  std::map<uint16_t, uint16_t> properties{};  ///< those that differ from the default
  Dab_state dab{};
  Fm_state fm{};
};

}  // namespace sim
