// SPDX-License-Identifier: GPL-3.0-or-later
#include "scan/ensemble_list.h"
#include "tests/support.h"

namespace {

TEST(Ensembles, StoreOnlyWhatFits) {
  Ensemble_list list;
  const Fenced entries = fenced(Byte_string(4096, 0xA1));
  const Si468x_digital_service_list huge{.version = 1, .num_services = 3, .size = 5000, .data = entries.get()};
  EXPECT_EQ(list.add_ensemble(40, huge, {}, {}), 0);
  EXPECT_EQ(list.service_list[40].size, 4096);
  EXPECT_EQ(list.add_ensemble(41, huge, {}, {}), 0);  // beyond the last entry
  const uint8_t* const block = list.service_list[40].data;
  EXPECT_EQ(list.add_ensemble(40, {.version = 2}, {}, {}), 0);
  EXPECT_EQ(list.service_list[40].data, block);
  EXPECT_EQ(list.service_list[40].size, 0);
}

}  // namespace
