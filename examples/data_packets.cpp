// SPDX-License-Identifier: GPL-3.0-or-later
// Starts a data service and prints its packets until the chip has no more, then stops it.
// Boot and tune the chip first, for example with: kelvo -b D -f 33
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "si468x/si468x.h"

namespace {

constexpr uint32_t service_id = 3779402283;  // "ServId" of the service list
constexpr uint32_t component_id = 53925;     // "comp_ID"
constexpr uint32_t buffer_size = 8192;       // a packet that needs more is refused

// Returns the last result: 0 when the chip has no packet left.
int16_t print_packets(std::vector<uint8_t>& buffer) {
  Si468x_digital_service_data packet;
  for (;;) {
    const int16_t result = packet.get_new_data(buffer.data(), buffer_size);
    if (result != 0 || packet.buffer_count == 0) return result;
    packet.print_data();
  }
}

}  // namespace

int main() {
  if (Si468x_bus_init() != 0) {
    std::puts("The SPI link cannot be opened.");
    return EXIT_FAILURE;
  }
  if (Si468x_start_digital_service(Si468x_data_service, service_id, component_id) != 0) {
    std::printf("The service cannot be started (code %u).\n", static_cast<unsigned>(Si468x_ErrorCode));
    return EXIT_FAILURE;
  }
  std::vector<uint8_t> buffer(buffer_size);
  const int16_t result = print_packets(buffer);
  if (result != 0) std::printf("No packet (code %u).\n", static_cast<unsigned>(Si468x_ErrorCode));
  const int16_t stopped = Si468x_stop_digital_service(Si468x_data_service, service_id, component_id);
  return result == 0 && stopped == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
