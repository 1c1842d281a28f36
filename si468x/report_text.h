// SPDX-License-Identifier: GPL-3.0-or-later
// The aligned lines of a text report. Internal to the driver.
#pragma once

#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <span>

/// All values start in this column, counted from 0.
constexpr int value_column = 44;

/// The label, padded to the value's column.
inline void print_label(const char* label) { std::printf("%-*s", value_column, label); }

/// One line: label and text, by its length: it may hold any byte.
inline void print_line(const char* label, std::span<const uint8_t> text) {
  print_label(label);
  std::fwrite(text.data(), 1, text.size(), stdout);
  std::putchar('\n');
}

/// One line: label and value.
inline void print_line(const char* label, uint32_t value) {
  std::printf("%-*s%" PRIu32 "\n", value_column, label, value);
}
