// SPDX-License-Identifier: GPL-3.0-or-later
// From the text of a scan file to its tree.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "survey/file/document.h"

namespace survey {

/// Key of an entry's block name, in JSON that this program wrote: labels behind it are text, whatever their character
/// set.
constexpr std::string_view block_key = "Block";
constexpr std::string_view label_key = "Label";

/// The objects of a file called `name`, one after the other: JSON, or as a scan writes it, with the bytes of answers
/// and labels as they are.
/// An object that begins as a scan writes it has only such answers and labels: an answer is the rest of its line, a
/// label 16 bytes. In others an answer is taken for the rest of its line where it is no JSON string, and 16 bytes
/// before "ComponentList" for a label as it was received.
/// Throws File_error; refuses what is nested too deeply or too large for a scan, and duplicate keys.
std::vector<Node> parse(std::string_view text, const std::string& name);

}  // namespace survey
