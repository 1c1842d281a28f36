// SPDX-License-Identifier: GPL-3.0-or-later
// A component's language, label and user applications.
#include <array>
#include <cstdio>

#include "si468x/command.h"
#include "si468x/record_fields.h"
#include "si468x/si468x.h"

namespace {

using Info = Si468x_DAB_component_info;

constexpr uint16_t fixed_length = 29;       // of the reply, leading byte included; the user applications follow
constexpr uint8_t longest_ua_length = 227;  // fills the reply's 256 bytes

// clang-format off
constexpr Field<Info> info_fields[] = {
    field<&Info::global_id,    4, 0,  8>("Global ID:"),
    field<&Info::language,     6, 0,  6>("Language:"),
    field<&Info::charset_id,   7, 0,  6>("charsetID:"),
    text< &Info::label,         8>(        "Label:"),
    field<&Info::char_abbrev, 24, 0, 16>("Char abrev:"),
    field<&Info::ua_count,    26, 0,  8>("Number user application data:"),
    field<&Info::ua_length,   27, 0,  8>("Length user application data:"),
};
// clang-format on

int16_t read_component(uint32_t service_id, uint32_t component_id, std::span<uint8_t> reply) {
  auto cmd = command<12>(Opcode::DAB_GET_COMPONENT_INFO);  // bytes 1 to 3 are 0
  put_le32(&cmd[4], service_id);
  put_le32(&cmd[8], component_id);
  return send(cmd, reply);
}

// User application entry: type (2 bytes), length L (1 byte), L bytes, and a pad byte of 0 where L is even.
constexpr size_t ua_header = 3;

bool has_pad(uint8_t length) { return length % 2 == 0; }

// The pad byte is inside the area and is 0.
bool pad_is_good(const Bytes_view& area, size_t pad) { return area.holds(pad, 1) && area.u8(pad) == 0; }

}  // namespace

int16_t Si468x_DAB_component_info::get_info(uint32_t service_id, uint32_t component_id) {
  std::array<uint8_t, fixed_length> head{};
  if (const int16_t r = read_component(service_id, component_id, head); r != 0) return Si468x_failure(r, 30);
  decode<info_fields>(*this, head);
  if (ua_length > longest_ua_length) return Si468x_failure(-4, 1030 + 100 * uint32_t{ua_length});

  const std::span<uint8_t> whole(ua_data, size_t{fixed_length} + ua_length);
  if (const int16_t r = read_component(service_id, component_id, whole); r != 0) return Si468x_failure(r, 130);
  ua_data += fixed_length;
  return 0;
}

int16_t Si468x_user_application_data::get_ua_data(const Si468x_DAB_component_info* info, uint8_t index) {
  if (index >= info->ua_count) return Si468x_failure(-6, 31);
  const Bytes_view area({info->ua_data, info->ua_data == nullptr ? size_t{0} : info->ua_length});
  const auto header_fits = [&](size_t entry) { return area.holds(entry, ua_header); };
  const auto data_fits = [&](size_t entry) { return area.holds(entry + ua_header, area.u8(entry + 2)); };

  size_t entry = 0;
  for (uint8_t i = 0; i < index; ++i) {
    if (!header_fits(entry)) return Si468x_failure(-6, 131);
    if (!data_fits(entry)) return Si468x_failure(-6, 1031 + 100 * uint32_t{area.u8(entry)});
    const uint8_t entry_length = area.u8(entry + 2);
    entry += ua_header + entry_length;
    if (has_pad(entry_length)) {
      if (!pad_is_good(area, entry)) return Si468x_failure(-6, 231);
      ++entry;
    }
  }
  if (!header_fits(entry)) return Si468x_failure(-6, 131);
  if (!data_fits(entry)) return Si468x_failure(-6, 1131 + 100 * uint32_t{area.u8(entry)});

  type = area.u16(entry);
  length = area.u8(entry + 2);
  if (has_pad(length) && !pad_is_good(area, entry + ua_header + length)) return Si468x_failure(-6, 331);
  data = info->ua_data + entry + ua_header;
  return 0;
}

void Si468x_DAB_component_info::print_info() const {
  std::puts("DAB component info ------------------- ");
  print_fields<info_fields>(*this);
  for (uint8_t i = 0; i < ua_count; ++i) {
    Si468x_user_application_data application;
    if (application.get_ua_data(this, i) != 0) return;
    print_line("User application no:", i);
    print_line("User application type:", application.type);
    print_line("User application length:", application.length);
    print_label("  User application data:");
    Si468x_hex_print(application.data, application.length, "");
  }
  std::putchar('\n');
}
