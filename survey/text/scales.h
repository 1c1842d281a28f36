// SPDX-License-Identifier: GPL-3.0-or-later
// The limits of good reception and the scale of signals, the same for every program that shows them.
#pragma once

namespace survey {

/// The least SNR that is fair and the least that is good, dB.
inline constexpr int fair_snr = 8, good_snr = 16;

/// Where bars of the RSSI end, dBµV; they begin at 0.
inline constexpr int signal_scale_end = 80;

}  // namespace survey
