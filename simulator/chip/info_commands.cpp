// SPDX-License-Identifier: GPL-3.0-or-later
// Commands of every application: chip and image information, properties.
#include "simulator/chip/command_table.h"

namespace sim {

namespace {

constexpr unsigned mask_revision = 2;
constexpr unsigned rom_id = 5;
constexpr unsigned part_number = 4684;

// What each application image reports about itself.
struct Image_info {
  uint8_t number;  // as GET_SYS_STATE reports it
  unsigned major, minor, build;
  unsigned flags;  // N.LL..ml   N no revision id, LL build location, m mixed revisions, l local modifications
  uint32_t revision_id;
};

constexpr unsigned location(unsigned number) { return number << 4; }
constexpr unsigned mixed_revisions = 0x02;
constexpr unsigned local_modifications = 0x01;

constexpr Image_info dab_image = {
    .number = 2, .major = 5, .minor = 0, .build = 5, .flags = location(2) | mixed_revisions, .revision_id = 119491};
constexpr Image_info fm_image = {
    .number = 1, .major = 5, .minor = 0, .build = 4, .flags = location(3) | local_modifications, .revision_id = 118203};

const Image_info& running_image(const Chip_core& chip) { return chip.mode == Mode::dab ? dab_image : fm_image; }

}  // namespace

Answer get_part_info(Chip_core& /*chip*/, Bytes command) {
  if (command[1] != 0) return refuse("argument byte is not 0");
  std::vector<uint8_t> response;
  put8(response, mask_revision);
  put8(response, rom_id);
  put16(response, 0);
  put16(response, part_number);
  response.resize(19);  // the rest is reserved
  return {.response = response};
}

Answer get_sys_state(Chip_core& chip, Bytes command) {
  if (command[1] != 0) return refuse("argument byte is not 0");
  return {.response = {chip.mode == Mode::bootloader ? uint8_t{0} : running_image(chip).number, 0}};
}

Answer get_func_info(Chip_core& chip, Bytes command) {
  if (command[1] != 0) return refuse("argument byte is not 0");
  const Image_info& image = running_image(chip);
  std::vector<uint8_t> response;
  put8(response, image.major);
  put8(response, image.minor);
  put8(response, image.build);
  put8(response, image.flags);
  put32(response, image.revision_id);
  return {.response = response};
}

Answer set_property(Chip_core& chip, Bytes command) {
  if (command[1] != 0) return refuse("argument byte is not 0");
  const uint16_t id = le16(command, 2);
  const uint16_t value = le16(command, 4);
  if (!chip.properties.get(id)) return refuse("the running image has no property " + std::to_string(id));
  if (!chip.properties.accepts(id, value))
    return refuse("property " + std::to_string(id) + " does not take the value " + std::to_string(value));
  chip.properties.set(id, value);
  return {};
}

Answer get_property(Chip_core& chip, Bytes command) {
  constexpr uint8_t one_property = 1;
  if (command[1] != one_property) return refuse("only one property can be read at a time");
  const uint16_t id = le16(command, 2);
  const std::optional<uint16_t> value = chip.properties.get(id);
  if (!value) return refuse("the running image has no property " + std::to_string(id));
  std::vector<uint8_t> response;
  put16(response, *value);
  return {.response = response};
}

}  // namespace sim
