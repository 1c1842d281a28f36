// SPDX-License-Identifier: GPL-3.0-or-later
#include "fuzz/fuzz.h"
#include "remote/access.h"
#include "remote/orders.h"
#include "remote/storage.h"

namespace {

constexpr std::string_view key = "00112233445566778899aabbccddeeff";

// The next line of the input; nothing: the request has no such header.
std::optional<std::string_view> take_line(std::string_view& rest) {
  const std::string_view line = rest.substr(0, rest.find('\n'));
  rest.remove_prefix(std::min(line.size() + 1, rest.size()));
  return line == "-" ? std::nullopt : std::optional(line);
}

void require_order(std::string_view body) {
  try {
    const remote::Order order = remote::parse_order(body);
    require(remote::parse_order(remote::to_json(order)) == order, "an order that is written reads back the same");
  } catch (const remote::Order_error& error) {
    const std::string_view line = error.what();
    require(!line.empty() && line.find_first_of("\r\n") == line.npos, "an error is one line");
  }
  if (const auto last = remote::parse_last(body))
    require(remote::parse_last(remote::to_text(*last)) == last, "orders that are stored read back the same");
}

}  // namespace

// Only requests with the key, to a name of this machine, are carried out. The input is their parts, one a line, and the
// body.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static remote::Access access("/nonexistent/key", std::string(key), {"radio"});
  std::string_view rest(reinterpret_cast<const char*>(data), size);
  remote::Request request{.method = take_line(rest).value_or(""), .path = take_line(rest).value_or("")};
  for (auto* part : {&request.host, &request.origin, &request.type, &request.length, &request.cookie, &request.key})
    *part = take_line(rest);
  if (const auto refused = access.refusal(request)) {
    require(refused->status >= 400 && refused->line.find_first_of("\r\n") == refused->line.npos,
            "a refusal is one line");
  } else {
    require((request.path == "/pair" ? request.key : request.cookie) == key, "only those who are paired");
    require(request.host && request.host->find_first_of("\n/@ ") == std::string_view::npos, "the host is one");
    require(request.path == "/do" ? request.method == "POST" : request.method != "POST", "orders are posted");
  }
  require_order(rest);
  return 0;
}
