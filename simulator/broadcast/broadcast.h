// SPDX-License-Identifier: GPL-3.0-or-later
// What is on the air, as plain records.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "simulator/broadcast/fading.h"

namespace sim {

/// What is on the air around the simulated board, in radio terms. Plain records: a broadcast file is read into them,
/// and a test fills them by hand. Labels are the bytes that the chip reports, shorter ones are padded with spaces.

/// The 41 frequencies of the European Band III channel plan in kHz: the list that the DAB firmware holds by itself.
const std::vector<uint32_t>& band_iii_frequencies();

/// How a DAB frequency is received. Signed values are reported as their low 8 bits.
struct Signal {
  int8_t rssi = 0;          ///< dBµV
  int8_t snr = 0;           ///< dB
  uint8_t fic_quality = 0;  ///< 0 to 100
  uint8_t cnr = 0;          ///< dB
  uint16_t fib_errors = 0;
  int8_t fft_offset = 0;
  uint16_t antenna_cap = 0;  ///< as the chip chooses it
  uint16_t cu_level = 0;
  uint8_t fast_detect = 0;
  bool hardmute = false;   ///< audio is muted
  bool fic_error = false;  ///< the fast information channel has errors
  bool rssi_high = false;  ///< the tune raises the interrupt of the upper RSSI threshold
  bool rssi_low = false;   ///< the tune raises the interrupt of the lower RSSI threshold
};

/// One application that a component carries, for example a slide show.
struct User_application {
  uint16_t type = 0;
  std::vector<uint8_t> data{};  ///< at most 255 bytes
};

/// One data packet; a data object is sent in one or more of them.
struct Data_segment {
  uint16_t number = 0;
  uint16_t total = 0;
  std::vector<uint8_t> payload{};  ///< at most 65535 bytes
};

/// One component of a service.
struct Component {
  uint8_t tmid = 0;  ///< transport: 0 audio stream, 1 data stream, 2 fast information data channel, 3 packets
  uint16_t id = 0;   ///< TMId 0, 1: subchannel (0-63); TMId 2: FIDC id (0-63); TMId 3: service component id (0-4095)
  bool dg = false;   ///< TMId 3: data groups are not used
  bool ca = false;   ///< conditional access
  bool ps = true;    ///< primary component of its service
  uint8_t type = 0;  ///< ASCTy or DSCTy, 0 to 63
  bool mua = false;  ///< the component info is valid

  uint8_t global_id = 0;
  uint8_t language = 0;  ///< 0 to 63
  uint8_t charset = 0;   ///< 0 to 63
  std::string label{};
  uint16_t abbreviation = 0;  ///< which characters of the label make its short form, one bit each
  std::vector<User_application> user_applications{};

  uint8_t data_source = 0;               ///< 0 data service, 1 programme-associated data, 2 dynamic label
  std::vector<Data_segment> segments{};  ///< the packets that the chip collects once the component is started

  /// The number by which commands name the component: the 16-bit word of the service list.
  uint16_t component_id() const;
};

struct Service {
  uint32_t id = 0;             ///< 16 bits for an audio service
  bool data = false;           ///< a data service (32-bit id)
  uint8_t programme_type = 0;  ///< 0 to 31
  bool linking = false;
  uint8_t ca_id = 0;  ///< 0 to 7
  bool local = false;
  uint8_t charset = 0;  ///< 0 to 15
  std::string label{};
  std::vector<Component> components{};  ///< at most 15
};

/// One version of an ensemble's service list.
struct Service_list {
  uint16_t version = 0;
  std::chrono::milliseconds after{450};  ///< after acquisition; from then on the chip holds this version
  std::vector<Service> services{};
};

/// Bytes of a list on the wire, from the end of its SIZE field on.
uint32_t list_size(const Service_list& list);

/// Bytes of the component's user applications on the wire.
size_t user_applications_size(const Component& component);

/// The same of one application: type (2), length (1), data, padded to an even number.
size_t application_size(const User_application& application);

/// The largest list that fits the driver's buffer of 4096 bytes behind the status and SIZE.
inline constexpr uint32_t largest_list_size = 4089;

/// A DAB multiplex, or a signal that could be one, on one frequency.
struct Ensemble {
  uint8_t index = 0;  ///< in Broadcast::frequencies
  Signal signal{};
  Fading fading{};               ///< of RSSI, SNR and FIC quality, in place of the signal's own
  bool valid = true;             ///< a DAB signal is detected
  bool acquired = true;          ///< its information can be decoded; needs `valid`
  bool frequency_info = false;   ///< information on other frequencies is sent
  bool reconfiguration = false;  ///< these three events come with the acquisition
  bool reconfiguration_warning = false;
  bool announcement = false;
  std::vector<Service_list> lists{};  ///< in the order in which they are sent
};

/// Radio data of an FM station.
struct Rds {
  uint16_t pi = 0;  ///< programme identification
  uint8_t pty = 0;  ///< 0 to 31
  bool tp = false;
  bool ta = false;
  bool music = true;
  std::string ps{};           ///< programme service name, 8 characters
  std::vector<uint8_t> af{};  ///< two alternative frequency codes at most
};

/// How an FM frequency is received.
struct Fm_signal {
  int8_t rssi = 0;  ///< dBµV
  int8_t snr = 0;   ///< dB
  uint8_t multipath = 0;
  int8_t frequency_offset = 0;
  uint16_t antenna_cap = 0;
  bool valid = false;  ///< good enough for a seek to stop
  bool afc_railed = false;
  bool hd_detected = false;
  bool hd_detected_filtered = false;
  uint8_t hd_level = 0;
  uint8_t hd_level_filtered = 0;
  bool snr_high = false;  ///< interrupts that the tune raises
  bool snr_low = false;
  bool rssi_high = false;
  bool rssi_low = false;
};

inline constexpr uint32_t fm_band_bottom = 87500;  ///< kHz
inline constexpr uint32_t fm_band_top = 108000;

struct Fm_station {
  uint32_t khz = 0;  ///< in the band, a multiple of 10
  Fm_signal signal{};
  Fading fading{};  ///< of RSSI, SNR and multipath, in place of the signal's own
  std::optional<Rds> rds{};
};

struct Fm_band {
  Fm_signal noise{};  ///< what is received on other frequencies
  std::vector<Fm_station> stations{};
};

struct Date_time {
  uint16_t year = 0;
  uint8_t month = 0;
  uint8_t day = 0;
  uint8_t hour = 0;
  uint8_t minute = 0;
  uint8_t second = 0;
};

struct Broadcast {
  std::vector<uint32_t> frequencies = band_iii_frequencies();  ///< the chip's own list, kHz, at most 255
  Signal noise{};                                              ///< what is received where nothing is sent
  std::vector<Ensemble> ensembles{};
  std::optional<Date_time> time{};    ///< what the ensembles send as UTC; nothing: the host's clock
  int32_t local_offset_minutes = 60;  ///< local time of the ensembles, ahead of UTC
  Fm_band fm{};
};

/// Whether any signal changes with time.
bool has_fading(const Broadcast& air);

/// The ensemble on this frequency, null when there is none.
const Ensemble* ensemble_on(const Broadcast& air, uint32_t khz);
const Fm_station* fm_station_on(const Broadcast& air, uint32_t khz);

/// The component that a command names by its two ids; null when the list has none such.
const Component* find_component(const Service_list& list, uint32_t service_id, uint32_t component_id);

/// The broadcast that is built in.
const Broadcast& default_broadcast();

}  // namespace sim
