// SPDX-License-Identifier: GPL-3.0-or-later
// The network: one thread that answers all requests and never touches the board.
#pragma once

#include <memory>
#include <stdexcept>
#include <string>

#include "remote/access.h"
#include "remote/events.h"
#include "remote/options.h"
#include "remote/orders.h"
#include "remote/stations.h"

struct MHD_Daemon;

namespace remote {

/// Why the program cannot listen, in one line.
struct Listen_error : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// A socket that waits for connections.
class Listener {
 public:
  /// Port "0" of the options becomes the one that the system chose. Throws Listen_error.
  explicit Listener(Options& options);
  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;
  ~Listener();

  /// The socket, whose owner the caller becomes.
  int release();

 private:
  int socket_;
};

/// What the answers are made of; used by the thread of the network, and outlives it.
struct Desk {
  Access& access;
  Orders& orders;
  Events& events;
  Stations& stations;
};

/// Answers requests from its start to its end.
class Server {
 public:
  /// Throws Listen_error.
  Server(Listener& listener, const Desk& desk);
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;
  ~Server();

 private:
  Desk desk_;
  MHD_Daemon* daemon_;
};

}  // namespace remote
