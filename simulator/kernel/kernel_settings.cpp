// SPDX-License-Identifier: GPL-3.0-or-later
// How the simulated kernel is configured.
#include "simulator/kernel/kernel_settings.h"

#include <charconv>
#include <sstream>
#include <string_view>

#include "messages/messages.h"
#include "simulator/host/variables.h"

namespace sim {

namespace {

[[noreturn]] void refuse(const std::string& word) {
  messages::refuse("KELVO_SIM_KERNEL: \"" + word + "\" is not a setting of the simulated kernel");
}

void set(Kernel_settings& settings, const std::string& word) {
  const struct {
    std::string_view name;
    std::string Kernel_settings::*member;
  } texts[] = {{"label", &Kernel_settings::label},
               {"persist", &Kernel_settings::persist},
               {"busy", &Kernel_settings::busy},
               {"spidev", &Kernel_settings::spidev},
               {"board", &Kernel_settings::board}};
  const struct {
    std::string_view name;
    uint32_t Kernel_settings::*member;
  } numbers[] = {{"chip", &Kernel_settings::chip},
                 {"line", &Kernel_settings::line},
                 {"bufsiz", &Kernel_settings::bufsiz},
                 {"unbound", &Kernel_settings::unbound},
                 {"failing", &Kernel_settings::failing},
                 {"gpio_denied", &Kernel_settings::gpio_denied},
                 {"interrupted", &Kernel_settings::interrupted}};
  const size_t equals = word.find('=');
  if (equals == std::string::npos) refuse(word);
  const std::string_view name(word.data(), equals);
  const char* const value = word.data() + equals + 1;
  const char* const end = word.data() + word.size();
  for (const auto& text : texts) {
    if (text.name != name) continue;
    (settings.*text.member).assign(value, end);
    return;
  }
  for (const auto& number : numbers) {
    if (number.name != name) continue;
    const auto [rest, error] = std::from_chars(value, end, settings.*number.member);
    if (error == std::errc() && rest == end) return;
  }
  refuse(word);
}

}  // namespace

Kernel_settings read_kernel_settings() {
  Kernel_settings settings;
  std::istringstream words(variable("KELVO_SIM_KERNEL"));
  for (std::string word; words >> word;) set(settings, word);
  return settings;
}

}  // namespace sim
