// SPDX-License-Identifier: GPL-3.0-or-later
// The scan file: the location and the results as JSON text.
#include <cstdio>
#include <sstream>
#include <string_view>

#include "scan/ensemble_list.h"

void Ensemble_list::write_text(std::stringstream& ss) const {
  ss << "{\"content\": \"FullStationScan\",\n"
     << "\"FrequencyRegion\": \"Europe\",\n"
     << "\"Location\": {\n"
     << "\"StreetNo\": \"" << street_no << "\",\n"
     << "\"Street\": \"" << street << "\",\n"
     << "\"PostalCode\": \"" << postal_code << "\",\n"
     << "\"City\": \"" << city << "\",\n"
     << "\"Country\": \"" << country << "\",\n"
     << "\"Floor\": \"" << floor << "\",\n"
     << "\"gps_latitude\": \"" << gps_latitude << "\",\n"
     << "\"gps_longitude\": \"" << gps_longitude << "\"\n},\n"
     << "\"ensembleList\": [\n";
  for (size_t i = 0; i < ensemble_capacity; ++i) {
    ss << "{\n\"EnsemleNo\": " << i << ",\n";
    digrad_status[i].json_print_data(ss);
    if (service_list[i].num_services != 0) {
      ss << ",\n";
      service_list[i].json_print_data(ss);
    }
    if (ensemble_time[i].year != 0) {
      ss << ",\n";
      ensemble_time[i].json_print_data(ss);
    }
    ss << "}\n";
    if (i + 1 < ensemble_capacity) ss << ",";
  }
  ss << "]}";
}

int Ensemble_list::save_to_file() {
  std::stringstream ss;
  ss.exceptions(std::ios::badbit);  // throw on allocation failure instead of truncating
  write_text(ss);

  // The text is complete before the file is opened: an earlier failure does not destroy an older scan.
  std::FILE* const file = std::fopen(filename.c_str(), "wb");
  if (file == nullptr) return 0;
  const std::string_view text = ss.view();
  static_cast<void>(std::fwrite(text.data(), 1, text.size(), file));  // result ignored: fails silently
  static_cast<void>(std::fclose(file));
  return 0;
}
