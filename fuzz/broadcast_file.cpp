// SPDX-License-Identifier: GPL-3.0-or-later
#include "fuzz/fuzz.h"
#include "simulator/board/board_file.h"

// A broadcast that can be read can be received: the first ensemble's last list arrives in the driver.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const auto file = parsed(sim::parse_board_file, {data, size});
  if (!file || file->air.ensembles.empty()) return 0;
  const sim::Ensemble& ensemble = file->air.ensembles[0];
  if (!ensemble.acquired || ensemble.lists.empty()) return 0;
  const sim::Service_list& sent = ensemble.lists.back();
  sim::Board board(file->air);
  require(start(board, {.mode = sim::Mode::dab, .dab = {.tuned_index = ensemble.index}}), "the SPI link starts");
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
