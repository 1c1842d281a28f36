// SPDX-License-Identifier: GPL-3.0-or-later
#include "si468x/json_text.h"

#include <algorithm>
#include <charconv>

void Json_text::raw(std::string_view text) {
  while (text.size() > text_.size() - length_) {
    const size_t part = text_.size() - length_;
    std::copy_n(text.data(), part, text_.data() + length_);
    length_ += part;
    text.remove_prefix(part);
    flush();
  }
  std::copy(text.begin(), text.end(), text_.data() + length_);
  length_ += text.size();
}

void Json_text::number(Json_key key, uint32_t value, std::string_view end) {
  std::array<char, 10> digits{};  // the highest number is 4294967295
  const char* const digits_end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
  raw("\"");
  raw(key.text());
  raw("\": ");
  raw({digits.data(), static_cast<size_t>(digits_end - digits.data())});
  raw(end);
}

int Json_text::end() {
  flush();
  return 0;
}

void Json_text::flush() {
  ss_.write(text_.data(), static_cast<std::streamsize>(length_));
  length_ = 0;
}
