// SPDX-License-Identifier: GPL-3.0-or-later
// The services of the tuned DAB ensemble: their list, their components, the packets of data services. Included by
// si468x/si468x.h.
//
// Character sets of labels: 0 EBU Latin, 4 ISO 8859-1, 6 UCS-2 with the high byte first, 15 UTF-8.
#pragma once

#include <array>
#include <cstdint>
#include <iosfwd>

// ---- Service list -------------------------------------------------------------------------------------------------

/// The ensemble's service list: its header, and the position of its entries in the caller's buffer.
struct Si468x_digital_service_list {
  uint16_t version = 0;
  uint8_t num_services = 0;
  uint16_t size = 0;        ///< bytes of the entries at `data`
  uint8_t* data = nullptr;  ///< the first entry

  /// Reads the list (GET_DIGITAL_SERVICE_LIST) into `list_buffer`, 4096 bytes of the caller's.
  /// @return 0; the command's result with code 26 (length) or 226 (list); -4 with code 126 (list above 4089 bytes) or
  /// 326 (below the 6 bytes of its header).
  [[nodiscard]] int16_t get_new_list(uint8_t* list_buffer);
  void clean();  ///< Zeroes the record.
  int json_print_data(std::stringstream& ss) const;
};

/// One service of a list.
struct Si468x_service_data {
  uint32_t ServId = 0;
  uint32_t ServRef = 0;
  uint8_t CountryID = 0;
  uint8_t ECC = 0;              ///< extended country code; set for data services only
  uint8_t AudioOrDataFlag = 0;  ///< 1 data service, 0 audio service
  uint8_t ProgramType = 0, LinkingInfo = 0, NumberComponents = 0;
  uint8_t CAId = 0;  ///< 0: not encrypted
  uint8_t local = 0;
  uint8_t SICharset = 0;  ///< character set of `Label`
  std::array<uint8_t, 16> Label{' ', ' ', ' ', ' ', ' ', ' ', ' ', ' ', ' ', ' ', ' ', ' ', ' ', ' ', ' ', ' '};
  uint8_t* components = nullptr;  ///< the first component, inside the list
  uint16_t components_size = 0;   ///< bytes from there to the end of the list

  /// Decodes service `index`, from 0. @return 0; -6 with code 27 (no such service); -4 with code 127 or 327 (header
  /// beyond the list's end), 227 (components beyond it on the way there), or 427 (components of the wanted service
  /// beyond it: the other fields are set, `components` is kept).
  [[nodiscard]] int16_t get_service(const Si468x_digital_service_list* list, uint8_t index);
  int json_print_data(std::stringstream& ss, uint16_t service_no) const;
};

/// Transport mechanisms of a component.
inline constexpr uint8_t Si468x_tmid_stream_audio = 0;  ///< DAB and DAB+ audio
inline constexpr uint8_t Si468x_tmid_stream_data = 1;
inline constexpr uint8_t Si468x_tmid_fidc = 2;  ///< in the fast information channel
inline constexpr uint8_t Si468x_tmid_packet_data = 3;

/// One component of a service. Which of the ids is set depends on TMID; the others keep their value.
struct Si468x_DAB_component {
  uint32_t comp_ID = 0;  ///< the component id of Si468x_start_digital_service and get_info
  uint8_t SubChId = 0;   ///< of streams
  uint8_t TMID = 0;
  uint8_t FIDCId = 0;  ///< of Si468x_tmid_fidc
  uint16_t SCId = 0;   ///< of Si468x_tmid_packet_data, like DGFlag
  uint8_t DGFlag = 0;
  uint8_t CA_flag = 0;     ///< 1: encrypted
  uint8_t ps = 0;          ///< 1: the primary component of its service
  uint8_t ASCTyDSCTy = 0;  ///< type of audio (63 DAB+, 0 DAB) or of data
  uint8_t muA_info_valid = 0;

  /// Decodes component `index`, from 0. @return 0; -6 with code 28 when the service or the list's bytes end before it.
  [[nodiscard]] int16_t get_component(const Si468x_service_data* service, uint8_t index);
  int json_print_data(std::stringstream& ss, uint16_t component_no) const;
};

// ---- Component information, data packets --------------------------------------------------------------------------

/// One component's language, label and user applications.
struct Si468x_DAB_component_info {
  uint8_t global_id = 0, language = 0;
  uint8_t charset_id = 0;           ///< character set of `label`
  std::array<uint8_t, 16> label{};  ///< not terminated
  uint16_t char_abbrev = 0;         ///< mask of the label's characters that make its short form
  uint8_t ua_count = 0;             ///< user applications
  uint8_t ua_length = 0;            ///< bytes of their area
  uint8_t* ua_data = nullptr;       ///< before get_info: 256 bytes of the caller's; after it: the area, inside them

  /// DAB_GET_COMPONENT_INFO, read twice: fixed fields, then all of it. Set `ua_data` before each call.
  /// @return 0; the command's result with code 30 or 130 (second read); -4 with code 1030 + 100 ua_length when that is
  /// above 227. The fields before `ua_data` are set, except with code 30.
  [[nodiscard]] int16_t get_info(uint32_t service_id, uint32_t component_id);
  void print_info() const;
};

/// One user application of a component.
struct Si468x_user_application_data {
  uint16_t type = 0;
  uint8_t length = 0;       ///< bytes at `data`
  uint8_t* data = nullptr;  ///< inside the area of the component information

  /// Finds entry `index`, from 0. @return 0; -6 with code 31 (no such entry), 131, 231, 331, 1031 + 100 x or
  /// 1131 + 100 x (lengths that do not fit the area; x the first byte of the offending entry).
  /// With code 331 (its pad byte is not 0) `type` and `length` are set.
  [[nodiscard]] int16_t get_ua_data(const Si468x_DAB_component_info* info, uint8_t index);
};

/// One packet of a started data service.
struct Si468x_digital_service_data {
  uint8_t overflow = 0, packet_ready = 0;
  uint8_t buffer_count = 0;  ///< packets that the chip holds, this one included
  uint8_t srv_state = 0, data_source = 0, dscty = 0;
  uint32_t service_id = 0, component_id = 0;
  uint16_t byte_count = 0;  ///< payload bytes
  uint16_t segment_number = 0, num_segments = 0;
  uint8_t* payload = nullptr;  ///< in the caller's buffer from byte 25; null without a payload

  /// Fetches the next packet (GET_DIGITAL_SERVICE_DATA) into `buf`, `buf_size` bytes of the caller's, at least 25: the
  /// header, and behind it the payload. Header and payload are one transaction.
  /// @return 0 with `payload` set, or null when the chip holds no packet; -3 with code 34 (no clear-to-send in 10
  /// tries) or 234 (no packet ready); -2 with code 134 (overflow); -4 with code 334 (the packet needs more than
  /// `buf_size`). If a header was read, its fields are set even on failure, and `payload` is null unless a payload was
  /// read. With code 34, and with a buffer below 25 bytes, the record is unchanged.
  [[nodiscard]] int16_t get_new_data(uint8_t* buf, uint32_t buf_size);
  void print_data() const;
};
