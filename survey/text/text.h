// SPDX-License-Identifier: GPL-3.0-or-later
// Text of labels and answers. All results are valid UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace survey {

constexpr unsigned utf8_charset = 15;

/// The text of a label of these bytes in character set `charset` (0 EBU Latin, 4 ISO 8859-1, 6 UCS-2 big endian, 15
/// UTF-8; of any other set only ASCII characters are known), without the blanks or zeros that fill it. Unknown
/// characters become U+FFFD; the four codes of EBU Latin without a character are left out.
std::string decode_label(std::string_view bytes, unsigned charset);

/// `bytes` with each damaged sequence replaced by U+FFFD.
std::string valid_utf8(std::string_view bytes);

/// Whether a terminal or an editor acts on the character instead of showing it: controls, line and paragraph
/// separators, changes of writing direction.
bool is_control(char32_t character);

/// `text` with each such character, and each damaged sequence, replaced by U+FFFD.
std::string visible(std::string_view text);

/// `text` in lower case, for comparing names; final sigma counts as sigma.
std::string folded(std::string_view text);

/// Removes the first character from `text` and returns it; U+FFFD for a damaged sequence. `text` must not be empty.
char32_t take_character(std::string_view& text);

/// Bytes at the beginning of `text` that are ASCII characters which a JSON string has as they are.
size_t plain_length(std::string_view text);

void append_character(std::string& text, char32_t character);

}  // namespace survey
