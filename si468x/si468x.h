// SPDX-License-Identifier: GPL-3.0-or-later
//
// The driver of the Si468x digital radio receiver: the one header to include.
//
// A run, in order; examples/receive.cpp is a program of these steps:
//   1. Si468x_bus_init, once per program.
//   2. To boot: Si468x_reset, Si468x_power_up; Si468x_load_init and a download of the ROM patch, a pause of
//      Si468x_patch_settle_ms; Si468x_load_init and a download of the application image, a pause of
//      Si468x_image_settle_ms; Si468x_boot. A download is Si468x_load_firmware_static or Si468x_load_firmware.
//   3. To receive DAB: Si468x_DAB_tune_freq; read Si468x_DAB_digrad_status until `acq` is set; read
//      Si468x_DAB_event_status until `service_list_available` is set; then read the service list and start a service.
//      Si468x_DAB_tune_freq_save does all of this but the last two steps. Services and the service list do not exist
//      before.
//   4. The chip keeps its image, tuning, services and properties when the program ends; Si468x_power_down ends all.
// Pauses are made with bcm2835_delay, so that a program also runs on the simulated board.
//
// Results. An operation returns 0 on success and a negative number on failure. A command (Si468x_send_cmd) returns
// -1 for data lost on the link or an arbiter error, -2 for a refused command or a non-recoverable error, -3 for no
// clear-to-send in time, -6 for no reply buffer; "the command's result" below is one of these, passed on. Other results
// are documented with each operation. Each failure stores its own code in Si468x_ErrorCode; docs/error-codes.md lists
// them. Only reports print.
//
// Buffers. A command is sent in place: the buffer then holds the bytes received during the transfer. A reply buffer
// holds one meaningless byte first, clocked in with the read opcode; then STATUS0 to STATUS3; then the command's data.
// Multi-byte values are little-endian on the wire. Records own nothing: a pointer in a record points into a buffer of
// the caller.
//
// Records. A new record is all zero (a service's label all blanks). A get_... method fills it from one reply of the
// chip and leaves it unchanged when it fails, except where documented. The print_... methods, the two FM get_status
// methods and Si468x_hex_print write text to standard output; json_print_data appends one JSON member or object to a
// stream, without a comma before or after it, and returns 0.
//
// One thread; each operation ends its exchange with the chip before it returns.
#pragma once

#include <array>
#include <cstdint>
#include <sstream>

#include "si468x/bus.h"
#include "si468x/protocol.h"
#include "si468x/spi/spi_link.h"

// ---- Power-up, firmware, boot -------------------------------------------------------------------------------------

inline constexpr unsigned Si468x_patch_settle_ms = 50;   ///< pause after the download of the ROM patch
inline constexpr unsigned Si468x_image_settle_ms = 100;  ///< pause between the download of the application and its boot

/// Powers the chip up with the board's 19.2 MHz crystal (POWER_UP) and expects its bootloader to run.
/// @return 0; the command's result with code 4; -5 with code 104 when STATUS3 is not 0x80.
[[nodiscard]] int16_t Si468x_power_up();

/// Announces an image to the bootloader (LOAD_INIT); needed before each. @return 0, or the command's result and code.
int16_t Si468x_load_init();

/// Downloads an image from memory in chunks of 4092 bytes (HOST_LOAD); `image` is only read.
/// @return 0; -6 with code 8 when `size` is 0; the failed chunk's result with code 108.
[[nodiscard]] int16_t Si468x_load_firmware_static(const uint8_t* image, uint32_t size);

/// Downloads an image from the file `path` in the same chunks.
/// @return 0; -6 with code 7 (cannot be opened), 107 (empty), 1007 + 100 k (chunk k from 0 read short); the failed
/// chunk's result with code 207.
[[nodiscard]] int16_t Si468x_load_firmware(const char* path);

/// Lets the chip load an image from the flash memory attached to it, at byte `address` (FLASH_LOAD). Does not wait for
/// clear-to-send. @return 0; -1 with code 9.
[[nodiscard]] int16_t Si468x_load_firmware_flash(uint32_t address);

/// Sends one chunk (HOST_LOAD) and waits up to about 125 ms until the chip has taken it. Only the low 16 bits of `len`
/// are used; pass at most 4092. `data` is overwritten. @return 0; -3 with code 160; -1 or -2 with code 260.
[[nodiscard]] int16_t Si468x_load_firmware_datapackage(uint8_t* data, uint32_t len);

/// Starts the downloaded application (BOOT). @return 0; the command's result with code 10; -4 with code 110 when
/// STATUS3 is not 0xC0.
[[nodiscard]] int16_t Si468x_boot();

/// Puts the chip into reset and closes the SPI link: the last call of a run.
void Si468x_power_down();

// ---- Chip information ---------------------------------------------------------------------------------------------

inline constexpr uint8_t Si468x_bootloader_runs = 2;  ///< power-up states
inline constexpr uint8_t Si468x_application_runs = 3;

/// The chip's status, part and running image. Each method sets its own fields.
struct Si468x_chip_info {
  uint8_t chip_mask_revision = 0, rom_id = 0;
  uint8_t image = 0;  ///< running image: 0 bootloader, 1 FMHD, 2 DAB, ...
  uint16_t part_number = 0;
  uint8_t revision_major = 0, revision_minor = 0, revision_build = 0;  ///< of the running image
  uint8_t no_svn_info = 0, mixed_revisions = 0, local_modifications = 0;
  uint8_t build_location = 0;  ///< set only when no_svn_info is 0; so is svn_id
  uint32_t svn_id = 0;
  uint8_t clear_to_send = 0, command_error = 0, digital_radio_link_change_int = 0, data_component_int = 0;
  uint8_t seek_tune_complete = 0, digital_radio_event_change_int = 0;
  uint8_t powerup_state = 0;  ///< Si468x_bootloader_runs, Si468x_application_runs
  uint8_t dsp_frame_overrun = 0, read_reply_data_dropped = 0, command_write_data_dropped = 0;
  uint8_t arbiter_error = 0, non_recoverable_error = 0;

  int16_t get_status();     ///< Reads the status bytes, sending no command. @return 0; -1 with code 11.
  int16_t get_part_info();  ///< GET_PART_INFO: mask revision, ROM id, part number. @return 0; the result with code 21.
  int16_t get_sys_state();  ///< GET_SYS_STATE: running image. @return 0; the command's result with code 12.
  int16_t get_func_info();  ///< GET_FUNC_INFO: revision of the image. @return 0; the command's result with code 13.
  void print_data() const;
};

// ---- Properties ---------------------------------------------------------------------------------------------------

/// Ids of properties, and their values.
inline constexpr uint16_t Si468x_audio_volume = 0x0300;  ///< 0 (low) to 63 (high)
inline constexpr uint16_t Si468x_audio_output = 0x0800;  ///< one of the next two
inline constexpr uint16_t Si468x_analogue_output = 1;
inline constexpr uint16_t Si468x_i2s_output = 2;                  ///< turns the analogue output off
inline constexpr uint16_t Si468x_digital_output_mode = 0x0200;    ///< I2S: 0x8000, written before the audio output
inline constexpr uint16_t Si468x_digital_output_format = 0x0202;  ///< I2S: 0x1000, written after it
inline constexpr uint16_t Si468x_fm_rds_config = 0x3C02;          ///< 1: RDS reception on

/// Writes property prop[0] = prop[1] (SET_PROPERTY) and reads it back. `prop` holds two numbers and is not changed.
/// @return 0; the command's result with code 18 (write) or 118 (read-back); -6 with code 218 when another value is
/// read.
int16_t Si468x_set_property(const uint16_t* prop);

/// Reads property prop[0] into prop[1] (GET_PROPERTY). @return 0; the command's result with code 17, prop[1] unchanged.
[[nodiscard]] int16_t Si468x_get_property(uint16_t* prop);

// ---- DAB: frequency list, tuning, services ------------------------------------------------------------------------

struct Si468x_DAB_digrad_status;

/// Loads the European Band III table, 41 frequencies, into the chip (DAB_SET_FREQ_LIST).
/// @return 0; the command's result with code 20.
[[nodiscard]] int16_t Si468x_DAB_set_freq_list();

/// Reads the chip's frequency list in kHz (DAB_GET_FREQ_LIST). `count` gets the number that the chip reports, 0 to 255;
/// of these, the first `capacity` are written into `freqs`, never more.
/// @return 0; the command's result with code 19 (count unread, 0) or 119 (count set, no entry written).
[[nodiscard]] int16_t Si468x_DAB_get_freq_list(uint32_t* freqs, uint8_t* count, uint8_t capacity);

/// Tunes to entry `index` of the chip's own list (DAB_TUNE_FREQ) and polls for seek/tune complete: immediately, then
/// every 100 ms, 100 times at most (about 10 s). A poll that fails records code 114 but does not end the wait.
/// @return 0 when complete; the command's result with code 21; out of time, the last poll's result, 0, -1 or -2, with
/// code 121.
int16_t Si468x_DAB_tune_freq(uint8_t index);

/// The scan's step for one frequency: tunes and reads `status`. If it shows a usable ensemble (valid, FIC quality 30 or
/// more), waits up to about 10 s for a stable service list, acknowledging the chip's events.
/// @return 1 service list ready; 0 nothing usable; -1 with code 365 list not stable in time; -2 or less with code 65
/// (tune), 165 (status) or 265 (events); after 65 and 165 `status` is unchanged.
[[nodiscard]] int16_t Si468x_DAB_tune_freq_save(uint8_t index, Si468x_DAB_digrad_status& status);

inline constexpr uint8_t Si468x_audio_service = 0;  ///< service types
inline constexpr uint8_t Si468x_data_service = 1;

/// Starts a service component of the tuned ensemble (START_DIGITAL_SERVICE). `service_type` is one of the two above.
/// @return 0; the command's result with code 32.
[[nodiscard]] int16_t Si468x_start_digital_service(uint8_t service_type, uint32_t service_id, uint32_t component_id);

/// Stops it (STOP_DIGITAL_SERVICE). @return 0; the command's result with code 33.
[[nodiscard]] int16_t Si468x_stop_digital_service(uint8_t service_type, uint32_t service_id, uint32_t component_id);

// ---- DAB: status and events ---------------------------------------------------------------------------------------

/// The digital radio status: ...INT are interrupts since they were last acknowledged. Raw bytes, no sign applied.
struct Si468x_DAB_digrad_status {
  uint8_t hardmuteINT = 0, FICerrINT = 0, acqINT = 0, rssihINT = 0, rssilINT = 0;
  uint8_t hardmute = 0, FICerr = 0;
  uint8_t acq = 0;          ///< ensemble acquired
  uint8_t valid = 0;        ///< the signal measures are valid
  uint8_t rssi = 0;         ///< dBµV
  uint8_t snr = 0;          ///< dB
  uint8_t FIC_quality = 0;  ///< 0 to 100
  uint8_t cnr = 0;          ///< dB
  uint16_t FIB_error_count = 0;
  uint32_t tune_freq = 0;  ///< kHz
  uint8_t tune_index = 0;  ///< in the chip's frequency list
  uint8_t fft_offset = 0;
  uint16_t readAntCap = 0;  ///< antenna tuning capacitor
  uint16_t cu_level = 0;    ///< capacity units in use
  uint8_t fast_dect = 0;    ///< metric of the fast detection of a DAB signal

  int16_t get_new_status();  ///< DAB_DIGRAD_STATUS. @return 0; the command's result with code 22.
  void print_data() const;
  int json_print_data(std::stringstream& ss) const;
};

/// Events of the ensemble. Reading clears the new_... and reconfig_... bits in the chip.
struct Si468x_DAB_event_status {
  uint8_t reconfig_event = 0, reconfig_warning = 0;
  uint8_t new_announcement_info = 0, new_freq_info = 0, new_service_list = 0;
  uint8_t freq_info_available = 0, service_list_available = 0;
  uint16_t service_list_version = 0;

  int16_t get_new_status();  ///< DAB_GET_EVENT_STATUS with acknowledge. @return 0; the command's result with code 24.
  void print_data() const;
};

// ---- DAB: service list --------------------------------------------------------------------------------------------

/// The ensemble's service list: its header, and the position of its entries in the caller's buffer.
struct Si468x_digital_service_list {
  uint16_t version = 0;
  uint8_t num_services = 0;
  uint16_t size = 0;        ///< bytes of the entries at `data`
  uint8_t* data = nullptr;  ///< the first entry

  /// Reads the list (GET_DIGITAL_SERVICE_LIST) into `list_buffer`, 4096 bytes of the caller's.
  /// @return 0; the command's result with code 26 (length) or 226 (list); -4 with code 126 (list above 4089 bytes) or
  /// 326 (below the 6 bytes of its header).
  int16_t get_new_list(uint8_t* list_buffer);
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
  uint8_t ProgramType = 0, LinkingInfo = 0, NumberComponents = 0, CAId = 0, local = 0, SICharset = 0;
  std::array<uint8_t, 16> Label{' ', ' ', ' ', ' ', ' ', ' ', ' ', ' ', ' ', ' ', ' ', ' ', ' ', ' ', ' ', ' '};
  uint8_t* components = nullptr;  ///< the first component, inside the list
  uint16_t components_size = 0;   ///< bytes from there to the end of the list

  /// Decodes service `index`, from 0. @return 0; -6 with code 27 (no such service); -4 with code 127 or 327 (header
  /// beyond the list's end), 227 (components beyond it on the way there), or 427 (components of the wanted service
  /// beyond it: the other fields are set, `components` is kept).
  int16_t get_service(const Si468x_digital_service_list* list, uint8_t index);
  int json_print_data(std::stringstream& ss, uint16_t service_no) const;
};

/// Transport mechanisms of a component.
inline constexpr uint8_t Si468x_tmid_stream_audio = 0;  ///< DAB and DAB+ audio
inline constexpr uint8_t Si468x_tmid_stream_data = 1;
inline constexpr uint8_t Si468x_tmid_fidc = 2;  ///< in the fast information channel
inline constexpr uint8_t Si468x_tmid_packet_data = 3;

/// One component of a service. Which of the ids is set depends on TMID; the others keep their value.
struct Si468x_DAB_component {
  uint32_t comp_ID = 0;
  uint8_t SubChId = 0;  ///< of streams
  uint8_t TMID = 0;
  uint8_t FIDCId = 0;  ///< of Si468x_tmid_fidc
  uint16_t SCId = 0;   ///< of Si468x_tmid_packet_data, like DGFlag
  uint8_t DGFlag = 0;
  uint8_t CA_flag = 0, ps = 0, ASCTyDSCTy = 0, muA_info_valid = 0;

  /// Decodes component `index`, from 0. @return 0; -6 with code 28 when the service or the list's bytes end before it.
  int16_t get_component(const Si468x_service_data* service, uint8_t index);
  int json_print_data(std::stringstream& ss, uint16_t component_no) const;
};

// ---- DAB: component information, data packets, time ----------------------------------------------------------------

/// One component's language, label and user applications.
struct Si468x_DAB_component_info {
  uint8_t global_id = 0, language = 0, charset_id = 0;
  std::array<uint8_t, 16> label{};  ///< not terminated
  uint16_t char_abbrev = 0;         ///< mask of the label's characters that make its short form
  uint8_t ua_count = 0;             ///< user applications
  uint8_t ua_length = 0;            ///< bytes of their area
  uint8_t* ua_data = nullptr;       ///< before get_info: 256 bytes of the caller's; after it: the area, inside them

  /// DAB_GET_COMPONENT_INFO, read twice: fixed fields, then all of it. Set `ua_data` before each call.
  /// @return 0; the command's result with code 30 or 130 (second read); -4 with code 1030 + 100 ua_length when that is
  /// above 227. The fields before `ua_data` are set, except with code 30.
  int16_t get_info(uint32_t service_id, uint32_t component_id);
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
  int16_t get_ua_data(const Si468x_DAB_component_info* info, uint8_t index);
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
  int16_t get_new_data(uint8_t* buf, uint32_t buf_size);
  void print_data() const;
};

/// Date and time of the tuned ensemble, UTC. Year 0: none.
struct Si468x_time {
  uint16_t year = 0;
  uint8_t month = 0, day = 0, hour = 0, minute = 0, second = 0;

  int16_t get_ensembletime();  ///< DAB_GET_TIME. @return 0; the command's result with code 35.
  void clean();                ///< Zeroes the record.
  int print_data() const;      ///< @return characters printed
  int json_print_data(std::stringstream& ss) const;
};

// ---- FM -----------------------------------------------------------------------------------------------------------

/// Seeks the next station (FM_SEEK_START) and waits for it like Si468x_DAB_tune_freq.
/// @return 0; the command's result with code 60; out of time, the last poll's result, 0, -1 or -2, with code 160.
int16_t Si468x_tune_next_station();

/// Received signal quality of the tuned FM station.
struct Si468x_FM_rsq_status {
  uint8_t snr_high_int = 0, snr_low_int = 0, rssi_high_int = 0, rssi_low_int = 0;
  uint8_t band_limit = 0, hd_detected = 0, hd_detected_filtered = 0, afc_railed = 0, valid = 0;
  uint16_t frequency = 0;  ///< 10 kHz
  uint8_t frequency_offset = 0;
  uint8_t rssi = 0;  ///< dBµV
  uint8_t snr = 0;   ///< dB
  uint8_t multipath = 0;
  uint16_t antenna_cap = 0;
  uint8_t hd_level = 0, hd_level_filtered = 0;

  int16_t get_status();  ///< FM_RSQ_STATUS; prints the 23 reply bytes. @return 0; the command's result with code 61.
};

/// RDS data of the tuned FM station; the record keeps nothing.
struct Si468x_FM_rds_status {
  int16_t get_status();  ///< FM_RDS_STATUS; prints the 21 reply bytes. @return 0; the command's result with code 62.
};
