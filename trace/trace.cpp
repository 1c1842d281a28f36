// SPDX-License-Identifier: GPL-3.0-or-later
// The trace of a board as text.
#include "trace/trace.h"

#include <algorithm>
#include <iomanip>
#include <limits>

namespace trace {

namespace {

// Microseconds with three decimals, exactly.
std::string microseconds(Time time) {
  const std::string fraction = std::to_string(1000 + time.count() % 1000);
  return std::to_string(time.count() / 1000) + "." + fraction.substr(1);
}

}  // namespace

std::string hex(Bytes bytes, size_t most) {
  constexpr char digits[] = "0123456789abcdef";
  constexpr ptrdiff_t longest_written_out = 8;
  std::string text;
  const bool cut = bytes.size() > most;
  if (cut) bytes = bytes.first(most);
  for (auto at = bytes.begin(); at != bytes.end();) {
    const auto end = std::find_if(at, bytes.end(), [at](uint8_t byte) { return byte != *at; });
    const std::string byte = {digits[*at >> 4], digits[*at & 15]};
    if (end - at > longest_written_out) {
      text += (text.empty() ? "" : " ") + byte + "*" + std::to_string(end - at);
      at = end;
    }
    for (; at != end; ++at) text += (text.empty() ? "" : " ") + byte;
  }
  return cut ? text + (text.empty() ? "..." : " ...") : text;
}

std::ostream& Trace::line(Time now, std::string_view kind) {
  return out_ << std::setw(14) << microseconds(now) << ' ' << kind << ' ';
}

void Trace::transaction(const Transaction& done) {
  constexpr size_t shown_of_image = 12;
  constexpr size_t all = std::numeric_limits<size_t>::max();
  const size_t most = most_.value_or(done.command == "HOST_LOAD" ? shown_of_image : all);
  line(done.start, "spi") << done.command << ' ' << done.sent.size() << " > " << hex(done.sent, most) << " < "
                          << hex(done.received, most) << std::endl;
}

void Trace::wait(Time now, Time span) { line(now, "wait") << microseconds(span) << std::endl; }

void Trace::pin(Time now, unsigned number, std::string_view change) {
  line(now, "pin") << number << ' ' << change << std::endl;
}

void Trace::chip_event(Time now, const std::string& what) { line(now, "chip") << what << std::endl; }

void Trace::refused(Time now, const std::string& why) { line(now, "refused") << why << std::endl; }

void Trace::mistake(Time now, const std::string& what) { line(now, "mistake") << what << std::endl; }

void Trace::fault(Time now, const std::string& what) { line(now, "fault") << what << std::endl; }

void Trace::hang(Time now, const std::string& what) { line(now, "hang") << what << std::endl; }

void Trace::write_totals(Time now, const Totals& totals, const std::vector<std::string>& never_triggered) {
  line(now, "total") << "transactions " << totals.transactions << std::endl;
  line(now, "total") << "bytes " << totals.bytes << std::endl;
  line(now, "total") << "wire " << microseconds(totals.on_wire) << std::endl;
  line(now, "total") << "wait " << microseconds(totals.waited) << std::endl;
  for (const auto& [command, count] : totals.commands)
    line(now, "total") << "command " << command << ' ' << count << std::endl;
  for (const std::string& fault : never_triggered) line(now, "total") << "never triggered " << fault << std::endl;
}

}  // namespace trace
