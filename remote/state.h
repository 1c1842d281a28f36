// SPDX-License-Identifier: GPL-3.0-or-later
// What is known of the receiver.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "live/sample.h"
#include "remote/orders.h"
#include "remote/stations.h"

namespace remote {

struct State {
  std::optional<std::string_view> doing{};  ///< the order that is carried out
  Mode mode = Mode::unknown;
  std::optional<uint8_t> index{};    ///< tuned to with DAB; nothing before the first tune
  uint32_t khz = 0;                  ///< of the index
  std::optional<Play> playing{};     ///< nothing: no service plays, or one that is not known
  bool unknown_service = true;       ///< another program may have started one
  std::optional<uint16_t> volume{};  ///< nothing: not known

  /// After a boot, and after the mode changed in another way.
  void set_mode(Mode now);
  /// After a tune, which ends the service.
  void set_tuning(uint8_t now);
  void set_playing(const Play& play);

  /// Compares with a sample. @return true: another program, or a brown-out, has changed mode or tuning
  bool notice(const live::Sample& sample);
};

/// In the form of kelvo-remote(1).
std::string to_json(const State& state, const Stations& stations);

}  // namespace remote
