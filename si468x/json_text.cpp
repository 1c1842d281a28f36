// SPDX-License-Identifier: GPL-3.0-or-later
// JSON text, collected in a buffer on the stack.
#include "si468x/json_text.h"

#include <algorithm>
#include <charconv>
#include <sstream>

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

// Straight into the buffer: most of a report is numbers.
void Json_text::number(const Json_key& key, uint32_t value, std::string_view end) {
  constexpr std::string_view colon = "\": ";
  constexpr size_t most_digits = 10;  // the highest number is 4294967295
  if (text_.size() - length_ < 1 + Json_key::longest + colon.size() + most_digits) flush();
  char* at = text_.data() + length_;
  *at++ = '"';
  at = std::copy(key.text().begin(), key.text().end(), at);
  at = std::copy(colon.begin(), colon.end(), at);
  at = std::to_chars(at, at + most_digits, value).ptr;
  length_ = static_cast<size_t>(at - text_.data());
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
