// SPDX-License-Identifier: GPL-3.0-or-later
// Who may use the radio.
#include "remote/access.h"

#include <arpa/inet.h>
#include <sys/random.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <charconv>
#include <utility>

#include "remote/storage.h"

namespace remote {

namespace {

constexpr size_t key_bytes = 16;

constexpr unsigned forbidden = 403, not_found = 404, bad_method = 405, no_length = 411, too_long = 413, bad_type = 415,
                   wrong_host = 421;

std::string program() { return program_invocation_short_name; }

// In a time that does not depend on where they differ.
bool same(std::string_view given, std::string_view key) {
  if (given.size() != key.size()) return false;
  unsigned different = 0;
  for (size_t i = 0; i < key.size(); ++i) different |= static_cast<unsigned char>(given[i] ^ key[i]);
  return different == 0;
}

std::string lower(std::string_view text) {
  std::string result(text);
  for (char& c : result) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return result;
}

// "[::1]:8468" to "::1", "radio.local:8468" to "radio.local".
std::string without_port(std::string_view host) {
  if (const size_t end = host.find(']'); host.starts_with('[') && end != host.npos) {
    const std::string_view rest = host.substr(end + 1);
    return rest.empty() || rest.front() == ':' ? std::string(host.substr(1, end - 1)) : "";
  }
  return lower(host.substr(0, host.find(':')));
}

bool is_address(const std::string& text) {
  in6_addr parsed{};
  return inet_pton(AF_INET, text.c_str(), &parsed) == 1 || inet_pton(AF_INET6, text.c_str(), &parsed) == 1;
}

// Whether a page of this server sent the request. A proxy may have taken TLS away.
bool is_own(std::string_view origin, std::string_view host) {
  for (const std::string_view scheme : {"http://", "https://"})
    if (origin.starts_with(scheme) && lower(origin.substr(scheme.size())) == lower(host)) return true;
  return false;
}

bool is_json(std::string_view type) {
  const size_t end = type.find_first_of("; \t");
  return lower(type.substr(0, end)) == "application/json";
}

}  // namespace

std::string new_key() {
  std::array<uint8_t, key_bytes> bytes{};
  if (getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size()))
    throw Storage_error("the system has no random numbers");
  std::string key;
  for (const uint8_t byte : bytes) (key += "0123456789abcdef"[byte >> 4]) += "0123456789abcdef"[byte & 0xF];
  return key;
}

bool is_key(std::string_view text) {
  return text.size() == 2 * key_bytes && text.find_first_not_of("0123456789abcdef") == text.npos;
}

std::string machine_name() {
  std::array<char, 256> name{};
  return gethostname(name.data(), name.size() - 1) == 0 ? lower(name.data()) : "localhost";
}

Access::Access(std::filesystem::path key_file, std::string key, const std::vector<std::string>& hosts)
    : key_file_(std::move(key_file)),
      key_(std::move(key)),
      names_{"localhost", machine_name(), machine_name() + ".local"} {
  for (const std::string& name : hosts) names_.push_back(lower(name));
}

const std::string& Access::key() {
  try {
    const std::string text = read_file(key_file_).value_or("");
    if (const std::string_view line = std::string_view(text).substr(0, text.find('\n')); is_key(line)) key_ = line;
  } catch (const Storage_error&) {  // the key that is known stays
  }
  return key_;
}

bool Access::knows_host(std::string_view host) const {
  const std::string name = without_port(host);
  return is_address(name) || std::ranges::find(names_, name) != names_.end();
}

bool Access::is_paired(const Request& request) {
  const std::optional<std::string_view> given = request.path == pair_path ? request.key : request.cookie;
  return given && same(*given, key());
}

std::optional<Refusal> Access::refusal(const Request& request) {
  // A page of another site may reach this machine under a name of its own.
  if (!request.host || !knows_host(*request.host))
    return Refusal{wrong_host, "this name is not known here; " + program() + " --host NAME adds one"};
  if (!is_paired(request))
    return Refusal{forbidden, "not paired; the link of " + program() + " --pair pairs this browser"};
  if (request.origin && !is_own(*request.origin, *request.host))
    return Refusal{forbidden, "the request comes from another site's page"};
  constexpr std::string_view paths[] = {"/", "/events", "/stations", "/survey", pair_path, order_path};
  if (std::ranges::find(paths, request.path) == std::end(paths)) return Refusal{not_found, "there is no such page"};
  const bool is_order = request.path == order_path;
  if (request.method != (is_order ? "POST" : "GET") && (is_order || request.method != "HEAD"))
    return Refusal{bad_method, is_order ? "only POST" : "only GET"};
  if (!is_order) return std::nullopt;
  if (!request.type || !is_json(*request.type)) return Refusal{bad_type, "only Content-Type: application/json"};
  if (request.encoding) return Refusal{no_length, "Content-Length alone, no Transfer-Encoding"};
  if (!request.length) return Refusal{no_length, "Content-Length is missing"};
  size_t length = 0;
  const auto [end, error] = std::from_chars(request.length->begin(), request.length->end(), length);
  if (error != std::errc() || end != request.length->end() || length > longest_body)
    return Refusal{too_long, "the body is longer than 1024 bytes"};
  return std::nullopt;
}

}  // namespace remote
