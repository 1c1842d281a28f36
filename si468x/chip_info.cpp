// SPDX-License-Identifier: GPL-3.0-or-later
// Live status, part, running image and its revision.
#include <array>
#include <cstdio>
#include <iterator>

#include "si468x/command.h"
#include "si468x/record_fields.h"
#include "si468x/si468x.h"

namespace {

using Info = Si468x_chip_info;

// clang-format off
constexpr Field<Info> status_fields[] = {
    field<&Info::clear_to_send,                  0, 7, 1>("Clear to send:"),
    field<&Info::command_error,                  0, 6, 1>("Command error:"),
    field<&Info::digital_radio_link_change_int,  0, 5, 1>("Digital radio link change interrupt:"),
    field<&Info::data_component_int,             0, 4, 1>("Data component interrupt:"),
    field<&Info::seek_tune_complete,             0, 0, 1>("Seek/Tune complete:"),
    field<&Info::digital_radio_event_change_int, 1, 5, 1>("Digital radio event change interrupt:"),
    field<&Info::powerup_state,                  3, 6, 2>("Powerup state:"),
    field<&Info::dsp_frame_overrun,              3, 4, 1>("DSP frame overrun:"),
    field<&Info::read_reply_data_dropped,        3, 3, 1>("Data dropped during read reply:"),
    field<&Info::command_write_data_dropped,     3, 2, 1>("Dropped data during command write:"),
    field<&Info::arbiter_error,                  3, 1, 1>("Arbiter error:"),
    field<&Info::non_recoverable_error,          3, 0, 1>("Non-recoverable error:"),
};

constexpr Field<Info> part_fields[] = {
    field<&Info::chip_mask_revision, 4, 0,  8>("Chip Mask Revision:"),
    field<&Info::rom_id,             5, 0,  8>("ROM ID:"),
    field<&Info::part_number,        8, 0, 16>("Part Number:"),
};

constexpr Field<Info> image_fields[] = {
    field<&Info::image, 4, 0, 8>(),
};

constexpr Field<Info> revision_fields[] = {
    field<&Info::revision_major, 4, 0, 8>(),
    field<&Info::revision_minor, 5, 0, 8>(),
    field<&Info::revision_build, 6, 0, 8>(),
};

constexpr Field<Info> build_fields[] = {
    field<&Info::no_svn_info,         7, 7, 1>("No SVN info:"),
    field<&Info::mixed_revisions,     7, 1, 1>("Mixed revisions:"),
    field<&Info::local_modifications, 7, 0, 1>("Local modifications:"),
};

constexpr Field<Info> svn_fields[] = {  // meaningful only in an image with version-control information
    field<&Info::build_location, 7, 4,  2>("Build location:"),
    field<&Info::svn_id,         8, 0, 32>("SVN ID:"),
};
// clang-format on

constexpr const char* image_names[] = {"Bootloader", "FMHD", "DAB",        "TDMB or data only DAB",
                                       "FMHD Demod", "AMHD", "AMHD Demod", "DAB Demod"};

const char* image_name(uint8_t image) { return image < std::size(image_names) ? image_names[image] : "unknown"; }

}  // namespace

int16_t Si468x_chip_info::get_status() {
  auto reply = command<7>(Opcode::RD_REPLY);
  if (Si468x_SPI_RW_data(reply.data(), reply.size()) != 0) return Si468x_failure(-1, 11);
  decode<status_fields>(*this, reply);
  return 0;
}

int16_t Si468x_chip_info::get_part_info() {
  std::array<uint8_t, 24> reply{};
  if (const int16_t r = query(Opcode::GET_PART_INFO, 0x00, reply); r != 0) return Si468x_failure(r, 21);
  decode<part_fields>(*this, reply);
  return 0;
}

int16_t Si468x_chip_info::get_sys_state() {
  std::array<uint8_t, 7> reply{};
  if (const int16_t r = query(Opcode::GET_SYS_STATE, 0x00, reply); r != 0) return Si468x_failure(r, 12);
  decode<image_fields>(*this, reply);
  return 0;
}

int16_t Si468x_chip_info::get_func_info() {
  std::array<uint8_t, 13> reply{};
  if (const int16_t r = query(Opcode::GET_FUNC_INFO, 0x00, reply); r != 0) return Si468x_failure(r, 13);
  decode<revision_fields>(*this, reply);
  decode<build_fields>(*this, reply);
  if (no_svn_info == 0) decode<svn_fields>(*this, reply);
  return 0;
}

void Si468x_chip_info::print_data() const {
  std::puts("Chip info ---------------------------- ");
  print_fields<status_fields>(*this);
  print_fields<part_fields>(*this);
  print_label("Firmware image running the sysstate CMD:");
  std::puts(image_name(image));
  print_label("Revision number:");
  std::printf("%u.%u.%u\n", revision_major, revision_minor, revision_build);
  print_fields<build_fields>(*this);
  print_fields<svn_fields>(*this);
}
