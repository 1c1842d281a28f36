// SPDX-License-Identifier: GPL-3.0-or-later
// The chip's DAB frequency list, tuning by its index, and starting and stopping a service.
#include <bcm2835.h>

#include <array>
#include <optional>

#include "si468x/command_bytes.h"
#include "si468x/event_status.h"
#include "si468x/reply_view.h"
#include "si468x/seek_tune.h"
#include "si468x/si468x.h"

namespace {

// The channels of European Band III in kHz, blocks 5A to 13F.
constexpr std::array<uint32_t, 41> dab_freq_table{
    174928, 176640, 178352, 180064,                  // 5A to 5D
    181936, 183648, 185360, 187072,                  // 6A to 6D
    188928, 190640, 192352, 194064,                  // 7A to 7D
    195936, 197648, 199360, 201072,                  // 8A to 8D
    202928, 204640, 206352, 208064,                  // 9A to 9D
    209936, 210096, 211648, 213360, 215072,          // 10A, 10N, 10B to 10D
    216928, 217088, 218640, 220352, 222064,          // 11A, 11N, 11B to 11D
    223936, 224096, 225648, 227360, 229072,          // 12A, 12N, 12B to 12D
    230784, 232496, 234208, 235776, 237488, 239200,  // 13A to 13F
};

constexpr uint8_t usable_fic_quality = 30;

int16_t read_freq_list(uint8_t* reply, uint16_t reply_length) {
  std::array<uint8_t, 2> cmd{0xB9, 0x00};  // DAB_GET_FREQ_LIST
  return Si468x_send_cmd(cmd.data(), reply, cmd.size(), reply_length);
}

// START_DIGITAL_SERVICE and STOP_DIGITAL_SERVICE differ only in the opcode.
int16_t command_service(uint8_t opcode, uint8_t service_type, uint32_t service_id, uint32_t component_id) {
  std::array<uint8_t, 12> cmd{opcode, service_type};  // bytes 2 and 3 are 0
  put_le32(&cmd[4], service_id);
  put_le32(&cmd[8], component_id);
  return Si468x_send_cmd(cmd.data(), nullptr, cmd.size(), 0);
}

// A list is stable when one poll reports it as new and a later one reports the same version still available.
// Returns 1, or the failure of Si468x_DAB_tune_freq_save.
int16_t wait_for_stable_service_list() {
  constexpr int polls = 50;
  constexpr unsigned poll_ms = 200;
  std::optional<uint16_t> remembered;
  for (int poll = 0; poll < polls; ++poll) {
    Si468x_DAB_event_status events;
    if (const int16_t r = read_events(events); r != 0) return Si468x_failure(r < -1 ? r : int16_t{-2}, 265);
    if (events.service_list_available != 0) {
      if (events.service_list_version == remembered) return 1;
      if (events.new_service_list != 0) remembered = events.service_list_version;
    }
    bcm2835_delay(poll_ms);
  }
  return Si468x_failure(-1, 365);
}

}  // namespace

int16_t Si468x_DAB_set_freq_list() {
  std::array<uint8_t, 4 + 4 * dab_freq_table.size()> cmd{0xB8, dab_freq_table.size()};  // DAB_SET_FREQ_LIST
  for (size_t i = 0; i < dab_freq_table.size(); ++i) put_le32(&cmd[4 + 4 * i], dab_freq_table[i]);
  if (const int16_t r = Si468x_send_cmd(cmd.data(), nullptr, cmd.size(), 0); r != 0) return Si468x_failure(r, 20);
  return 0;
}

int16_t Si468x_DAB_get_freq_list(uint32_t* freqs, uint8_t* count, uint8_t capacity) {
  *count = 0;
  std::array<uint8_t, 6> head{};
  if (const int16_t r = read_freq_list(head.data(), head.size()); r != 0) return Si468x_failure(r, 19);
  *count = Reply_view(head).u8(4);

  std::array<uint8_t, 4105> reply{};  // room for 1024 frequencies; the count is one byte, 255 at most
  const auto reply_length = static_cast<uint16_t>(9 + 4 * *count);
  if (const int16_t r = read_freq_list(reply.data(), reply_length); r != 0) return Si468x_failure(r, 119);
  const Reply_view list({reply.data(), reply_length});
  const int16_t kept = Si468x_min(*count, capacity);
  for (int16_t i = 0; i < kept; ++i) freqs[i] = list.u32(8 + 4 * static_cast<size_t>(i));
  return 0;
}

int16_t Si468x_DAB_tune_freq(uint8_t index) {
  // DAB_TUNE_FREQ: no options; antenna capacitor value 0 leaves the capacitor to the chip
  std::array<uint8_t, 6> cmd{0xB0, 0x00, index, 0x00, 0x00, 0x00};
  if (const int16_t r = Si468x_send_cmd(cmd.data(), nullptr, cmd.size(), 0); r != 0) return Si468x_failure(r, 21);
  return wait_for_seek_tune_complete(121);
}

int16_t Si468x_DAB_tune_freq_save(uint8_t index, Si468x_DAB_digrad_status& status) {
  // -1 means that the list was not stable in time; failed steps return -2 instead.
  if (const int16_t r = Si468x_DAB_tune_freq(index); r != 0) return Si468x_failure(r < -1 ? r : int16_t{-2}, 65);
  if (const int16_t r = status.get_new_status(); r != 0) return Si468x_failure(r < -1 ? r : int16_t{-2}, 165);
  if (status.valid == 0 || status.FIC_quality < usable_fic_quality) return 0;
  return wait_for_stable_service_list();
}

int16_t Si468x_start_digital_service(uint8_t service_type, uint32_t service_id, uint32_t component_id) {
  if (const int16_t r = command_service(0x81, service_type, service_id, component_id); r != 0)
    return Si468x_failure(r, 32);
  return 0;
}

int16_t Si468x_stop_digital_service(uint8_t service_type, uint32_t service_id, uint32_t component_id) {
  if (const int16_t r = command_service(0x82, service_type, service_id, component_id); r != 0)
    return Si468x_failure(r, 33);
  return 0;
}
