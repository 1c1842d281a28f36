// SPDX-License-Identifier: GPL-3.0-or-later
#include "si468x/json_text.h"

#include <algorithm>
#include <cassert>
#include <charconv>

void Json_text::raw(std::string_view text) {
  std::copy(text.begin(), text.end(), room_for(text.size()));
  length_ += text.size();
}

void Json_text::number(std::string_view key, uint32_t value, std::string_view end) {
  char* const line = room_for(key.size() + end.size() + 14);  // `"": ` and the longest number, 4294967295
  char* at = line;
  *at++ = '"';
  at = std::copy(key.begin(), key.end(), at);
  at = std::copy_n("\": ", 3, at);
  at = std::to_chars(at, at + 10, value).ptr;
  at = std::copy(end.begin(), end.end(), at);
  length_ += static_cast<size_t>(at - line);
}

// `count` is that of one line, far below the whole.
char* Json_text::room_for(size_t count) {
  if (count > text_.size() - length_) write();
  assert(count <= text_.size());
  return text_.data() + length_;
}

int Json_text::write() {
  ss_.write(text_.data(), static_cast<std::streamsize>(length_));
  length_ = 0;
  return 0;
}
