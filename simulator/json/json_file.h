// SPDX-License-Identifier: GPL-3.0-or-later
// A JSON file as a tree of values.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "simulator/json/text_file.h"

namespace sim {

struct Json_file {
  std::string name;  ///< in messages
  nlohmann::json root;
};

/// Parses `text`. @throws File_error with line and column when it is not JSON, holds a zero byte, has a key twice in an
/// object, is nested deeper than 20 levels, or has more than 500000 values
Json_file parse_json(std::string_view text, std::string name);

/// The way from the root to one of its values by keys and indexes: "/ensembles/0/index"; empty for the root.
std::string place_of(const nlohmann::json& value, const nlohmann::json& root);

/// The text in double quotes, for messages.
std::string in_quotes(std::string_view text);

}  // namespace sim
