// SPDX-License-Identifier: GPL-3.0-or-later
// The link that pairs a phone, and its QR code for the terminal.
#include "remote/pairing.h"

#include <qrencode.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <memory>

#include "remote/access.h"

namespace remote {

namespace {

// Two modules in one character, dark ones as ink on white, whatever the terminal's colours; a margin of four modules.
void print_code(const std::string& text) {
  constexpr int margin = 4;
  const std::unique_ptr<QRcode, void (*)(QRcode*)> code(
      QRcode_encodeString(text.c_str(), 0, QR_ECLEVEL_L, QR_MODE_8, 1), QRcode_free);
  if (code == nullptr) return;
  const int width = code->width;
  const auto is_dark = [&](int row, int column) {
    return row >= 0 && row < width && column >= 0 && column < width && (code->data[row * width + column] & 1) != 0;
  };
  constexpr const char* blocks[] = {" ", "▄", "▀", "█"};
  for (int row = -margin; row < width + margin; row += 2) {
    std::string line;
    for (int column = -margin; column < width + margin; ++column)
      line += blocks[(is_dark(row, column) ? 2 : 0) + (is_dark(row + 1, column) ? 1 : 0)];
    std::printf("\033[30;47m%s\033[0m\n", line.c_str());
  }
}

// As a browser needs it; of all addresses of this machine, the name.
std::string address(const Options& options) {
  std::string host = options.address;
  if (host == "0.0.0.0" || host == "::") host = options.hosts.empty() ? machine_name() + ".local" : options.hosts[0];
  if (host.find(':') != host.npos) host = "[" + host + "]";
  return "http://" + host + ":" + options.port;
}

}  // namespace

void print_start(const Options& options, const std::string& key) {
  if (isatty(STDOUT_FILENO) == 1) return print_pairing(options, key);
  std::printf("%s; %s --pair prints the link that pairs a browser\n", address(options).c_str(),
              program_invocation_short_name);
}

void print_pairing(const Options& options, const std::string& key) {
  const std::string link = address(options) + std::string(Access::pair_path) + "?key=" + key;
  std::printf("%s\n", link.c_str());
  if (isatty(STDOUT_FILENO) == 1) print_code(link);
  if (options.address.starts_with("127.") || options.address == "::1")
    std::puts("This address is for browsers on this machine; phones need --listen, as in --listen 0.0.0.0:8468");
}

}  // namespace remote
