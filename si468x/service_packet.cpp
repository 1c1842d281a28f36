// SPDX-License-Identifier: GPL-3.0-or-later
// The packets of a started data service, fetched one at a time.
#include <array>
#include <cstdio>
#include <span>

#include "si468x/command.h"
#include "si468x/record_fields.h"
#include "si468x/si468x.h"

namespace {

using Packet = Si468x_digital_service_data;

constexpr uint16_t header_length = 25;  // of the reply, including its leading byte; the payload follows
constexpr uint32_t pause_us = 10;

// clang-format off
constexpr Field<Packet> header_fields[] = {
    field<&Packet::overflow,        4, 1,  1>("Overflow occured:"),
    field<&Packet::packet_ready,    4, 0,  1>("Data ready for transfer:"),
    field<&Packet::buffer_count,    5, 0,  8>("In buffer remaining data:"),
    field<&Packet::srv_state,       6, 0,  8>("SRV state:"),
    field<&Packet::data_source,     7, 6,  2>("Payload source:"),
    field<&Packet::dscty,           7, 0,  6>("DSCTy:"),
    field<&Packet::service_id,      8, 0, 32>("Service ID:"),
    field<&Packet::component_id,   12, 0, 32>("Component ID:"),
    field<&Packet::byte_count,     18, 0, 16>("Byte count:"),
    field<&Packet::segment_number, 20, 0, 16>("Segment number:"),
    field<&Packet::num_segments,   22, 0, 16>("Total number of segments of data object:"),
};
// clang-format on

// Opens a transaction and reads STATUS0; leaves it open if the chip is clear to send.
bool open_when_clear_to_send(uint8_t* buf) {
  buf[0] = static_cast<uint8_t>(Opcode::RD_REPLY);
  buf[1] = 0;
  Si468x_SPI_CS_low();
  Si468x_SPI_RW_data_noCS(buf, 2);
  if (Reply_view({buf, 2}).clear_to_send()) return true;
  Si468x_SPI_CS_high();
  return false;
}

// Reads the payload, if there is one, inside the open transaction. A packet is read only if one is queued, nothing was
// lost, and it is complete.
int16_t read_payload(Packet& packet, uint8_t* buf, uint32_t buf_size) {
  if (packet.buffer_count == 0) return 0;
  if (packet.overflow != 0) return Si468x_failure(-2, 134);
  if (packet.packet_ready == 0) return Si468x_failure(-3, 234);
  if (packet.byte_count == 0) return 0;
  if (packet.byte_count > buf_size - header_length) return Si468x_failure(-4, 334);
  Si468x_clear_array(buf + header_length, packet.byte_count);
  Si468x_SPI_RW_data_noCS(buf + header_length, packet.byte_count);
  packet.payload = buf + header_length;
  return 0;
}

}  // namespace

int16_t Si468x_digital_service_data::get_new_data(uint8_t* buf, uint32_t buf_size) {
  constexpr uint32_t tries = 10;
  if (buf_size < header_length) return Si468x_failure(-4, 334);

  auto cmd = command<2>(Opcode::GET_DIGITAL_SERVICE_DATA, 0x00);      // the packet itself
  static_cast<void>(Si468x_send_cmd_simple(cmd.data(), cmd.size()));  // result ignored: only clear-to-send counts
  bcm2835_delayMicroseconds(pause_us);
  if (!poll_until(tries, pause_us, 0, [&](uint32_t) { return open_when_clear_to_send(buf); }))
    return Si468x_failure(-3, 34);
  Si468x_clear_array(buf + 2, header_length - 2);
  Si468x_SPI_RW_data_noCS(buf + 2, header_length - 2);
  decode<header_fields>(*this, std::span<const uint8_t, header_length>(buf, header_length));
  payload = nullptr;
  const int16_t r = read_payload(*this, buf, buf_size);
  Si468x_SPI_CS_high();
  return r;
}

void Si468x_digital_service_data::print_data() const {
  std::puts("Digital Service data package received  ");
  print_fields<header_fields>(*this);
  print_label("Data:");
  for (uint16_t i = 0; payload != nullptr && i < byte_count; ++i) {
    const uint8_t byte = payload[i];
    if (byte >= 0x20 && byte <= 0x7E)
      std::putchar(byte);
    else
      std::printf(" %02x ", byte);
  }
  std::putchar('\n');
}
