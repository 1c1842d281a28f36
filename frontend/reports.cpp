// SPDX-License-Identifier: GPL-3.0-or-later
// The reports: records read from the chip and printed as text or JSON. The results of the reads are ignored: what
// cannot be read prints as 0.
#include "frontend/reports.h"

#include <array>
#include <cstdio>
#include <sstream>
#include <string_view>

#include "si468x/si468x.h"

namespace {

// A JSON report may end without a line end: flush it before the next action.
template <typename Record>
int write_json(const Record& record) {
  std::stringstream json;
  json.exceptions(std::ios::badbit);  // throw on allocation failure instead of truncating
  record.json_print_data(json);
  const std::string_view text = json.view();
  std::fwrite(text.data(), 1, text.size(), stdout);
  std::fflush(stdout);
  return 0;
}

}  // namespace

int print_chip_info() {
  Si468x_chip_info info;
  static_cast<void>(info.get_status());
  static_cast<void>(info.get_part_info());
  static_cast<void>(info.get_sys_state());
  static_cast<void>(info.get_func_info());
  info.print_data();
  return 0;
}

int print_digrad_status() {
  Si468x_DAB_digrad_status status;
  static_cast<void>(status.get_new_status());
  status.print_data();
  return 0;
}

int print_digrad_status_json() {
  Si468x_DAB_digrad_status status;
  static_cast<void>(status.get_new_status());
  return write_json(status);
}

int print_event_status() {
  Si468x_DAB_event_status events;
  static_cast<void>(events.get_new_status());
  events.print_data();
  return 0;
}

int print_digital_service_list() {
  std::array<uint8_t, 4096> list_buffer{};
  Si468x_digital_service_list list;
  static_cast<void>(list.get_new_list(list_buffer.data()));
  return write_json(list);
}

int print_ensembletime() {
  Si468x_time time;
  static_cast<void>(time.get_ensembletime());
  time.print_data();
  return 0;
}

int print_ensembletime_json() {
  Si468x_time time;
  static_cast<void>(time.get_ensembletime());
  return write_json(time);
}

int16_t get_rds_status() {
  const uint16_t settings[][2] = {
      {Si468x_fm_rds_config, 1},
      {0x3900, 0x3900},  // an FM setting of unknown meaning; the value equals the id deliberately
  };
  for (const auto& setting : settings)
    if (const int16_t r = Si468x_set_property(setting); r != 0) return r;
  Si468x_FM_rsq_status quality;
  static_cast<void>(quality.get_status());
  Si468x_FM_rds_status rds;
  static_cast<void>(rds.get_status());
  return 0;
}
