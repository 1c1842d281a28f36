// SPDX-License-Identifier: GPL-3.0-or-later
// The machine's GPIO controllers. That of a Raspberry Pi's pins is found by its label: its number differs between
// models and kernels.
#include "platform/kernel/gpio_controller.h"

#include <cerrno>
#include <cstdio>
#include <iterator>
#include <string_view>

#include "platform/kernel/system.h"

namespace kernel {

namespace {

struct Known_controller {
  std::string_view label;
  const char* keeps_levels;  // the parameter of its driver: whether a released line keeps its level
};
constexpr Known_controller known_controllers[] = {
    {"pinctrl-bcm2835", "/sys/module/pinctrl_bcm2835/parameters/persist_gpio_outputs"},  // Raspberry Pi Zero to 3
    {"pinctrl-bcm2711", "/sys/module/pinctrl_bcm2835/parameters/persist_gpio_outputs"},  // 4
    {"pinctrl-rp1", "/sys/module/pinctrl_rp1/parameters/persist_gpio_outputs"},          // 5
};

const Known_controller* known_controller(const gpiochip_info& info) {
  const std::string label = text(info.label);
  const auto* const found = std::find_if(std::begin(known_controllers), std::end(known_controllers),
                                         [&](const Known_controller& known) { return known.label == label; });
  return found != std::end(known_controllers) ? found : nullptr;
}

}  // namespace

int read_controller(const std::string& path, gpiochip_info& info) {
  Device_file controller;
  const int error = controller.open(path);
  return error != 0 ? error : controller.control(GPIO_GET_CHIPINFO_IOCTL, info);
}

std::string cure(int error) { return error == EACCES ? "; join the group gpio" : ""; }

std::optional<std::string> find_pin_controller(std::string& path) {
  constexpr unsigned most_controllers = 64;
  std::optional<std::string> refused;
  for (unsigned number = 0; number < most_controllers; ++number) {
    path = "/dev/gpiochip" + std::to_string(number);
    gpiochip_info info{};
    const int error = read_controller(path, info);
    if (error == 0 && known_controller(info) != nullptr) return std::nullopt;
    if (error != 0 && error != ENOENT && !refused) refused = path + ": " + reason(error) + cure(error);
  }
  return refused.value_or("no GPIO controller of a Raspberry Pi; name the reset line, as in KELVO_RESET=gpiochip1:17");
}

std::optional<std::string> loses_levels(const std::string& path) {
  gpiochip_info info{};
  if (read_controller(path, info) != 0) return std::nullopt;
  const Known_controller* const known = known_controller(info);
  if (known == nullptr) return std::nullopt;
  const char* const parameter = known->keeps_levels;
  std::FILE* const file = std::fopen(parameter, "r");
  if (file == nullptr) return std::string("this kernel has no ") + parameter;
  const bool keeps_levels = std::fgetc(file) == 'Y';
  static_cast<void>(std::fclose(file));  // result ignored: the file was only read
  if (keeps_levels) return std::nullopt;
  return std::string(parameter) + " is N";
}

}  // namespace kernel
