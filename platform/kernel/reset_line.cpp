// SPDX-License-Identifier: GPL-3.0-or-later
// The line that resets the chip.
#include "platform/kernel/reset_line.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "messages/messages.h"
#include "platform/kernel/gpio_controller.h"

namespace kernel {

namespace {

static_assert(sizeof(gpiochip_info) == 68 && sizeof(gpio_v2_line_request) == 592 && sizeof(gpio_v2_line_info) == 256 &&
                  sizeof(gpio_v2_line_config) == 272,
              "the layouts are the same for programs of 32 and 64 bits");

bool is_number(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

std::optional<Line_place> parse_line(std::string_view text) {
  constexpr std::string_view prefix = "gpiochip";
  const size_t colon = text.find(':');
  if (!text.starts_with(prefix) || colon == std::string_view::npos) return std::nullopt;
  const std::string_view controller = text.substr(0, colon);
  const std::string_view number = text.substr(colon + 1);
  if (!is_number(controller.substr(prefix.size())) || !is_number(number)) return std::nullopt;
  Line_place place{.controller = "/dev/" + std::string(controller)};
  const auto [rest, error] = std::from_chars(number.data(), number.data() + number.size(), place.offset);
  if (error != std::errc()) return std::nullopt;
  return place;
}

// A controller that the user may not open is reported when its line is driven: many runs drive none.
void check(const Line_place& place) {
  gpiochip_info info{};
  const int error = read_controller(place.controller, info);
  if (error != 0 && error != EACCES) messages::refuse("KELVO_RESET: " + place.controller + ": " + reason(error));
  if (error == 0 && place.offset >= info.lines)
    messages::refuse("KELVO_RESET: " + place.controller + " has lines 0 to " + std::to_string(int64_t{info.lines} - 1) +
                     " only");
}

std::string consumer(const Device_file& controller, uint32_t offset) {
  gpio_v2_line_info info{};
  info.offset = offset;
  if (controller.control(GPIO_V2_GET_LINEINFO_IOCTL, info) != 0 || info.consumer[0] == '\0') return "";
  return "; \"" + text(info.consumer) + "\" uses it";
}

gpio_v2_line_config output(bool high) {
  gpio_v2_line_config config{};
  config.flags = GPIO_V2_LINE_FLAG_OUTPUT | (high ? GPIO_V2_LINE_FLAG_BIAS_PULL_UP : GPIO_V2_LINE_FLAG_BIAS_PULL_DOWN);
  config.num_attrs = 1;
  config.attrs[0].attr.id = GPIO_V2_LINE_ATTR_ID_OUTPUT_VALUES;
  config.attrs[0].attr.values = high ? 1 : 0;
  config.attrs[0].mask = 1;  // the first and only line of the request
  return config;
}

}  // namespace

Reset_line::Reset_line() {
  const char* const value = std::getenv("KELVO_RESET");
  if (value == nullptr || *value == '\0') return;
  place_ = parse_line(value);
  if (!place_) messages::refuse("KELVO_RESET: not a controller and a line, as in gpiochip1:17");
  check(*place_);
}

std::optional<std::string> Reset_line::drive(uint8_t pin, bool high) {
  if (!place_) {
    std::string controller;
    if (std::optional<std::string> fault = find_pin_controller(controller)) return fault;
    place_ = Line_place{.controller = controller, .offset = pin};
  }
  gpio_v2_line_config config = output(high);
  std::optional<std::string> fault;
  if (!line_.is_open())
    fault = request(config);
  else if (const int error = line_.control(GPIO_V2_LINE_SET_CONFIG_IOCTL, config); error != 0)
    fault = reason(error);
  if (fault) fault = place_->controller + ": line " + std::to_string(place_->offset) + ": " + *fault;
  return fault;
}

std::optional<std::string> Reset_line::request(const gpio_v2_line_config& config) {
  Device_file controller;
  int error = controller.open(place_->controller);
  if (error != 0) return reason(error) + cure(error);
  gpio_v2_line_request request{};
  request.offsets[0] = place_->offset;
  request.num_lines = 1;
  request.config = config;
  std::snprintf(request.consumer, sizeof request.consumer, "%s", program_invocation_short_name);
  error = controller.control(GPIO_V2_GET_LINE_IOCTL, request);
  if (error != 0) return reason(error) + (error == EBUSY ? consumer(controller, place_->offset) : "");
  line_ = Device_file(request.fd);
  if (const std::optional<std::string> loss = loses_levels(place_->controller))
    messages::print("warning: after this run only a pull resistor keeps the level of the reset line: " + *loss);
  return std::nullopt;
}

}  // namespace kernel
