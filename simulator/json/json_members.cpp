// SPDX-License-Identifier: GPL-3.0-or-later
// One list of members per record of a JSON file.
#include "simulator/json/json_members.h"

namespace sim {

void Json_members::visit(std::string_view key, const Read& read, const Write& write) {
  if (reader_ != nullptr) {
    if (reader_->has(key)) read(reader_->at(key));
  } else if (object_ != nullptr) {
    nlohmann::json value = write ? write() : nlohmann::json();
    if (!value.is_null()) (*object_)[std::string(key)] = std::move(value);
  } else {
    keys_.push_back(key);
  }
}

}  // namespace sim
