// SPDX-License-Identifier: GPL-3.0-or-later
// Prints the chip's information about one component: language, label, and the user applications that it carries.
// Boot and tune the chip first, for example with: kelvo -b D -f 33
#include <array>
#include <cstdio>
#include <cstdlib>

#include "si468x/si468x.h"

namespace {

constexpr uint32_t service_id = 3779402283;  // "ServId" of the service list
constexpr uint32_t component_id = 53925;     // "comp_ID"

}  // namespace

int main() {
  if (Si468x_bus_init() != 0) {
    std::puts("The SPI link cannot be opened.");
    return EXIT_FAILURE;
  }
  std::array<uint8_t, 256> buffer{};  // info.ua_data points into it
  Si468x_DAB_component_info info;
  info.ua_data = buffer.data();
  if (info.get_info(service_id, component_id) != 0) {
    std::printf("The chip does not know this component (code %u).\n", static_cast<unsigned>(Si468x_ErrorCode));
    return EXIT_FAILURE;
  }
  info.print_info();
  return EXIT_SUCCESS;
}
