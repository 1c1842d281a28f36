// SPDX-License-Identifier: GPL-3.0-or-later
#include "fuzz/fuzz.h"

// The first two bytes are the size of the caller's buffer, the rest is the chip's reply.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  constexpr size_t header = 25;
  constexpr size_t payload_in_reply = 20;
  if (size < 2) return 0;
  const auto reply = answer({data + 2, size - 2});
  if (!reply) return 0;
  Block buffer(data[0] | (data[1] & 15u) << 8);
  auto packet = used<Si468x_digital_service_data>();
  const bool taken = packet.get_new_data(buffer.data(), static_cast<uint32_t>(buffer.size())) == 0;
  if (!taken && (buffer.size() < header || Si468x_ErrorCode == 34)) {
    require(untouched(packet), "without a header the record is left alone");
    return 0;
  }
  const bool wanted = taken && packet.buffer_count != 0 && packet.byte_count != 0;
  require(packet.payload == (wanted ? buffer.data() + header : nullptr), "a payload that was read follows the header");
  for (size_t i = 0; wanted && i < packet.byte_count; ++i) {
    const size_t at = payload_in_reply + i;
    require(packet.payload[i] == (at < reply->size() ? (*reply)[at] : 0), "the payload is what the chip sent");
  }
  packet.print_data();
  return 0;
}
