// SPDX-License-Identifier: GPL-3.0-or-later
// What several scans received, block by block and station by station.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "survey/file/model.h"
#include "survey/file/reception.h"

namespace survey {

/// Whether `entry` is received better than `other`: by reception, then FIC quality, SNR, RSSI.
bool better(const Entry& entry, const Entry& other);

/// One row of the comparison: a frequency, and what each scan received there.
struct Row {
  uint32_t frequency = 0;           ///< kHz
  std::vector<const Entry*> cells;  ///< one per scan, null where a scan has no such entry; point into the scans
  std::vector<size_t> best;         ///< the scans that receive it best, several if they are equal; empty if none
                                    ///< receives an ensemble, or there is one scan alone

  [[nodiscard]] Reception reception_at(size_t scan) const;
  [[nodiscard]] bool is_best(size_t scan) const;
  /// The best reception of all scans.
  [[nodiscard]] Reception reception() const;
};

/// One row per frequency that occurs in `scans`, ascending.
std::vector<Row> rows(const std::vector<Scan>& scans);

/// Of two scans, by what the best one is better: "+8 dB" of SNR; where SNR is not what decides, "FIC +2" or "signal
/// +3"; "only here", "equal". Empty unless there are two.
std::string lead(const Row& row);

/// A service of one block, in whichever scans it was received.
struct Station {
  const Service* service = nullptr;  ///< as the first of the best scans has it
  const Entry* entry = nullptr;      ///< where that scan received it
  std::vector<size_t> best;          ///< the scans that receive it best, several if they are equal
  std::vector<size_t> received;      ///< the scans that have it, ascending
};

/// One station per service and frequency, ordered by frequency, then by the chip's order of services. Point into
/// `scans`.
std::vector<Station> stations(const std::vector<Scan>& scans);

/// Of several scans, for each the services that it alone received, in any block. Empty lists for one scan.
std::vector<std::vector<const Service*>> received_alone(const std::vector<Station>& stations, size_t scans);

}  // namespace survey
