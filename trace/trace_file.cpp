// SPDX-License-Identifier: GPL-3.0-or-later
#include "trace/trace_file.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string_view>

namespace trace {

namespace {

constexpr size_t width_of_time = 14;  // microseconds with three decimals, then a blank

bool begins_as_trace(std::string_view text) {
  constexpr std::string_view digits = "0123456789";
  constexpr size_t point = width_of_time - 4;
  return text.size() == width_of_time + 1 && text.find_first_not_of(digits, text.find_first_not_of(' ')) == point &&
         text[point] == '.' && text.find_first_not_of(digits, point + 1) == width_of_time && text.back() == ' ';
}

// Why the file at `path` must stay; empty: it may be replaced, or there is none.
std::string refusal(const std::string& path) {
  std::error_code ignored;  // of a file that does not exist
  if (!std::filesystem::is_regular_file(path, ignored)) return "";
  std::ifstream old(path);
  if (!old) return std::strerror(errno);
  std::string start(width_of_time + 1, '\0');
  old.read(start.data(), static_cast<std::streamsize>(start.size()));
  start.resize(static_cast<size_t>(old.gcount()));
  return start.empty() || begins_as_trace(start) ? "" : "it exists and is not a trace";
}

}  // namespace

std::string open_file(std::ofstream& file, const std::string& path) {
  if (std::string reason = refusal(path); !reason.empty()) return reason;
  file.open(path, std::ios::trunc);
  return file ? "" : std::strerror(errno);
}

}  // namespace trace
