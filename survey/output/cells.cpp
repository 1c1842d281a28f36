// SPDX-License-Identifier: GPL-3.0-or-later
// Widths are those of the locale's characters.
#include "survey/output/cells.h"

#include <algorithm>
#include <cwchar>

#include "survey/text/text.h"

namespace survey {

namespace {

size_t columns(char32_t character) {
  return static_cast<size_t>(std::max(wcwidth(static_cast<wchar_t>(character)), 0));
}

}  // namespace

std::string printable(std::string_view text, const Terminal& terminal) {
  std::string result;
  while (!text.empty()) {
    char32_t character = take_character(text);
    // A character that the locale does not know has no width, and would shift all columns behind it.
    if (is_control(character) || (terminal.unicode && wcwidth(static_cast<wchar_t>(character)) < 0)) character = 0xFFFD;
    append_character(result, terminal.unicode || character < 0x80 ? character : '?');
  }
  return result;
}

size_t columns(std::string_view text) {
  size_t sum = 0;
  while (!text.empty()) sum += columns(take_character(text));
  return sum;
}

std::string clipped(std::string_view text, size_t width, const Terminal& terminal) {
  std::string whole = printable(text, terminal);
  if (width == 0 || columns(whole) <= width) return whole;
  std::string result;
  size_t used = 1;  // the mark at the end
  for (std::string_view rest = whole; !rest.empty();) {
    const char32_t character = take_character(rest);
    used += columns(character);
    if (used > width) break;
    append_character(result, character);
  }
  return result + (terminal.unicode ? "…" : "~");
}

std::string cell(std::string_view text, size_t width, const Terminal& terminal) {
  std::string result = clipped(text, width, terminal);
  result.append(width - std::min(width, columns(result)), ' ');
  return result;
}

std::string bar(int value, int end, size_t width, const Terminal& terminal) {
  static constexpr std::string_view eighths[] = {"", "▏", "▎", "▍", "▌", "▋", "▊", "▉"};
  const auto length = static_cast<size_t>(std::clamp(value, 0, end)) * width * 8 / static_cast<size_t>(end);
  const size_t beyond = value > end ? 1 : 0;
  std::string result;
  for (size_t i = beyond; i < length / 8; ++i) result += terminal.unicode ? "█" : "#";
  if (beyond != 0) result += '>';
  if (terminal.unicode) result += eighths[length % 8];
  const size_t used = length / 8 + (terminal.unicode && length % 8 != 0 ? 1 : 0);
  return result.append(width - used, ' ');
}

}  // namespace survey
