// SPDX-License-Identifier: GPL-3.0-or-later
// Commands that boot the chip: power-up, download of the images, start of the application.
#include <algorithm>
#include <array>

#include "simulator/chip/command_table.h"

namespace sim {

namespace {

// The one set of clock arguments that fits the board's 19.2 MHz crystal.
constexpr std::array<uint8_t, 16> power_up_command = {0x01,
                                                      0x00,                    // no interrupt at clear-to-send
                                                      0x1F,                    // crystal oscillator, trim size 15
                                                      0x7F,                    // start-up bias 127
                                                      0x00, 0xF8, 0x24, 0x01,  // 19 200 000 Hz
                                                      0x20,                    // tuning capacitance 32
                                                      0x10,                    // fixed
                                                      0x00, 0x00, 0x00,
                                                      0x18,  // running bias 24
                                                      0x00, 0x00};

void expect_pause(Chip_core& chip, Time pause, const char* after) {
  const Time now = chip.clock.now();
  if (now - chip.bootloader.last_chunk >= pause) return;
  using std::chrono::floor, std::chrono::milliseconds;
  chip.observer.event(now, event::mistake,
                      std::string("no pause of ") + std::to_string(floor<milliseconds>(pause).count()) +
                          " ms after the download of the " + after);
}

}  // namespace

Answer power_up(Chip_core& chip, Bytes command) {
  const auto differs = std::mismatch(command.begin(), command.end(), power_up_command.begin()).first;
  if (differs != command.end())
    return refuse("argument byte " + std::to_string(differs - command.begin()) + " does not fit the board's crystal");
  chip.bootloader = {};
  chip.mode = Mode::bootloader;
  return {};
}

Answer load_init(Chip_core& chip, Bytes command) {
  if (command[1] != 0) return refuse("argument byte is not 0");
  Bootloader& loader = chip.bootloader;
  loader.downloads += 1;
  if (loader.downloads == 2) {
    loader.first = loader.received;
    expect_pause(chip, Bootloader::patch_settles, "ROM patch");
  }
  loader.loading = true;
  loader.received = 0;
  return {};
}

// 4 header bytes, then image bytes.
Answer host_load(Chip_core& chip, Bytes command) {
  if (command[1] != 0 || command[2] != 0 || command[3] != 0) return refuse("header bytes are not 0");
  Bootloader& loader = chip.bootloader;
  if (!loader.loading) return refuse("no download was opened with LOAD_INIT");
  loader.received += static_cast<uint32_t>(command.size() - 4);
  loader.last_chunk = chip.clock.now();
  return {};
}

Answer flash_load(Chip_core& /*chip*/, Bytes /*command*/) { return refuse("no flash memory is attached to the chip"); }

Answer boot(Chip_core& chip, Bytes command) {
  if (command[1] != 0) return refuse("argument byte is not 0");
  const Bootloader& loader = chip.bootloader;
  if (loader.downloads != 2 || loader.first != Bootloader::rom_patch_size)
    return refuse("BOOT needs the ROM patch, then one application image");
  if (loader.received != Bootloader::dab_image_size && loader.received != Bootloader::fm_image_size)
    return refuse("the application image is not complete (" + std::to_string(loader.received) + " bytes)");
  expect_pause(chip, Bootloader::image_settles, "application image");
  chip.mode = loader.received == Bootloader::dab_image_size ? Mode::dab : Mode::fm;
  chip.properties.reset(chip.mode);
  chip.dab.reset();
  chip.fm.reset();
  return {};
}

}  // namespace sim
