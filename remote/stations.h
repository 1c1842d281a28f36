// SPDX-License-Identifier: GPL-3.0-or-later
// The stations of the scans that are known. Shared by the thread of the board and that of the network.
#pragma once

#include <ctime>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "remote/orders.h"
#include "survey/file/model.h"

namespace remote {

using Scans = std::vector<survey::Scan>;

class Stations {
 public:
  /// `files` are scans that stay.
  explicit Stations(Scans files) { set(std::move(files), std::nullopt); }

  /// Takes the scan of this program, made at `time`, in place of its scan before.
  void set_found(survey::Scan scan, std::time_t time);

  /// The list in the form of kelvo-remote(1).
  std::shared_ptr<const std::string> json() const;
  /// The scans themselves, this program's own last.
  std::shared_ptr<const Scans> scans() const;
  size_t size() const;
  /// The name of the station that the order plays, "service 17333" for an unknown one.
  std::string name(const Play& play) const;

 private:
  struct Station {
    Play play;
    std::string name;
  };
  void set(Scans scans, std::optional<std::time_t> found);

  mutable std::mutex mutex_;
  bool has_own_ = false;
  std::shared_ptr<const Scans> scans_;
  std::shared_ptr<const std::string> json_;
  std::vector<Station> known_;
};

}  // namespace remote
