// SPDX-License-Identifier: GPL-3.0-or-later
// From the bytes of a scan file to its records.
#pragma once

#include <string>
#include <string_view>

#include "survey/file/document.h"
#include "survey/file/model.h"

namespace survey {

/// Key of an entry's block name: in JSON that was written here, where labels are text whatever their character set.
constexpr std::string_view block_key = "Block";

struct Scan_file {
  Scan scan;
  Node document;  ///< all members of the file; labels decoded, signal measures with their sign
};

/// The bytes of file `name`; "-" is standard input. Throws File_error; refuses what is too large for a scan.
std::string read_bytes(const std::string& name);

/// Reads `bytes`, the content of file `name`, as a scan wrote it or as valid JSON with the same members. Throws
/// File_error where anything but a scan is found.
Scan_file read_scan(std::string_view bytes, const std::string& name);

}  // namespace survey
