// SPDX-License-Identifier: GPL-3.0-or-later
// Power-up, image download, boot, power-down.
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>

#include "si468x/command.h"
#include "si468x/reply_view.h"
#include "si468x/si468x.h"

namespace {

// STATUS3 as a whole: power-up state and no error.
constexpr uint8_t status3_after_power_up = Si468x_bootloader_runs << 6;
constexpr uint8_t status3_after_boot = Si468x_application_runs << 6;

constexpr uint32_t chunk_size = 4092;  // with its header 4096 bytes, the longest command of the chip

// Sends a command whose reply contains the power-up state.
int16_t change_state(std::span<uint8_t> cmd, uint8_t& status3) {
  std::array<uint8_t, 5> reply{};
  const int16_t r = send(cmd, reply);
  status3 = Reply_view(reply).status3();
  return r;
}

// Sends an image of `size` bytes. `fill(staging, n)` supplies the next n bytes; it returns 0, or a failure after
// recording its code. The image is copied because a transfer overwrites the bytes sent.
template <typename Fill>
int16_t download(size_t size, uint32_t chunk_failed, Fill fill) {
  std::array<uint8_t, chunk_size> staging{};
  for (size_t remaining = size; remaining > 0;) {
    const auto n = static_cast<uint32_t>(std::min<size_t>(chunk_size, remaining));
    if (const int16_t r = fill(staging.data(), n); r != 0) return r;
    if (const int16_t r = Si468x_load_firmware_datapackage(staging.data(), n); r != 0)
      return Si468x_failure(r, chunk_failed);
    remaining -= n;
  }
  return 0;
}

int16_t download_file(std::FILE* file) {
  const long size = std::fseek(file, 0, SEEK_END) == 0 ? std::ftell(file) : -1;
  if (size <= 0) return Si468x_failure(-6, 107);
  std::rewind(file);
  return download(static_cast<size_t>(size), 207, [file, chunk = 0u](uint8_t* staging, uint32_t n) mutable -> int16_t {
    if (std::fread(staging, 1, n, file) != n) return Si468x_failure(-6, 1007 + 100 * chunk);
    ++chunk;
    return 0;
  });
}

}  // namespace

int16_t Si468x_power_up() {
  auto cmd = command<16>(Opcode::POWER_UP,
                         0x00,                    // no interrupt on clear-to-send
                         0x1F,                    // clock mode 1, crystal; trim size 15
                         0x7F,                    // crystal start-up bias
                         0x00, 0xF8, 0x24, 0x01,  // crystal frequency, 19 200 000 Hz
                         0x20,                    // crystal tuning capacitance
                         0x10, 0x00, 0x00, 0x00,  // fixed
                         0x18);                   // crystal running bias
  uint8_t status3 = 0;
  if (const int16_t r = change_state(cmd, status3); r != 0) return Si468x_failure(r, 4);
  if (status3 != status3_after_power_up) return Si468x_failure(-5, 104);
  return 0;
}

int16_t Si468x_load_init() {
  auto cmd = command<2>(Opcode::LOAD_INIT);
  return send(cmd);
}

int16_t Si468x_load_firmware_datapackage(uint8_t* data, uint32_t len) {
  constexpr uint32_t cts_polls = 50;
  constexpr uint32_t first_pause_us = 50;
  constexpr uint32_t pause_step_us = 100;

  auto header = command<4>(Opcode::HOST_LOAD);
  Si468x_SPI_CS_low();
  Si468x_SPI_RW_data_noCS(header.data(), header.size());
  Si468x_SPI_RW_data_noCS(data, static_cast<uint16_t>(len));
  Si468x_SPI_CS_high();

  std::array<uint8_t, 7> status{};
  const Reply_view polled(status);
  const bool clear_to_send = poll_until(cts_polls, first_pause_us, pause_step_us, [&](uint32_t) {
    return Si468x_read_reply(status.data(), status.size()) == 0 && polled.clear_to_send();
  });
  if (!clear_to_send) return Si468x_failure(-3, 160);
  if (const int16_t r = polled.status_result(); r != 0) return Si468x_failure(r, 260);
  return 0;
}

int16_t Si468x_load_firmware_static(const uint8_t* image, uint32_t size) {
  if (size == 0) return Si468x_failure(-6, 8);
  return download(size, 108, [next = image](uint8_t* staging, uint32_t n) mutable -> int16_t {
    std::memcpy(staging, next, n);
    next += n;
    return 0;
  });
}

int16_t Si468x_load_firmware(const char* path) {
  std::FILE* const file = std::fopen(path, "rb");
  if (file == nullptr) return Si468x_failure(-6, 7);
  const int16_t r = download_file(file);
  static_cast<void>(std::fclose(file));  // result ignored: the file was only read
  return r;
}

int16_t Si468x_load_firmware_flash(uint32_t address) {
  auto cmd = command<12>(Opcode::FLASH_LOAD);  // bytes 1 to 3 and 8 to 11 are 0
  put_le32(&cmd[4], address);
  if (Si468x_SPI_RW_data(cmd.data(), cmd.size()) != 0) return Si468x_failure(-1, 9);
  return 0;
}

int16_t Si468x_boot() {
  auto cmd = command<2>(Opcode::BOOT);
  uint8_t status3 = 0;
  if (const int16_t r = change_state(cmd, status3); r != 0) return Si468x_failure(r, 10);
  if (status3 != status3_after_boot) return Si468x_failure(-4, 110);
  return 0;
}

void Si468x_power_down() {
  Si468x_SPI_RSTB_low();
  Si468x_SPI_shutdown();
}
