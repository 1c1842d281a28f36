// SPDX-License-Identifier: GPL-3.0-or-later
// Text of labels and answers. All results are valid UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace survey {

constexpr unsigned utf8_charset = 15;

/// The bytes of a label in character set `charset` (0 EBU Latin, 4 ISO 8859-1, 6 UCS-2 big endian, 15 UTF-8; of any
/// other set the ASCII characters), without trailing blanks. Bytes without a character become U+FFFD.
std::string decode_label(std::string_view bytes, unsigned charset);

/// `bytes` with each damaged sequence replaced by U+FFFD.
std::string valid_utf8(std::string_view bytes);

/// Whether a terminal or an editor acts on it: controls, line and paragraph separators, changes of writing direction.
bool is_control(char32_t character);

/// Valid UTF-8 with each such character replaced by U+FFFD.
std::string visible(std::string_view text);

/// Valid UTF-8 in lower case, to compare names.
std::string folded(std::string_view text);

/// The first character of `text`, which it is taken from; U+FFFD where a sequence is damaged. `text` is not empty.
char32_t take_character(std::string_view& text);

void append_character(std::string& text, char32_t character);

}  // namespace survey
