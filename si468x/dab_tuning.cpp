// SPDX-License-Identifier: GPL-3.0-or-later
// The chip's DAB frequency list, tuning by its index, and starting and stopping a service.
#include <bcm2835.h>

#include <array>
#include <optional>

#include "si468x/command.h"
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

// START_DIGITAL_SERVICE and STOP_DIGITAL_SERVICE differ only in the opcode.
int16_t command_service(Opcode opcode, uint8_t service_type, uint32_t service_id, uint32_t component_id) {
  auto cmd = command<12>(opcode, service_type);  // bytes 2 and 3 are 0
  put_le32(&cmd[4], service_id);
  put_le32(&cmd[8], component_id);
  return send(cmd);
}

// A failed step of the scan: -2 or less, since -1 means that the list was not stable in time.
int16_t failed_step(int16_t result, uint32_t code) { return Si468x_failure(result < -1 ? result : int16_t{-2}, code); }

// A list is stable when one poll reports it as new and a later one reports the same version still available.
// Returns 1, or the failure of Si468x_DAB_tune_freq_save.
int16_t wait_for_stable_service_list() {
  constexpr int polls = 50;
  constexpr unsigned poll_ms = 200;
  std::optional<uint16_t> remembered;
  for (int poll = 0; poll < polls; ++poll) {
    Si468x_DAB_event_status events;
    if (const int16_t r = events.get_new_status(); r != 0) return failed_step(r, 265);
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
  auto cmd = command<4 + 4 * dab_freq_table.size()>(Opcode::DAB_SET_FREQ_LIST, dab_freq_table.size());
  for (size_t i = 0; i < dab_freq_table.size(); ++i) put_le32(&cmd[4 + 4 * i], dab_freq_table[i]);
  if (const int16_t r = send(cmd); r != 0) return Si468x_failure(r, 20);
  return 0;
}

int16_t Si468x_DAB_get_freq_list(uint32_t* freqs, uint8_t* count, uint8_t capacity) {
  *count = 0;
  std::array<uint8_t, 6> head{};
  if (const int16_t r = query(Opcode::DAB_GET_FREQ_LIST, 0x00, head); r != 0) return Si468x_failure(r, 19);
  *count = Reply_view(head).u8(4);

  std::array<uint8_t, 9 + 4 * 255> longest{};
  const auto reply = std::span(longest).first(9 + 4 * size_t{*count});
  if (const int16_t r = query(Opcode::DAB_GET_FREQ_LIST, 0x00, reply); r != 0) return Si468x_failure(r, 119);
  const Reply_view list(reply);
  const int16_t kept = Si468x_min(*count, capacity);
  for (int16_t i = 0; i < kept; ++i) freqs[i] = list.u32(8 + 4 * static_cast<size_t>(i));
  return 0;
}

int16_t Si468x_DAB_tune_freq(uint8_t index) {
  auto cmd = command<6>(Opcode::DAB_TUNE_FREQ, 0x00, index);  // antenna capacitor 0: the chip chooses its value
  if (const int16_t r = send(cmd); r != 0) return Si468x_failure(r, 21);
  return wait_for_seek_tune_complete(121);
}

int16_t Si468x_DAB_tune_freq_save(uint8_t index, Si468x_DAB_digrad_status& status) {
  if (const int16_t r = Si468x_DAB_tune_freq(index); r != 0) return failed_step(r, 65);
  if (const int16_t r = status.get_new_status(); r != 0) return failed_step(r, 165);
  if (status.valid == 0 || status.FIC_quality < usable_fic_quality) return 0;
  return wait_for_stable_service_list();
}

int16_t Si468x_start_digital_service(uint8_t service_type, uint32_t service_id, uint32_t component_id) {
  if (const int16_t r = command_service(Opcode::START_DIGITAL_SERVICE, service_type, service_id, component_id); r != 0)
    return Si468x_failure(r, 32);
  return 0;
}

int16_t Si468x_stop_digital_service(uint8_t service_type, uint32_t service_id, uint32_t component_id) {
  if (const int16_t r = command_service(Opcode::STOP_DIGITAL_SERVICE, service_type, service_id, component_id); r != 0)
    return Si468x_failure(r, 33);
  return 0;
}
