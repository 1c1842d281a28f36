// SPDX-License-Identifier: GPL-3.0-or-later
// The full scan: every frequency of the chip's DAB list, and the one file that tells what was received there.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "si468x/si468x.h"

/// Frequencies that a scan has room for: those of the European DAB band.
inline constexpr size_t ensemble_capacity = 41;

/// What a scan found, entry by entry of the chip's frequency list, and where the antenna stood. All zero and empty when
/// new; an entry that nothing was stored at stays so.
class Ensemble_list {
 public:
  Ensemble_list() = default;
  virtual ~Ensemble_list();
  Ensemble_list(const Ensemble_list&) = delete;
  Ensemble_list& operator=(const Ensemble_list&) = delete;

  /// Visits the frequencies of the chip's list, the first 41 at most; prints a line for each and stores what was found;
  /// then asks for the location. @return 0
  int rescan();

  /// Stores one frequency's results at `index`, below 41 (else nothing is stored). The entries of `list` are copied
  /// into a block of the ensemble list's own, as far as they fit its 4096 bytes. @return 0
  int add_ensemble(uint16_t index, const Si468x_digital_service_list& list, const Si468x_DAB_digrad_status& status,
                   const Si468x_time& time);

  /// Asks on standard output where the antenna stood, reads eight lines of standard input and builds the scan file's
  /// name. An answer that does not come stays empty. @return 0
  int getGeolocation();

  /// Writes the scan file. A file that cannot be written is passed over in silence. @return 0
  int save_to_file();

  std::array<Si468x_digital_service_list, ensemble_capacity> service_list;  ///< `data`: null or an owned block
  std::array<Si468x_DAB_digrad_status, ensemble_capacity> digrad_status;
  std::array<Si468x_time, ensemble_capacity> ensemble_time;
  std::string street, street_no, postal_code, city, country;
  std::string floor;  ///< indoor or outdoor, building level
  std::string gps_latitude, gps_longitude;
  std::string filename;
};

/// Scans the band, asks for the location and writes the scan file. @return 0
int dab_full_scan();
