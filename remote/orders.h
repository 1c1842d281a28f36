// SPDX-License-Identifier: GPL-3.0-or-later
// What a viewer can order, and the place where orders wait for the thread of the board.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>

namespace remote {

enum class Mode { unknown, off, dab, fm };

struct Play {
  uint32_t service_id = 0, component = 0;
  uint8_t index = 0;  ///< in the chip's frequency list
  bool operator==(const Play&) const = default;
};
struct Stop {
  bool operator==(const Stop&) const = default;
};
struct Volume {
  uint16_t level = 0;  ///< 0 to 63
  bool operator==(const Volume&) const = default;
};
struct Find {
  bool operator==(const Find&) const = default;
};
struct Cancel {
  bool operator==(const Cancel&) const = default;
};
struct Boot {
  Mode mode = Mode::dab;  ///< dab or fm
  bool operator==(const Boot&) const = default;
};
struct Seek {
  bool up = true;
  bool operator==(const Seek&) const = default;
};
using Order = std::variant<Play, Stop, Volume, Find, Cancel, Boot, Seek>;

/// Why a text is no order, in one line.
struct Order_error : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Reads an order of kelvo-remote(1): one JSON object with exactly its members. Throws Order_error.
Order parse_order(std::string_view json);

/// The text of an order; `parse_order` reads it.
std::string to_json(const Order& order);

/// "play", "stop", ...: the member "order" of its JSON.
std::string_view name(const Order& order);

/// One place, in which a newer order replaces a waiting one. Shared by the thread of the board and that of the network.
class Orders {
 public:
  using Clock = std::chrono::steady_clock;

  void put(const Order& order);
  /// How many look at samples.
  void set_viewers(size_t viewers);
  void end();

  /// What the thread of the board does next; without an order, takes a sample.
  struct Task {
    bool ends = false;
    std::optional<Order> order{};
  };
  /// Waits for an order, for the end, and, while there are viewers, for the time of the next sample.
  Task wait(Clock::time_point next_sample);

  /// The same without waiting; neither an end nor an order: there is none.
  Task poll();
  /// Whether an order waits.
  bool has_order();
  /// Leaves the order to the next `wait`, unless a newer one is there by now.
  void put_back(const Order& order);

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  std::optional<Order> waiting_;
  size_t viewers_ = 0;
  bool ends_ = false;
};

}  // namespace remote
