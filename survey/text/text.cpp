// SPDX-License-Identifier: GPL-3.0-or-later
// Character sets and UTF-8.
#include "survey/text/text.h"

#include <algorithm>
#include <clocale>
#include <cstdint>
#include <cwctype>

namespace survey {

namespace {

constexpr char32_t replacement = 0xFFFD;

// The EBU Latin based repertoire (ETSI TS 101 756, annex C): the Unicode character of each code, 0 for the four
// controls, which have none.
constexpr char16_t ebu_latin[256] = {
    // clang-format off
    0x0000, 0x0118, 0x012E, 0x0172, 0x0102, 0x0116, 0x010E, 0x0218,
    0x021A, 0x010A, 0x0000, 0x0000, 0x0120, 0x0139, 0x017B, 0x0143,
    0x0105, 0x0119, 0x012F, 0x0173, 0x0103, 0x0117, 0x010F, 0x0219,
    0x021B, 0x010B, 0x0147, 0x011A, 0x0121, 0x013A, 0x017C, 0x0000,
    0x0020, 0x0021, 0x0022, 0x0023, 0x0142, 0x0025, 0x0026, 0x0027,
    0x0028, 0x0029, 0x002A, 0x002B, 0x002C, 0x002D, 0x002E, 0x002F,
    0x0030, 0x0031, 0x0032, 0x0033, 0x0034, 0x0035, 0x0036, 0x0037,
    0x0038, 0x0039, 0x003A, 0x003B, 0x003C, 0x003D, 0x003E, 0x003F,
    0x0040, 0x0041, 0x0042, 0x0043, 0x0044, 0x0045, 0x0046, 0x0047,
    0x0048, 0x0049, 0x004A, 0x004B, 0x004C, 0x004D, 0x004E, 0x004F,
    0x0050, 0x0051, 0x0052, 0x0053, 0x0054, 0x0055, 0x0056, 0x0057,
    0x0058, 0x0059, 0x005A, 0x005B, 0x016E, 0x005D, 0x0141, 0x005F,
    0x0104, 0x0061, 0x0062, 0x0063, 0x0064, 0x0065, 0x0066, 0x0067,
    0x0068, 0x0069, 0x006A, 0x006B, 0x006C, 0x006D, 0x006E, 0x006F,
    0x0070, 0x0071, 0x0072, 0x0073, 0x0074, 0x0075, 0x0076, 0x0077,
    0x0078, 0x0079, 0x007A, 0x00AB, 0x016F, 0x00BB, 0x013D, 0x0126,
    0x00E1, 0x00E0, 0x00E9, 0x00E8, 0x00ED, 0x00EC, 0x00F3, 0x00F2,
    0x00FA, 0x00F9, 0x00D1, 0x00C7, 0x015E, 0x00DF, 0x00A1, 0x0178,
    0x00E2, 0x00E4, 0x00EA, 0x00EB, 0x00EE, 0x00EF, 0x00F4, 0x00F6,
    0x00FB, 0x00FC, 0x00F1, 0x00E7, 0x015F, 0x011F, 0x0131, 0x00FF,
    0x0136, 0x0145, 0x00A9, 0x0122, 0x011E, 0x011B, 0x0148, 0x0151,
    0x0150, 0x20AC, 0x00A3, 0x0024, 0x0100, 0x0112, 0x012A, 0x016A,
    0x0137, 0x0146, 0x013B, 0x0123, 0x013C, 0x0130, 0x0144, 0x0171,
    0x0170, 0x00BF, 0x013E, 0x00B0, 0x0101, 0x0113, 0x012B, 0x016B,
    0x00C1, 0x00C0, 0x00C9, 0x00C8, 0x00CD, 0x00CC, 0x00D3, 0x00D2,
    0x00DA, 0x00D9, 0x0158, 0x010C, 0x0160, 0x017D, 0x00D0, 0x013F,
    0x00C2, 0x00C4, 0x00CA, 0x00CB, 0x00CE, 0x00CF, 0x00D4, 0x00D6,
    0x00DB, 0x00DC, 0x0159, 0x010D, 0x0161, 0x017E, 0x0111, 0x0140,
    0x00C3, 0x00C5, 0x00C6, 0x0152, 0x0177, 0x00DD, 0x00D5, 0x00D8,
    0x00DE, 0x014A, 0x0154, 0x0106, 0x015A, 0x0179, 0x0164, 0x00F0,
    0x00E3, 0x00E5, 0x00E6, 0x0153, 0x0175, 0x00FD, 0x00F5, 0x00F8,
    0x00FE, 0x014B, 0x0155, 0x0107, 0x015B, 0x017A, 0x0165, 0x0127,
    // clang-format on
};

bool is_surrogate(char32_t character) { return character >= 0xD800 && character <= 0xDFFF; }

std::string decode_ucs2(std::string_view bytes) {
  std::string text;
  for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const auto unit = static_cast<char32_t>(static_cast<uint8_t>(bytes[i]) << 8 | static_cast<uint8_t>(bytes[i + 1]));
    append_character(text, is_surrogate(unit) ? replacement : unit);
  }
  return text;
}

}  // namespace

void append_character(std::string& text, char32_t character) {
  const auto rest = [&](unsigned shift) { text += static_cast<char>(0x80 | (character >> shift & 0x3F)); };
  if (character < 0x80) {
    text += static_cast<char>(character);
    return;
  }
  if (character < 0x800) {
    text += static_cast<char>(0xC0 | character >> 6);
  } else {
    if (character < 0x10000) {
      text += static_cast<char>(0xE0 | character >> 12);
    } else {
      text += static_cast<char>(0xF0 | character >> 18);
      rest(12);
    }
    rest(6);
  }
  rest(0);
}

char32_t take_character(std::string_view& text) {
  const auto first = static_cast<uint8_t>(text.front());
  text.remove_prefix(1);
  if (first < 0x80) return first;
  if (first < 0xC2 || first > 0xF4) return replacement;
  const size_t length = first < 0xE0 ? 1 : first < 0xF0 ? 2 : 3;
  char32_t character = first & (0x3FU >> length);
  for (size_t i = 0; i < length; ++i) {
    const unsigned next = text.empty() ? 0 : static_cast<uint8_t>(text.front());
    // The first continuation also excludes overlong forms, surrogates and what is beyond U+10FFFF.
    const unsigned low = i > 0 ? 0x80 : first == 0xE0 ? 0xA0 : first == 0xF0 ? 0x90 : 0x80;
    const unsigned high = i > 0 ? 0xBF : first == 0xED ? 0x9F : first == 0xF4 ? 0x8F : 0xBF;
    if (next < low || next > high) return replacement;
    character = character << 6 | (next & 0x3F);
    text.remove_prefix(1);
  }
  return character;
}

size_t plain_length(std::string_view text) {
  const auto* const end = std::ranges::find_if(text, [](char c) {
    const auto byte = static_cast<uint8_t>(c);
    return byte < 0x20 || byte >= 0x7F || byte == '"' || byte == '\\';
  });
  return static_cast<size_t>(end - text.begin());
}

std::string valid_utf8(std::string_view bytes) {
  std::string text;
  while (!bytes.empty()) append_character(text, take_character(bytes));
  return text;
}

std::string decode_label(std::string_view bytes, unsigned charset) {
  constexpr unsigned latin_1 = 4, ucs2 = 6;
  // What fills a label up to its end: blanks or zeros. In UCS-2 two blanks look like a dagger.
  const auto filled = [&] {
    if (charset != ucs2) return bytes.ends_with(' ') || bytes.ends_with('\0');
    return bytes.ends_with("  ") || bytes.ends_with({"\0 ", 2}) || bytes.ends_with({"\0\0", 2});
  };
  while (filled()) bytes.remove_suffix(charset == ucs2 ? 2 : 1);
  if (charset == ucs2) return decode_ucs2(bytes);
  if (charset == utf8_charset) return valid_utf8(bytes);
  std::string text;
  for (const char byte : bytes) {
    const auto code = static_cast<uint8_t>(byte);
    if (charset != 0) {
      append_character(text, charset == latin_1 || code < 0x80 ? code : replacement);
    } else if (ebu_latin[code] != 0) {
      append_character(text, ebu_latin[code]);
    }
  }
  return text;
}

bool is_control(char32_t c) {
  const bool control = c < 0x20 || (c >= 0x7F && c < 0xA0) || c == 0x2028 || c == 0x2029;
  const bool direction =
      c == 0x061C || c == 0x200E || c == 0x200F || (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
  return control || direction;
}

std::string visible(std::string_view text) {
  std::string clean;
  while (!text.empty()) {
    const char32_t character = take_character(text);
    append_character(clean, is_control(character) ? replacement : character);
  }
  return clean;
}

std::string folded(std::string_view text) {
  // Independent of the user's locale. On a system without this one only ASCII letters are folded.
  static const locale_t unicode = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  constexpr wint_t sigma = 0x3C3, final_sigma = 0x3C2;
  std::string result;
  while (!text.empty()) {
    const auto character = static_cast<wint_t>(take_character(text));
    const wint_t lower = unicode == nullptr ? std::towlower(character) : towlower_l(character, unicode);
    append_character(result, static_cast<char32_t>(lower == final_sigma ? sigma : lower));
  }
  return result;
}

}  // namespace survey
