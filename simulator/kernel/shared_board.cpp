// SPDX-License-Identifier: GPL-3.0-or-later
// A simulated kernel's connection to the board that it shares.
#include "simulator/kernel/shared_board.h"

#include <sys/socket.h>
#include <sys/uio.h>
#include <sys/un.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "messages/messages.h"

namespace sim {

namespace {

[[noreturn]] void refuse(const char* what) {
  messages::refuse(std::string("the shared board: ") + what + ": " + std::strerror(errno));
}

}  // namespace

Shared_board::Shared_board(const std::string& socket) : socket_(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0)) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::snprintf(address.sun_path, sizeof address.sun_path, "%s", socket.c_str());
  if (connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) refuse(socket.c_str());
}

void Shared_board::send(const Board_request& request, const std::vector<uint8_t>& bytes) const {
  iovec parts[] = {{.iov_base = const_cast<Board_request*>(&request), .iov_len = sizeof request},
                   {.iov_base = const_cast<uint8_t*>(bytes.data()), .iov_len = bytes.size()}};
  msghdr packet{};
  packet.msg_iov = parts;
  packet.msg_iovlen = 2;
  if (sendmsg(socket_, &packet, MSG_NOSIGNAL) < 0) refuse("request");
}

void Shared_board::transfer(std::vector<uint8_t>& bytes) const {
  send({.kind = Board_request::transfer}, bytes);
  if (recv(socket_, bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) refuse("answer");
}

}  // namespace sim
