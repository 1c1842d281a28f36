// SPDX-License-Identifier: GPL-3.0-or-later
// The aligned lines of a text report. For the driver's own files.
#pragma once

#include <cinttypes>
#include <cstdint>
#include <cstdio>

/// The label, padded so that all values start in column 45.
inline void print_label(const char* label) { std::printf("%-44s", label); }

/// One line: label and value.
inline void print_line(const char* label, uint32_t value) { std::printf("%-44s%" PRIu32 "\n", label, value); }
