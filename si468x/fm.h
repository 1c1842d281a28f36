// SPDX-License-Identifier: GPL-3.0-or-later
// FM reception, after a boot of the FM image. Included by si468x/si468x.h.
//
// A station is reached by seeking; there is no tune to a given frequency. Si468x_FM_rsq_status shows where a seek
// ended.
#pragma once

#include <cstdint>

/// Seeks the next station upwards or downwards (FM_SEEK_START); at the band's limit the seek goes on from the other
/// one. Waits for its end like Si468x_DAB_tune_freq.
/// @return 0; the command's result with code 60; out of time, the last poll's result, 0, -1 or -2, with code 160.
[[nodiscard]] int16_t Si468x_FM_seek(bool up);

/// Si468x_FM_seek downwards.
[[nodiscard]] int16_t Si468x_tune_next_station();

/// Received signal quality of the tuned FM station.
struct Si468x_FM_rsq_status {
  uint8_t snr_high_int = 0, snr_low_int = 0, rssi_high_int = 0, rssi_low_int = 0;  ///< thresholds crossed
  uint8_t band_limit = 0;                                                          ///< 1: the seek found no station
  uint8_t hd_detected = 0, hd_detected_filtered = 0;
  uint8_t afc_railed = 0;        ///< the frequency control is at its limit
  uint8_t valid = 0;             ///< a station is received here
  uint16_t frequency = 0;        ///< 10 kHz
  uint8_t frequency_offset = 0;  ///< signed, as a raw byte
  uint8_t rssi = 0;              ///< dBµV, signed, as a raw byte
  uint8_t snr = 0;               ///< dB, signed, as a raw byte
  uint8_t multipath = 0;
  uint16_t antenna_cap = 0;  ///< antenna tuning capacitor
  uint8_t hd_level = 0, hd_level_filtered = 0;

  /// FM_RSQ_STATUS; acknowledges the interrupts and the end of a seek. @return 0; the command's result with code 61.
  [[nodiscard]] int16_t get_new_status();
  [[nodiscard]] int16_t get_status();  ///< The same, and prints the 23 reply bytes.
};

/// RDS data of the tuned FM station; the record keeps nothing.
///
/// Reception of RDS is switched on with the property Si468x_fm_rds_config. To have the bytes in a buffer, send the
/// command: uint8_t cmd[] = {0x34, 0x00}; Si468x_send_cmd(cmd, reply, 2, 21). As buffer positions, 0 is meaningless, 1
/// to 4 are STATUS0 to STATUS3, and what follows is not fully known. The simulated board fills it as follows:
///   5       bit 0: a group was received
///   6       bit 4 programme type valid, bit 3 identification valid, bit 1 synchronised
///   7       bit 5 traffic programme, bits 4 to 0 programme type
///   9, 10   programme identification, low byte first
///   11, 12  groups waiting, this one included; block errors
///   13-20   blocks A to D of the group, each with its low byte first
/// Each read takes one group.
struct Si468x_FM_rds_status {
  /// FM_RDS_STATUS; prints the 21 reply bytes. @return 0; the command's result with code 62.
  [[nodiscard]] int16_t get_status();
};
