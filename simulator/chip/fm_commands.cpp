// SPDX-License-Identifier: GPL-3.0-or-later
// Commands of the FM application: seek, signal quality, radio data.
#include "simulator/chip/command_table.h"

namespace sim {

namespace {

// The argument of FM_SEEK_START, then that of FM_RSQ_STATUS.
constexpr unsigned seek_up = 0x02;
constexpr unsigned seek_wrap = 0x01;
constexpr unsigned acknowledge_signal = 0x08;
constexpr unsigned acknowledge_seek = 0x01;

// Byte 5 of the signal quality   B.Hh..AV   B band limit, H HD detected, h the same filtered, A frequency control
// railed, V valid
constexpr unsigned rsq_band_limit = 0x80;
constexpr unsigned rsq_hd_detected = 0x20;
constexpr unsigned rsq_hd_detected_filtered = 0x10;
constexpr unsigned rsq_afc_railed = 0x02;
constexpr unsigned rsq_valid = 0x01;

// Byte 4 of the radio data   .......G   G a group is ready
// Byte 5                     ...TP.S.   T type valid, P identification valid, S synchronised
// Byte 6                     ..TPPPPP   T traffic programme, P programme type
constexpr unsigned rds_group_ready = 0x01;
constexpr unsigned rds_type_valid = 0x10;
constexpr unsigned rds_identification_valid = 0x08;
constexpr unsigned rds_synchronised = 0x02;
constexpr unsigned rds_traffic_programme = 0x20;

// Block B of a group   .... .TPP PPPt m.SS   T traffic programme, P programme type, t announcement, m music, S segment
constexpr unsigned group_traffic_programme = 0x0400;
constexpr unsigned group_announcement = 0x0010;
constexpr unsigned group_music = 0x0008;

constexpr size_t ps_length = 8;

// Group 0A: programme service name, two characters in each of four groups.
//   block A   programme identification
//   block B   flags, programme type, segment
//   block C   two alternative frequency codes
//   block D   two characters
void put_group(std::vector<uint8_t>& out, const Rds& rds, uint8_t segment) {
  const auto character = [&](size_t at) {
    return at < rds.ps.size() && at < ps_length ? static_cast<uint8_t>(rds.ps[at]) : uint8_t{' '};
  };
  const size_t first = size_t{2} * segment;
  constexpr unsigned filler = 205;  // alternative frequency code: none
  const auto alternative = [&](size_t at) { return at < rds.af.size() ? rds.af[at] : filler; };
  put16(out, rds.pi);
  put16(out, bit(rds.tp, group_traffic_programme) | (rds.pty & 0x1FU) << 5 | bit(rds.ta, group_announcement) |
                 bit(rds.music, group_music) | segment);
  put16(out, alternative(0) << 8 | alternative(1));
  put16(out, static_cast<unsigned>(character(first) << 8 | character(first + 1)));
}

}  // namespace

// opcode, 0, direction, 0, antenna capacitor (2 bytes, 0: chosen by the chip)
Answer fm_seek_start(Chip_core& chip, Bytes command) {
  if (command[1] != 0 || command[3] != 0) return refuse("argument bytes 1 and 3 are not 0");
  if ((command[2] & ~(seek_up | seek_wrap)) != 0) return refuse("unknown bits in argument byte 2");
  if (le16(command, 4) != 0) return refuse("the antenna capacitor is chosen by the chip on this board");
  chip.fm.seek((command[2] & seek_up) != 0, (command[2] & seek_wrap) != 0, chip.clock.now());
  return {};
}

Answer fm_rsq_status(Chip_core& chip, Bytes command) {
  if ((command[1] & ~(acknowledge_signal | acknowledge_seek)) != 0) return refuse("unknown bits in the argument byte");
  Fm_receiver& fm = chip.fm;
  const Fm_signal signal = fm.signal();
  std::vector<uint8_t> response;
  put8(response, fm.signal_interrupts());
  put8(response, bit(fm.band_limit(), rsq_band_limit) | bit(signal.hd_detected, rsq_hd_detected) |
                     bit(signal.hd_detected_filtered, rsq_hd_detected_filtered) |
                     bit(signal.afc_railed, rsq_afc_railed) | bit(signal.valid, rsq_valid));
  put16(response, fm.khz() / 10);
  put8(response, static_cast<unsigned>(signal.frequency_offset));
  put8(response, static_cast<unsigned>(signal.rssi));
  put8(response, static_cast<unsigned>(signal.snr));
  put8(response, signal.multipath);
  put16(response, signal.antenna_cap);
  put8(response, 0);
  put8(response, signal.hd_level);
  put8(response, signal.hd_level_filtered);
  response.resize(18);  // the rest is reserved
  if ((command[1] & acknowledge_signal) != 0) fm.acknowledge_signal();
  if ((command[1] & acknowledge_seek) != 0) fm.acknowledge_seek();
  return {.response = response};
}

// An assumption: only the length of this reply is known.
//   bytes 8, 9 identification; 10 groups waiting; 11 errors of the four blocks; 12 on the blocks
Answer fm_rds_status(Chip_core& chip, Bytes command) {
  constexpr size_t response_length = 16;
  if (command[1] != 0) return refuse("unknown bits in the argument byte");
  const bool switched_on = (chip.properties.get(fm_rds_config).value_or(0) & rds_switched_on) != 0;
  const Rds* rds = chip.fm.rds();
  if (!switched_on || rds == nullptr) return {.response = std::vector<uint8_t>(response_length)};
  const uint8_t group = chip.fm.take_group();
  std::vector<uint8_t> response;
  put8(response, rds_group_ready);
  put8(response, rds_type_valid | rds_identification_valid | rds_synchronised);
  put8(response, bit(rds->tp, rds_traffic_programme) | (rds->pty & 0x1FU));
  put8(response, 0);
  put16(response, rds->pi);
  put8(response, 4U - group);
  put8(response, 0);
  put_group(response, *rds, group);
  return {.response = response};
}

}  // namespace sim
