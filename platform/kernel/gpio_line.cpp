// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/kernel/gpio_line.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <iterator>
#include <string_view>

#include "messages/messages.h"
#include "platform/kernel/errors.h"

namespace kernel {

namespace {

static_assert(sizeof(gpiochip_info) == 68 && sizeof(gpio_v2_line_request) == 592 && sizeof(gpio_v2_line_info) == 256 &&
                  sizeof(gpio_v2_line_config) == 272,
              "the layouts are the same for programs of 32 and 64 bits");

struct Known_controller {
  std::string_view label;
  const char* keeps_levels;  // the parameter of its driver: whether a released line keeps driving its level
};
constexpr Known_controller known_controllers[] = {
    {"pinctrl-bcm2835", "/sys/module/pinctrl_bcm2835/parameters/persist_gpio_outputs"},  // Raspberry Pi Zero to 3
    {"pinctrl-bcm2711", "/sys/module/pinctrl_bcm2835/parameters/persist_gpio_outputs"},  // 4
    {"pinctrl-rp1", "/sys/module/pinctrl_rp1/parameters/persist_gpio_outputs"},          // 5
};

// The kernel ends these texts with a zero byte; a text that fills its field is truncated.
template <size_t size>
std::string text(const char (&field)[size]) {
  return {field, std::find(field, field + size, '\0')};
}

const Known_controller* known_controller(const gpiochip_info& info) {
  const std::string label = text(info.label);
  const auto* const found = std::find_if(std::begin(known_controllers), std::end(known_controllers),
                                         [&](const Known_controller& known) { return known.label == label; });
  return found != std::end(known_controllers) ? found : nullptr;
}

bool reads_no(const char* path) {
  std::FILE* const file = std::fopen(path, "r");
  if (file == nullptr) return false;
  const int first = std::fgetc(file);
  static_cast<void>(std::fclose(file));  // result ignored: the file was only read
  return first == 'N';
}

void warn_where_level_is_lost(const Line_place& place) {
  gpiochip_info info{};
  if (read_controller(place.controller, info) != 0) return;
  const Known_controller* const known = known_controller(info);
  if (known != nullptr && reads_no(known->keeps_levels))
    messages::print("warning: after this run only a pull resistor keeps the level of the reset line: " +
                    std::string(known->keeps_levels) + " is N");
}

std::string cure(int error) { return error == EACCES ? "; join the group gpio" : ""; }

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

int read_controller(const std::string& path, gpiochip_info& info) {
  Device_file controller;
  const int error = controller.open(path);
  return error != 0 ? error : controller.control(GPIO_GET_CHIPINFO_IOCTL, info);
}

bool find_pin_controller(std::string& path) {
  constexpr unsigned most_controllers = 64;
  std::string refused;
  for (unsigned number = 0; number < most_controllers; ++number) {
    path = "/dev/gpiochip" + std::to_string(number);
    gpiochip_info info{};
    const int error = read_controller(path, info);
    if (error == 0 && known_controller(info) != nullptr) return true;
    if (error != 0 && error != ENOENT && refused.empty()) refused = path + ": " + reason(error) + cure(error);
  }
  report(!refused.empty()
             ? refused
             : "no GPIO controller of a Raspberry Pi; name the reset line, as in KELVO_RESET=gpiochip1:17");
  return false;
}

bool Gpio_line::drive(const Line_place& place, bool high) {
  gpio_v2_line_config config = output(high);
  std::string fault;
  if (!line_.is_open())
    fault = request(place, config);
  else if (const int error = line_.control(GPIO_V2_LINE_SET_CONFIG_IOCTL, config); error != 0)
    fault = reason(error);
  if (!fault.empty()) report(place.controller + ": line " + std::to_string(place.offset) + ": " + fault);
  return fault.empty();
}

// @return the error; empty if there is none
std::string Gpio_line::request(const Line_place& place, const gpio_v2_line_config& config) {
  Device_file controller;
  int error = controller.open(place.controller);
  if (error != 0) return reason(error) + cure(error);
  gpio_v2_line_request request{};
  request.offsets[0] = place.offset;
  request.num_lines = 1;
  request.config = config;
  std::snprintf(request.consumer, sizeof request.consumer, "%s", program_invocation_short_name);
  error = controller.control(GPIO_V2_GET_LINE_IOCTL, request);
  if (error != 0) return reason(error) + (error == EBUSY ? consumer(controller, place.offset) : "");
  line_ = Device_file(request.fd);
  warn_where_level_is_lost(place);
  return "";
}

}  // namespace kernel
