// SPDX-License-Identifier: GPL-3.0-or-later
#include "fuzz/fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (!answer({data, size})) return 0;
  Block buffer(256);
  auto info = used<Si468x_DAB_component_info>();
  info.ua_data = buffer.data();
  if (info.get_info(1, 2) != 0) {
    require(info.ua_data == buffer.data(), "a failure leaves the buffer where it was");
    return 0;
  }
  Block area(info.ua_data, info.ua_data + info.ua_length);
  info.ua_data = area.data();
  unsigned found = 0;
  for (unsigned i = 0; i <= info.ua_count && i <= UINT8_MAX; ++i) {
    auto application = used<Si468x_user_application_data>();
    if (application.get_ua_data(&info, static_cast<uint8_t>(i)) == 0) {
      require(i == found++, "nothing is found behind an entry that is not whole");
      require(application.data > area.data() && application.data + application.length <= area.data() + area.size(),
              "an entry's data lies inside the area");
    } else {
      require(untouched(application) || Si468x_ErrorCode == 331, "one that fails leaves the record alone");
    }
  }
  info.print_info();
  return 0;
}
