// SPDX-License-Identifier: GPL-3.0-or-later
// The events of the tuned ensemble.
#include <array>
#include <cstdio>

#include "si468x/command.h"
#include "si468x/record_fields.h"
#include "si468x/si468x.h"

namespace {

using Events = Si468x_DAB_event_status;

// DAB_GET_EVENT_STATUS reply; the acknowledge bit makes the chip clear what it reports in byte 4
//   byte 4     RW..A.FL   new: R reconfiguration, W its warning, A announcement, F frequency info, L service list
//   byte 5     ......FL   available: F frequency info, L service list
//   bytes 6-7             version of the service list
// clang-format off
constexpr Field<Events> event_fields[] = {
    field<&Events::reconfig_event,         4, 7,  1>("Ensemble reconfig event:"),
    field<&Events::reconfig_warning,       4, 6,  1>("Ensemble reconfig warning:"),
    field<&Events::new_announcement_info,  4, 3,  1>("New announcement info available"),
    field<&Events::new_freq_info,          4, 1,  1>("New freq. info available:"),
    field<&Events::new_service_list,       4, 0,  1>("New service list available:"),
    field<&Events::freq_info_available,    5, 1,  1>("Freq. Info available:"),
    field<&Events::service_list_available, 5, 0,  1>("Service list available:"),
    field<&Events::service_list_version,   6, 0, 16>("Service list version:"),
};
// clang-format on

}  // namespace

int16_t Si468x_DAB_event_status::get_new_status() {
  std::array<uint8_t, 9> reply{};
  if (const int16_t r = query(Opcode::DAB_GET_EVENT_STATUS, 0x01, reply); r != 0)  // acknowledge
    return Si468x_failure(r, 24);
  decode<event_fields>(*this, reply);
  return 0;
}

void Si468x_DAB_event_status::print_data() const {
  std::puts("Event status ------------------------- ");
  print_fields<event_fields>(*this);
}
