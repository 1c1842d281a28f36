// SPDX-License-Identifier: GPL-3.0-or-later
// From the bytes of a scan file to its records.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "survey/file/document.h"
#include "survey/file/model.h"

namespace survey {

struct Scan_file {
  Scan scan;
  Node document;     ///< all members of the file; labels decoded, signal measures with their sign
  std::string gaps;  ///< "12 of 41 entries": of what a scan always writes, the part that is there; empty if all is
};

/// The scans in file `name`; "-" is standard input. Throws File_error; refuses what is too large for a scan.
std::vector<Scan_file> read_file(const std::string& name);

/// Reads `bytes`, the content of file `name`: scans, one or more, as a scan wrote them or as valid JSON with the same
/// members. Throws File_error where anything but a scan is found.
std::vector<Scan_file> read_scans(std::string_view bytes, const std::string& name);

}  // namespace survey
