// SPDX-License-Identifier: GPL-3.0-or-later
// The socket that waits for connections.
#include <netdb.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include "remote/server.h"

namespace remote {

namespace {

[[noreturn]] void fail(const Options& options, const char* why) {
  throw Listen_error(options.address + ":" + options.port + ": cannot listen: " + why);
}

std::string chosen_port(int socket) {
  sockaddr_storage address{};
  socklen_t length = sizeof address;
  char port[NI_MAXSERV] = "0";
  auto* const general = reinterpret_cast<sockaddr*>(&address);
  if (getsockname(socket, general, &length) == 0)
    static_cast<void>(getnameinfo(general, length, nullptr, 0, port, sizeof port, NI_NUMERICSERV));
  return port;
}

}  // namespace

Listener::Listener(Options& options) : socket_(-1) {
  addrinfo wanted{};
  wanted.ai_flags = AI_NUMERICHOST | AI_NUMERICSERV | AI_PASSIVE;
  wanted.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  if (const int error = getaddrinfo(options.address.c_str(), options.port.c_str(), &wanted, &found); error != 0)
    fail(options, gai_strerror(error));
  socket_ = socket(found->ai_family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
  const int on = 1;  // a port whose connections have just ended can be used again
  const bool listens = socket_ >= 0 && setsockopt(socket_, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on) == 0 &&
                       bind(socket_, found->ai_addr, found->ai_addrlen) == 0 && listen(socket_, SOMAXCONN) == 0;
  const int error = errno;
  freeaddrinfo(found);
  if (!listens) {
    if (socket_ >= 0) close(socket_);
    fail(options, std::strerror(error));
  }
  options.port = chosen_port(socket_);
}

Listener::~Listener() {
  if (socket_ >= 0) close(socket_);
}

int Listener::release() { return std::exchange(socket_, -1); }

}  // namespace remote
