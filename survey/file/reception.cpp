// SPDX-License-Identifier: GPL-3.0-or-later
// The table of receptions.
#include "survey/file/reception.h"

#include "survey/text/scales.h"

namespace survey {

// clang-format off
const std::array<Reception_row, 7> receptions{{
    // class        words                      from  terminal    fill        outline    in the dark
    {"unmeasured", "not measured",               0, "\033[2m",  {"none",        "none",    "none",        "none"}},
    {"none",       "no signal",                  0, "\033[2m",  {"#b4bac1",     "none",    "#545c64",     "none"}},
    {"other",      "a signal that is not DAB",  20, "\033[35m", {"url(#hatch)", "#6b747d", "url(#hatch)", "#9aa3ab"}},  // RSSI
    {"weak",       "too weak to decode",         0, "\033[31m", {"#ffffff",     "#b0481a", "#13171b",     "#e8804c"}},
    {"poor",       "received poorly",           30, "\033[33m", {"#f5bd4f",     "#a36a00", "#87590a",     "#d99d2b"}},  // FIC quality
    {"fair",       "received fairly",     fair_snr, "\033[36m", {"#2c9c8d",     "#1d7569", "#2c9c8d",     "#2c9c8d"}},  // SNR
    {"good",       "received well",       good_snr, "\033[32m", {"#0d4686",     "#0d4686", "#9accff",     "#9accff"}},  // SNR
}};
// clang-format on

const Reception_row& row_of(Reception reception) { return receptions.at(static_cast<size_t>(reception)); }

Reception reception(const Entry& entry) {
  using enum Reception;
  if (!entry.measured) return not_measured;
  if (!entry.valid) return entry.rssi < row_of(no_dab).from ? no_signal : no_dab;
  if (static_cast<int>(entry.fic_quality) < row_of(poor).from) return too_weak;
  if (entry.snr < row_of(fair).from) return poor;
  return entry.snr < row_of(good).from ? fair : good;
}

std::string explained(Reception reception) {
  using enum Reception;
  const auto from = [](Reception row) { return std::to_string(row_of(row).from); };
  std::string words(row_of(reception).words);
  switch (reception) {
    case not_measured:
      return words;
    case no_signal:
      return words + ": below " + from(no_dab) + " dBµV";
    case no_dab:
      return words + ": " + from(no_dab) + " dBµV and more";
    case too_weak:
      return words + ": FIC quality below " + from(poor);
    case poor:
      return words + ": SNR below " + from(fair) + " dB";
    case fair:
      return words + ": SNR " + from(fair) + " to " + std::to_string(row_of(good).from - 1) + " dB";
    case good:
      return words + ": SNR " + from(good) + " dB and more";
  }
  return words;
}

}  // namespace survey
