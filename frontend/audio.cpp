// SPDX-License-Identifier: GPL-3.0-or-later
// Audio output and volume: chip properties, and the messages of the volume.
#include "frontend/audio.h"

#include <cstdio>

#include "si468x/si468x.h"

char buffer[5000];

namespace {

constexpr uint32_t loudest = 63;
constexpr size_t longest_message = 100;

}  // namespace

int16_t set_properties_output(uint8_t enable) {
  const uint16_t settings[][2] = {
      {Si468x_digital_output_mode, 0x8000},
      {Si468x_audio_output, enable != 0 ? Si468x_i2s_output : Si468x_analogue_output},
      {Si468x_digital_output_format, 0x1000},
  };
  for (const auto& setting : settings)
    if (Si468x_set_property(setting) != 0) return -1;
  return 0;
}

int16_t set_volume(uint32_t level) {
  if (level > loudest) {
    std::snprintf(buffer, longest_message, "%s",
                  "Illegal value for volume. Volume must be an integer between 0 and 63\n");
    std::puts(buffer);
    return 0;
  }
  std::snprintf(buffer, longest_message, "Setting volume to %d\n", static_cast<int>(level));
  std::puts(buffer);
  const uint16_t volume[2] = {Si468x_audio_volume, static_cast<uint16_t>(level)};
  static_cast<void>(Si468x_set_property(volume));  // fails silently; the chip keeps its volume
  return 0;
}
