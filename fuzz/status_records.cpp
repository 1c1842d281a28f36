// SPDX-License-Identifier: GPL-3.0-or-later
#include <nlohmann/json.hpp>
#include <sstream>

#include "fuzz/fuzz.h"

namespace {

template <typename Record>
Record filled(Input input, int16_t (Record::*get)()) {
  auto record = used<Record>();
  answer(input);
  require((record.*get)() == 0 || untouched(record), "a failure leaves the record alone");
  return record;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  constexpr size_t longer_than_all = 64;
  const Input input(data, size);
  if (size > longer_than_all || !answer(input)) return 0;
  using Info = Si468x_chip_info;
  for (const auto get : {&Info::get_status, &Info::get_part_info, &Info::get_sys_state, &Info::get_func_info})
    filled(input, get).print_data();
  filled(input, &Si468x_DAB_event_status::get_new_status).print_data();
  filled(input, &Si468x_FM_rsq_status::get_status);
  filled(input, &Si468x_FM_rds_status::get_status);
  const auto digrad = filled(input, &Si468x_DAB_digrad_status::get_new_status);
  const auto time = filled(input, &Si468x_time::get_ensembletime);
  digrad.print_data();
  time.print_data();
  std::stringstream json;
  json << '{';
  digrad.json_print_data(json);
  json << ',';
  time.json_print_data(json);
  json << '}';
  require(nlohmann::json::accept(json.view()), "the records are well-formed JSON");
  return 0;
}
