// SPDX-License-Identifier: GPL-3.0-or-later
// Who may use the radio: the key, the names of this machine, and the requests that are refused.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace remote {

inline constexpr size_t longest_body = 1024;

/// 32 hexadecimal digits: 128 random bits.
std::string new_key();
bool is_key(std::string_view text);

/// What of a request decides whether it is carried out; nothing where it has no such header.
struct Request {
  std::string_view method{}, path{};
  std::optional<std::string_view> host{}, origin{}, type{}, length{}, encoding{};
  std::optional<std::string_view> cookie{};  ///< the key of a paired browser
  std::optional<std::string_view> key{};     ///< the key of a pairing link
};

/// The answer to a request that is not carried out.
struct Refusal {
  unsigned status = 0;
  std::string line{};
};

class Access {
 public:
  static constexpr std::string_view pair_path = "/pair";
  static constexpr std::string_view order_path = "/do";

  /// `hosts` are names beside those that every machine has. The key is `key` until `key_file` has another one.
  Access(std::filesystem::path key_file, std::string key, const std::vector<std::string>& hosts);

  /// The key in force; it changes when another run of the program makes a new one.
  const std::string& key();
  /// Nothing: it may be carried out.
  std::optional<Refusal> refusal(const Request& request);

 private:
  bool knows_host(std::string_view host) const;
  bool is_paired(const Request& request);

  std::filesystem::path key_file_;
  std::string key_;
  std::vector<std::string> names_;
};

/// This machine's name.
std::string machine_name();

}  // namespace remote
