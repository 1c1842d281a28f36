// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/broadcast/broadcast_file.h"

#include "fuzz/fuzz.h"

// A broadcast that can be read can be received: the first ensemble's last list arrives in the driver.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  auto air = parsed(sim::parse_broadcast, {data, size});
  if (!air || air->ensembles.empty() || !air->ensembles[0].acquired || air->ensembles[0].lists.empty()) return 0;
  const sim::Service_list sent = air->ensembles[0].lists.back();
  air->registers = air->spi_enabled = true;
  sim::Board board(*air);
  require(start(board, {.mode = sim::Mode::dab, .dab = {.tuned_index = air->ensembles[0].index}}),
          "the SPI link starts");
  Block buffer(4096);
  Si468x_digital_service_list list;
  require(list.get_new_list(buffer.data()) == 0 && list.num_services == sent.services.size(), "the list arrives");
  for (uint8_t i = 0; i < list.num_services; ++i) {
    Si468x_service_data service;
    require(service.get_service(&list, i) == 0, "each of its services is found");
    require(service.NumberComponents == sent.services[i].components.size(), "with its components");
  }
  return 0;
}
