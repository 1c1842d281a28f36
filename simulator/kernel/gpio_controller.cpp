// SPDX-License-Identifier: GPL-3.0-or-later
// The GPIO character device of the simulated kernel.
#include "simulator/kernel/gpio_controller.h"

#include <bcm2835.h>

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cstdio>
#include <iterator>

#include "simulator/host/environment.h"

namespace sim {

namespace {

constexpr unsigned reset_pin = 23;

constexpr uint64_t bias_flags =
    GPIO_V2_LINE_FLAG_BIAS_PULL_UP | GPIO_V2_LINE_FLAG_BIAS_PULL_DOWN | GPIO_V2_LINE_FLAG_BIAS_DISABLED;
constexpr uint64_t direction_flags = GPIO_V2_LINE_FLAG_INPUT | GPIO_V2_LINE_FLAG_OUTPUT;
constexpr uint64_t known_flags = direction_flags | bias_flags | GPIO_V2_LINE_FLAG_ACTIVE_LOW;

template <size_t size>
bool is_zero(const uint32_t (&padding)[size]) {
  return std::all_of(std::begin(padding), std::end(padding), [](uint32_t word) { return word == 0; });
}

bool is_valid(const gpio_v2_line_config& config) {
  const int directions = std::popcount(config.flags & direction_flags);
  const int biases = std::popcount(config.flags & bias_flags);
  return config.num_attrs <= GPIO_V2_LINE_NUM_ATTRS_MAX && is_zero(config.padding) &&
         (config.flags & ~known_flags) == 0 && directions <= 1 && biases <= directions;
}

// The level that the request gives its only line; low if it gives none.
bool level(const gpio_v2_line_config& config) {
  bool active = false;
  for (uint32_t i = 0; i < config.num_attrs; ++i) {
    const gpio_v2_line_config_attribute& attribute = config.attrs[i];
    if (attribute.attr.id == GPIO_V2_LINE_ATTR_ID_OUTPUT_VALUES && (attribute.mask & 1) != 0)
      active = (attribute.attr.values & 1) != 0;
  }
  return active != ((config.flags & GPIO_V2_LINE_FLAG_ACTIVE_LOW) != 0);
}

template <size_t size>
void copy(char (&field)[size], const std::string& text) {
  std::snprintf(field, size, "%s", text.c_str());
}

}  // namespace

unsigned Gpio_controller::pin_of(uint32_t line) const {
  if (line == wiring_.reset_line) return reset_pin;
  return line == reset_pin ? wiring_.reset_line : line;
}

void Gpio_controller::read_info(gpiochip_info& info) const {
  info = {};
  copy(info.label, label_);
  info.lines = lines_;
}

int Gpio_controller::read_line_info(gpio_v2_line_info& info) const {
  if (info.offset >= lines_ || !is_zero(info.padding)) return -EINVAL;
  const auto found = consumers_.find(info.offset);
  if (found == consumers_.end()) return 0;
  info.flags = GPIO_V2_LINE_FLAG_USED;
  copy(info.consumer, found->second);
  return 0;
}

int Gpio_controller::request_line(const gpio_v2_line_request& request) {
  const uint32_t line = request.offsets[0];
  if (request.num_lines != 1 || !is_zero(request.padding) || !is_valid(request.config) || line >= lines_)
    return -EINVAL;
  if (consumers_.contains(line)) return -EBUSY;
  const auto* const end = std::find(std::begin(request.consumer), std::end(request.consumer), '\0');
  consumers_.emplace(line, std::string(std::begin(request.consumer), end));
  apply(line, request.config);
  return 0;
}

int Gpio_controller::configure_line(uint32_t line, const gpio_v2_line_config& config) const {
  if (!is_valid(config)) return -EINVAL;
  apply(line, config);
  return 0;
}

// The pull first, then level and direction at once.
void Gpio_controller::apply(uint32_t line, const gpio_v2_line_config& config) const {
  if (!wiring_.to_board) return;
  if (wiring_.shared != nullptr) return wiring_.shared->drive_reset(level(config));
  Board& board = current_board();
  const unsigned pin = pin_of(line);
  if ((config.flags & GPIO_V2_LINE_FLAG_BIAS_PULL_UP) != 0) board.set_pin_pull(pin, BCM2835_GPIO_PUD_UP);
  if ((config.flags & GPIO_V2_LINE_FLAG_BIAS_PULL_DOWN) != 0) board.set_pin_pull(pin, BCM2835_GPIO_PUD_DOWN);
  if ((config.flags & GPIO_V2_LINE_FLAG_BIAS_DISABLED) != 0) board.set_pin_pull(pin, BCM2835_GPIO_PUD_OFF);
  if ((config.flags & GPIO_V2_LINE_FLAG_INPUT) != 0) board.set_pin_function(pin, BCM2835_GPIO_FSEL_INPT);
  if ((config.flags & GPIO_V2_LINE_FLAG_OUTPUT) != 0) board.drive_pin(pin, level(config));
}

void Gpio_controller::release_line(uint32_t line) {
  consumers_.erase(line);
  if (wiring_.to_board && wiring_.shared == nullptr && !wiring_.keeps_levels)
    current_board().set_pin_function(pin_of(line), BCM2835_GPIO_FSEL_INPT);
}

}  // namespace sim
