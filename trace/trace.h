// SPDX-License-Identifier: GPL-3.0-or-later
// The trace of a board as text.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "trace/observer.h"
#include "trace/totals.h"
#include "trace/trace_file.h"

namespace trace {

/// Bytes in hexadecimal, separated by blanks; more than 8 equal ones in a row as "00*4092". Of more than `most` bytes
/// only these are shown, and "..." for the rest.
std::string hex(Bytes bytes, size_t most);

/// Writes one line per event: the board's time in microseconds, the kind of event, then its details.
class Trace : public Observer {
 public:
  /// `out` belongs to the caller. `most` bytes of each transaction are shown, by default all but those of the image
  /// download, of which the first 12 are shown: the chunk's header and 8 bytes of the image.
  explicit Trace(File& out, std::optional<size_t> most = std::nullopt) : out_(out), most_(most) {}

  void transaction(const Transaction& done) override;
  void wait(Time now, Time span) override;
  void pin(Time now, unsigned number, std::string_view change) override;

  /// A line of another kind, for boards that show more.
  void line(Time now, std::string_view kind, std::string_view what);

  /// The sums at the end.
  void write_totals(Time now, const Totals& totals);

 private:
  File& out_;
  std::optional<size_t> most_;
};

}  // namespace trace
