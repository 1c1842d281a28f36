// SPDX-License-Identifier: GPL-3.0-or-later
// Events for all who listen. Shared by the thread of the board and that of the network.
#pragma once

#include <functional>
#include <list>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace remote {

/// What is sent to each listener, in the form of server-sent events.
class Events {
 public:
  static constexpr size_t most_listeners = 32;
  static constexpr size_t most_waiting = 16384;  ///< bytes; a listener that does not take them is dropped

  /// One who listens. `wake` is called once for each `sleep`, as soon as there is something to take.
  struct Listener {
    std::function<void()> sleep, wake;
    std::string waiting{};
    bool asleep = false, dropped = false;
  };

  /// Sends one event to all. `json` is one line.
  void send(std::string_view name, std::string_view json);
  /// The same; and from now on each new listener gets this event first.
  void send_state(std::string_view json);

  /// Nothing: there are too many. The listener stays where it is until `remove`.
  Listener* add(std::function<void()> sleep, std::function<void()> wake);
  void remove(const Listener* listener);
  size_t size();
  /// Takes what waits for the listener, as much as fits. Without any, calls its `sleep` and returns 0.
  /// @return bytes; nothing: it was dropped
  std::optional<size_t> take(Listener& listener, std::span<char> bytes);
  /// Drops all.
  void end();

 private:
  static void give(Listener& listener, std::string_view text);

  std::mutex mutex_;
  std::list<Listener> listeners_;
  std::string state_;
};

}  // namespace remote
