// SPDX-License-Identifier: GPL-3.0-or-later
// The full scan: every frequency of the chip's DAB list, and one file with the results.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>

#include "si468x/si468x.h"

/// Capacity of a scan: the frequencies of the European DAB band.
inline constexpr size_t ensemble_capacity = 41;

/// Bytes of the longest reply with a service list.
inline constexpr size_t service_list_capacity = 4096;

/// What follows the tuning in the scan's step for one frequency: reads service list and time of the ensemble. `tuned`
/// is the result of Si468x_DAB_tune_freq_save; unless it is 1, and where a read fails, the record is empty. `list`
/// points into `list_buffer`, which has service_list_capacity bytes.
void read_ensemble(int16_t tuned, uint8_t* list_buffer, Si468x_digital_service_list& list, Si468x_time& time);

/// Results of a scan, one entry per entry of the chip's frequency list, and the antenna's location. Everything is zero
/// or empty when new; entries never stored stay empty.
class Ensemble_list {
 public:
  Ensemble_list() = default;
  virtual ~Ensemble_list();
  Ensemble_list(const Ensemble_list&) = delete;
  Ensemble_list& operator=(const Ensemble_list&) = delete;

  /// Tunes to each frequency of the chip's list, 41 at most, prints a line for it and stores the results; then asks for
  /// the location. @return 0
  int rescan();

  /// Stores one frequency's results at `index`; an index above 40 is ignored. Copies the entries of `list`, at most
  /// 4096 bytes, into a block that the ensemble list owns. @return 0
  int add_ensemble(uint16_t index, const Si468x_digital_service_list& list, const Si468x_DAB_digrad_status& status,
                   const Si468x_time& time);

  /// Asks for the antenna's location on standard output, reads eight lines of standard input and builds the scan file's
  /// name. At the end of input, the remaining answers are empty. @return 0
  int getGeolocation();

  /// Appends the scan file's text.
  void write_text(std::stringstream& ss) const;

  /// Writes the scan file. Fails silently. @return 0
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
