// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <fstream>
#include <string>

namespace trace {

/// Opens `file` at `path` for a new trace. An earlier trace or an empty file is replaced, any other file is left as it
/// is; devices and pipes are written to. @return why it cannot be opened; empty: it is open
std::string open_file(std::ofstream& file, const std::string& path);

}  // namespace trace
