// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/kernel/settings.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <string_view>

#include "messages/messages.h"
#include "platform/kernel/errors.h"

namespace kernel {

namespace {

std::string variable(const char* name) {
  const char* const value = std::getenv(name);
  return value != nullptr ? value : "";
}

bool is_number(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

std::optional<Line_place> parse_line(std::string_view text) {
  constexpr std::string_view prefix = "gpiochip";
  if (!text.starts_with(prefix)) return std::nullopt;
  const size_t colon = text.find(':');
  if (colon == std::string_view::npos || !is_number(text.substr(prefix.size(), colon - prefix.size())))
    return std::nullopt;
  const std::string_view number = text.substr(colon + 1);
  Line_place place{.controller = "/dev/" + std::string(text.substr(0, colon)), .offset = 0};
  const auto [rest, error] = std::from_chars(number.data(), number.data() + number.size(), place.offset);
  if (!is_number(number) || error != std::errc() || rest != number.data() + number.size()) return std::nullopt;
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

}  // namespace

Settings read_settings() {
  Settings settings;
  settings.trace = variable("KELVO_TRACE");
  if (const std::string reset = variable("KELVO_RESET"); !reset.empty()) {
    settings.reset = parse_line(reset);
    if (!settings.reset) messages::refuse("KELVO_RESET: not a controller and a line, as in gpiochip1:17");
    check(*settings.reset);
  }
  return settings;
}

}  // namespace kernel
