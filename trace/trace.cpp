// SPDX-License-Identifier: GPL-3.0-or-later
// The trace of a board as text.
#include "trace/trace.h"

#include <algorithm>
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

void Trace::line(Time now, std::string_view kind, std::string_view what) {
  constexpr size_t width_of_time = 14;
  std::string text = microseconds(now);
  text.insert(0, width_of_time - std::min(width_of_time, text.size()), ' ');
  out_.write(text.append(" ").append(kind).append(" ").append(what).append("\n"));
}

void Trace::transaction(const Transaction& done) {
  constexpr size_t shown_of_image = 12;
  constexpr size_t all = std::numeric_limits<size_t>::max();
  const size_t most = most_.value_or(done.command == "HOST_LOAD" ? shown_of_image : all);
  std::string text(done.command);
  text += ' ' + std::to_string(done.sent.size()) + " > " + hex(done.sent, most) + " < " + hex(done.received, most);
  line(done.start, "spi", text);
}

void Trace::wait(Time now, Time span) { line(now, "wait", microseconds(span)); }

void Trace::pin(Time now, unsigned number, std::string_view change) {
  line(now, "pin", std::to_string(number).append(" ").append(change));
}

void Trace::write_totals(Time now, const Totals& totals) {
  line(now, "total", "transactions " + std::to_string(totals.transactions));
  line(now, "total", "bytes " + std::to_string(totals.bytes));
  line(now, "total", "wire " + microseconds(totals.on_wire));
  line(now, "total", "wait " + microseconds(totals.waited));
  for (const auto& [command, count] : totals.commands)
    line(now, "total", "command " + command + ' ' + std::to_string(count));
}

}  // namespace trace
