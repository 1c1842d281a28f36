// SPDX-License-Identifier: GPL-3.0-or-later
// A scan writes answers and labels byte for byte. This step makes JSON of its file.
#pragma once

#include <string>
#include <string_view>

namespace survey {

/// Key of a label whose bytes are in the file as they were received: its value has one character for each byte.
constexpr std::string_view raw_label_key = "Label, bytes";

/// The text of a scan file with its raw answers and labels as JSON strings; lines keep their numbers.
/// A label is raw where 16 bytes between quotes are followed by "ComponentList". An answer is raw in a file that begins
/// as a scan writes it, or where it is alone on its line and is no JSON string. What else is no JSON stays as it is.
std::string json_text(std::string_view file);

}  // namespace survey
