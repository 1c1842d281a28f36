// SPDX-License-Identifier: GPL-3.0-or-later
// The properties of each application, with default and range.
#include "simulator/chip/properties.h"

namespace sim {

namespace {

constexpr unsigned dab = static_cast<unsigned>(Mode::dab);
constexpr unsigned fm = static_cast<unsigned>(Mode::fm);

struct Property_rule {
  uint16_t id;
  unsigned modes;
  uint16_t default_value;
  uint16_t largest;
};

constexpr Property_rule rules[] = {
    // clang-format off
    {0x0200,        dab | fm, 0x0000, 0xFFFF},  // digital audio output: mode
    {0x0202,        dab | fm, 0x1800, 0xFFFF},  // digital audio output: format
    {0x0300,        dab | fm, 0x003F, 0x003F},  // volume
    {0x0800,        dab | fm, 0x8001, 0xFFFF},  // which audio outputs are on
    {fm_rds_config, fm,       0x0000, 0xFFFF},
    {0x3900,        fm,       0x0000, 0xFFFF},  // of unknown meaning
    // clang-format on
};

const Property_rule* find_rule(uint16_t id, Mode mode) {
  for (const Property_rule& rule : rules)
    if (rule.id == id && (rule.modes & static_cast<unsigned>(mode)) != 0) return &rule;
  return nullptr;
}

}  // namespace

void Properties::reset(Mode mode) {
  mode_ = mode;
  changed_.clear();
}

std::optional<uint16_t> Properties::get(uint16_t id) const {
  const Property_rule* rule = find_rule(id, mode_);
  if (rule == nullptr) return std::nullopt;
  const auto found = changed_.find(id);
  return found != changed_.end() ? found->second : rule->default_value;
}

bool Properties::accepts(uint16_t id, uint16_t value) const {
  const Property_rule* rule = find_rule(id, mode_);
  return rule != nullptr && value <= rule->largest;
}

void Properties::set(uint16_t id, uint16_t value) {
  changed_[id] = value;
  if (value == find_rule(id, mode_)->default_value) changed_.erase(id);
}

}  // namespace sim
