// SPDX-License-Identifier: GPL-3.0-or-later
//
// The driver of the Si468x digital radio receiver: the one header to include.
//
// A run, in order; examples/receive.cpp is a program of these steps:
//   1. Si468x_bus_init.
//   2. To boot: Si468x_reset, Si468x_power_up; Si468x_load_init and a download of the ROM patch, a pause of
//      Si468x_patch_settle_ms; Si468x_load_init and a download of the application image, a pause of
//      Si468x_image_settle_ms; Si468x_boot. A download is Si468x_load_firmware_static or Si468x_load_firmware. The chip
//      maker's files are rom00_patch.016.bin and, as the application, dab_radio_5_0_5.bin or fmhd_radio_5_0_4.bin. To
//      change from DAB to FM, boot again. (The simulated chip only counts the bytes: 5796, 521448, 530180.)
//   3. To receive DAB: Si468x_DAB_tune_freq; read Si468x_DAB_digrad_status every 200 ms for 3 s or until `acq` is set;
//      read Si468x_DAB_event_status every 200 ms for 10 s or until `service_list_available` is set; then read the
//      service list and start a service. Si468x_DAB_tune_freq_save does all of this but the last two steps. Services
//      and the service list do not exist before. Tuning is by index into the chip's frequency list. A booted DAB image
//      has a list of its own, on the simulated board the 41 frequencies of Band III; Si468x_DAB_set_freq_list replaces
//      it and is not needed. To receive FM: fm.h.
//   4. The chip keeps its image, tuning, services and properties when the program ends. Si468x_SPI_shutdown closes the
//      link alone, and Si468x_bus_init may open it again; Si468x_power_down puts the chip into reset, too.
// Pauses, also those between polls, are made with bcm2835_delay, so that a program also runs on the simulated board:
// include <bcm2835.h>. The headers need C++17.
//
// Results. An operation returns 0 on success and a negative number on failure. A command (Si468x_send_cmd) returns
// -1 for data lost on the link or an arbiter error, -2 for a refused command or a non-recoverable error, -3 for no
// clear-to-send in time, -6 for no reply buffer; "the command's result" below is one of these, passed on. Other results
// are documented with each operation. Each failure stores its own code in Si468x_ErrorCode; error-codes.md, beside this
// library's examples, lists them. Success stores none: a tune and a seek that run out of time may return 0, so set
// Si468x_ErrorCode to 0 before them and compare it with 121 or 160 after them. Each operation that can fail is
// [[nodiscard]]. Only reports print.
//
// Buffers. A command is sent in place: the buffer then holds the bytes received during the transfer. A reply buffer
// holds one meaningless byte first, clocked in with the read opcode; then STATUS0 to STATUS3; then the command's data.
// Multi-byte values are little-endian on the wire. Records own nothing: a pointer in a record points into a buffer of
// the caller.
//
// Records. A new record is all zero (a service's label all blanks). A get_... method fills it from one reply of the
// chip and leaves it unchanged when it fails, except where documented. The print_... methods, the two FM get_status
// methods and Si468x_hex_print write text to standard output. json_print_data appends to a stream (include <sstream>),
// without a comma before or after it, and returns 0: for a service or component an object, {...}; else a member of an
// object, "DigradStatus": {...}, "DigitalServiceList": {...} or "ensembleTime": {...}. Labels are written as they are;
// their bytes may be invalid JSON.
//
// One thread; each operation ends its exchange with the chip before it returns.
#pragma once

#include <array>
#include <cstdint>
#include <iosfwd>

#include "si468x/bus.h"
#include "si468x/dab_services.h"
#include "si468x/fm.h"
#include "si468x/protocol.h"
#include "si468x/spi/spi_link.h"

// ---- Power-up, firmware, boot -------------------------------------------------------------------------------------

inline constexpr unsigned Si468x_patch_settle_ms = 50;   ///< pause after the download of the ROM patch
inline constexpr unsigned Si468x_image_settle_ms = 100;  ///< pause between the download of the application and its boot

/// Powers the chip up with the board's 19.2 MHz crystal (POWER_UP) and expects its bootloader to run.
/// @return 0; the command's result with code 4; -5 with code 104 when STATUS3 is not 0x80.
[[nodiscard]] int16_t Si468x_power_up();

/// Announces an image to the bootloader (LOAD_INIT); needed before each. @return 0, or the command's result and code.
[[nodiscard]] int16_t Si468x_load_init();

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

inline constexpr uint8_t Si468x_fm_image = 1;  ///< running images
inline constexpr uint8_t Si468x_dab_image = 2;

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

  [[nodiscard]] int16_t get_status();  ///< Reads the status bytes, sending no command. @return 0; -1 with code 11.
  [[nodiscard]] int16_t
  get_part_info();  ///< GET_PART_INFO: mask revision, ROM id, part number. @return 0; the result with code 21.
  [[nodiscard]] int16_t
  get_sys_state();  ///< GET_SYS_STATE: running image. @return 0; the command's result with code 12.
  [[nodiscard]] int16_t
  get_func_info();  ///< GET_FUNC_INFO: revision of the image. @return 0; the command's result with code 13.
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
[[nodiscard]] int16_t Si468x_set_property(const uint16_t* prop);

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
[[nodiscard]] int16_t Si468x_DAB_tune_freq(uint8_t index);

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

// ---- DAB: status, events, time ------------------------------------------------------------------------------------

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

  [[nodiscard]] int16_t get_new_status();  ///< DAB_DIGRAD_STATUS. @return 0; the command's result with code 22.
  void print_data() const;
  int json_print_data(std::stringstream& ss) const;
};

/// Events of the ensemble. Reading clears the new_... and reconfig_... bits in the chip.
struct Si468x_DAB_event_status {
  uint8_t reconfig_event = 0, reconfig_warning = 0;
  uint8_t new_announcement_info = 0, new_freq_info = 0, new_service_list = 0;
  uint8_t freq_info_available = 0, service_list_available = 0;
  uint16_t service_list_version = 0;

  [[nodiscard]] int16_t
  get_new_status();  ///< DAB_GET_EVENT_STATUS with acknowledge. @return 0; the command's result with code 24.
  void print_data() const;
};

/// Date and time of the tuned ensemble, UTC. Year 0: none.
struct Si468x_time {
  uint16_t year = 0;
  uint8_t month = 0, day = 0, hour = 0, minute = 0, second = 0;

  [[nodiscard]] int16_t get_ensembletime();  ///< DAB_GET_TIME. @return 0; the command's result with code 35.
  void clean();                              ///< Zeroes the record.
  int print_data() const;                    ///< @return characters printed
  int json_print_data(std::stringstream& ss) const;
};
