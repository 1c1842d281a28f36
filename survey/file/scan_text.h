// SPDX-License-Identifier: GPL-3.0-or-later
// A scan writes answers and labels byte for byte. This step makes JSON of its file.
#pragma once

#include <string>
#include <string_view>

namespace survey {

/// Key of a label whose bytes are in the file as they were received: its value has one character for each byte.
constexpr std::string_view raw_label_key = "Label, bytes";

/// The text of a scan file with its raw answers and labels as JSON strings; lines keep their numbers.
/// In a file that begins as a scan writes it all of them are raw: an answer is the rest of its line, a label 16 bytes.
/// In others an answer is raw that is alone on its line and no JSON string, and a label of 16 bytes before
/// "ComponentList". What else is no JSON stays as it is.
std::string json_text(std::string_view file);

}  // namespace survey
