// SPDX-License-Identifier: GPL-3.0-or-later
#include "remote/access.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>

namespace remote {
namespace {

constexpr const char* key = "00112233445566778899aabbccddeeff";

unsigned status(Access& access, const Request& request) {
  const std::optional<Refusal> refused = access.refusal(request);
  return refused ? refused->status : 200;
}

TEST(Access, KnowsTheNamesOfThisMachineAndNoOther) {
  Access access("/nonexistent/key", key, {"Radio.example"});
  const auto answer = [&](std::optional<std::string_view> host) {
    return status(access, {.method = "GET", .path = "/", .host = host, .cookie = key});
  };
  const std::string here = machine_name();
  for (const std::string& host :
       {std::string("127.0.0.1"), std::string("127.0.0.1:8468"), std::string("[::1]:8468"), std::string("[fe80::1]"),
        std::string("LOCALHOST:1"), std::string("radio.Example:80"), here, here + ".local:8468"})
    EXPECT_EQ(answer(host), 200U) << host;
  for (const char* const host :
       {"", ":", "[", "[]", "[::1", "[::1]evil.example", "evil.example", "127.0.0.1.evil.example", "localhost.evil",
        "radio.example.evil", "1.2.3", "::1", "evil.example:127.0.0.1"})
    EXPECT_EQ(answer(host), 421U) << host;
  EXPECT_EQ(answer(std::nullopt), 421U);
}

TEST(Access, RefusesEachRequestThatAPageOfThisServerCannotSend) {
  Access access("/nonexistent/key", key, {});
  const Request good{.method = "POST",
                     .path = "/do",
                     .host = "localhost:8468",
                     .origin = "http://localhost:8468",
                     .type = "Application/JSON; charset=utf-8",
                     .length = "1024",
                     .cookie = key,
                     .key = {}};
  EXPECT_EQ(status(access, good), 200U);
  struct {
    void (*change)(Request&);
    unsigned status;
  } const cases[] = {
      {[](Request& r) { r.cookie = {}; }, 403},
      {[](Request& r) { r.cookie = "00112233445566778899aabbccddeefe"; }, 403},
      {[](Request& r) { r.cookie = "00112233445566778899aabbccddeeff0"; }, 403},
      {[](Request& r) { r.cookie = {}, r.key = key; }, 403},
      {[](Request& r) { r.path = "/pair", r.method = "GET"; }, 403},
      {[](Request& r) { r.path = "/pair", r.method = "GET", r.cookie = {}, r.key = key; }, 200},
      {[](Request& r) { r.origin = "http://evil.example"; }, 403},
      {[](Request& r) { r.origin = "http://localhost:84680"; }, 403},
      {[](Request& r) { r.origin = "null"; }, 403},
      {[](Request& r) { r.origin = ""; }, 403},
      {[](Request& r) { r.origin = "https://localhost:8468"; }, 200},
      {[](Request& r) { r.path = "/do/"; }, 404},
      {[](Request& r) { r.path = "/remote.key"; }, 404},
      {[](Request& r) { r.method = "GET"; }, 405},
      {[](Request& r) { r.path = "/stations"; }, 405},
      {[](Request& r) { r.path = "/stations", r.method = "HEAD"; }, 200},
      {[](Request& r) { r.type = {}; }, 415},
      {[](Request& r) { r.type = "text/plain"; }, 415},
      {[](Request& r) { r.type = "application/jsonp"; }, 415},
      {[](Request& r) { r.length = {}; }, 411},
      {[](Request& r) { r.length = "1025"; }, 413},
      {[](Request& r) { r.length = "99999999999999999999"; }, 413},
  };
  for (const auto& one : cases) {
    Request request = good;
    one.change(request);
    EXPECT_EQ(status(access, request), one.status) << "case " << &one - cases;
  }
}

TEST(Access, NewKeyInTheFileEndsEveryPairing) {
  const std::string file = testing::TempDir() + "key-" + std::to_string(getpid());
  Access access(file, key, {});
  const std::string other = new_key();
  EXPECT_TRUE(is_key(other));
  EXPECT_NE(other, new_key());
  std::ofstream(file) << "no key\n";
  EXPECT_EQ(access.key(), key);
  std::ofstream(file) << other << '\n';
  const Request old{.method = "GET", .path = "/", .host = "localhost", .cookie = key};
  EXPECT_EQ(status(access, old), 403U);
  std::filesystem::remove(file);
}

}  // namespace
}  // namespace remote
