// SPDX-License-Identifier: GPL-3.0-or-later
// The files that outlive the program: the key, the last station, the scan.
#pragma once

#include <ctime>
#include <filesystem>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "remote/orders.h"

namespace remote {

/// What is wrong with a file or folder, in one line.
struct Storage_error : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// $STATE_DIRECTORY, $XDG_STATE_HOME/kelvo or ~/.local/state/kelvo; made where it does not exist. Throws Storage_error
/// when none of the variables is set.
std::filesystem::path state_folder();

/// The whole file; nothing: it does not exist. Throws Storage_error.
std::optional<std::string> read_file(const std::filesystem::path& file);

/// When the file was last written; 0 where it does not exist.
std::time_t time_written(const std::filesystem::path& file);

/// Writes a file that only its owner may read: as a draft, flushed to the disk, then renamed, so that the file is whole
/// at every moment. Leaves a file alone for which `is_ours` is false: another program's. Throws Storage_error.
void write_file(const std::filesystem::path& file, std::string_view text,
                const std::function<bool(std::string_view)>& is_ours);

/// What plays after a power cut.
struct Last {
  std::optional<Play> play{};
  std::optional<Volume> volume{};
  bool operator==(const Last&) const = default;
};

/// The file of it has one order a line.
std::string to_text(const Last& last);
/// Nothing: it is no such text.
std::optional<Last> parse_last(std::string_view text);

}  // namespace remote
