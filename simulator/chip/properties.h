// SPDX-License-Identifier: GPL-3.0-or-later
// The properties of the running application.
#pragma once

#include <cstdint>
#include <map>
#include <optional>

#include "simulator/chip/chip_state.h"

namespace sim {

/// The 16-bit settings of the running application, by id.
class Properties {
 public:
  /// Every property of the application at its default; none in the other modes.
  void reset(Mode mode);

  /// The value, nothing when the application has no such property.
  std::optional<uint16_t> get(uint16_t id) const;
  bool accepts(uint16_t id, uint16_t value) const;
  /// Sets a property that accepts the value.
  void set(uint16_t id, uint16_t value);

  /// Those that differ from their default.
  const std::map<uint16_t, uint16_t>& changed() const { return changed_; }
  bool operator==(const Properties&) const = default;

 private:
  Mode mode_ = Mode::reset;
  std::map<uint16_t, uint16_t> changed_;
};

inline constexpr uint16_t fm_rds_config = 0x3C02;
inline constexpr unsigned rds_switched_on = 0x01;  ///< in `fm_rds_config`: radio data is received

}  // namespace sim
