// SPDX-License-Identifier: GPL-3.0-or-later
// Orders from JSON, and the place where one waits.
#include "remote/orders.h"

#include <limits>
#include <nlohmann/json.hpp>
#include <utility>

namespace remote {

namespace {

using Json = nlohmann::ordered_json;

constexpr uint16_t loudest = 63;

template <typename Number>
Number number(const Json& json, const char* key, Number most = std::numeric_limits<Number>::max()) {
  const auto member = json.find(key);
  if (member == json.end() || !member->is_number_unsigned() || member->get<uint64_t>() > most)
    throw Order_error(std::string("\"") + key + "\" must be a number from 0 to " + std::to_string(most));
  return member->get<Number>();
}

// Whether the member is the first of two words.
bool choice(const Json& json, const char* key, const std::string& first, const std::string& second) {
  const auto member = json.find(key);
  if (member == json.end() || (*member != first && *member != second))
    throw Order_error(std::string("\"") + key + "\" must be \"" + first + "\" or \"" + second + "\"");
  return *member == first;
}

// A row for each order: its members beside "order", and what makes it of them.
struct Form {
  size_t members;
  Order (*read)(const Json&);
};

constexpr std::string_view names[] = {"play", "stop", "volume", "find", "cancel", "boot", "seek"};
static_assert(std::size(names) == std::variant_size_v<Order>);

constexpr Form forms[] = {
    {3,
     [](const Json& json) -> Order {
       return Play{.service_id = number<uint32_t>(json, "service_id"),
                   .component = number<uint32_t>(json, "component"),
                   .index = number<uint8_t>(json, "index")};
     }},
    {0, [](const Json&) -> Order { return Stop{}; }},
    {1, [](const Json& json) -> Order { return Volume{number<uint16_t>(json, "level", loudest)}; }},
    {0, [](const Json&) -> Order { return Find{}; }},
    {0, [](const Json&) -> Order { return Cancel{}; }},
    {1, [](const Json& json) -> Order { return Boot{choice(json, "mode", "DAB", "FM") ? Mode::dab : Mode::fm}; }},
    {1, [](const Json& json) -> Order { return Seek{choice(json, "direction", "up", "down")}; }},
};
static_assert(std::size(forms) == std::variant_size_v<Order>);

struct Add_members {
  Json& json;

  void operator()(const Play& play) const {
    json["service_id"] = play.service_id;
    json["component"] = play.component;
    json["index"] = play.index;
  }
  void operator()(const Volume& volume) const { json["level"] = volume.level; }
  void operator()(const Boot& boot) const { json["mode"] = boot.mode == Mode::dab ? "DAB" : "FM"; }
  void operator()(const Seek& seek) const { json["direction"] = seek.up ? "up" : "down"; }
  template <typename Without>
  void operator()(const Without& /*order*/) const {}
};

}  // namespace

Order parse_order(std::string_view json) {
  size_t keys = 0;  // counted, since the parser keeps one of two members of the same name
  const auto count = [&](int /*depth*/, Json::parse_event_t event, const Json& /*value*/) {
    if (event == Json::parse_event_t::key) keys += 1;
    return true;
  };
  const Json parsed = Json::parse(json, count, false);
  if (!parsed.is_object()) throw Order_error("the body must be one JSON object");
  const auto order = parsed.find("order");
  for (size_t i = 0; order != parsed.end() && i < std::size(names); ++i) {
    if (*order != names[i]) continue;
    Order result = forms[i].read(parsed);
    if (keys != forms[i].members + 1) throw Order_error("\"" + std::string(names[i]) + "\" has unknown members");
    return result;
  }
  throw Order_error("\"order\" must be one of play, stop, volume, find, cancel, boot, seek");
}

std::string to_json(const Order& order) {
  Json json{{"order", name(order)}};
  std::visit(Add_members{json}, order);
  return json.dump();
}

std::string_view name(const Order& order) { return names[order.index()]; }

void Orders::put(const Order& order) {
  const std::lock_guard lock(mutex_);
  waiting_ = order;
  changed_.notify_one();
}

void Orders::set_viewers(size_t viewers) {
  const std::lock_guard lock(mutex_);
  viewers_ = viewers;
  changed_.notify_one();
}

void Orders::end() {
  const std::lock_guard lock(mutex_);
  ends_ = true;
  changed_.notify_one();
}

Orders::Task Orders::wait(Clock::time_point next_sample) {
  std::unique_lock lock(mutex_);
  while (!ends_ && !waiting_ && (viewers_ == 0 || Clock::now() < next_sample))
    viewers_ == 0 ? changed_.wait(lock) : static_cast<void>(changed_.wait_until(lock, next_sample));
  return {.ends = ends_, .order = std::exchange(waiting_, std::nullopt)};
}

Orders::Task Orders::poll() {
  const std::lock_guard lock(mutex_);
  return {.ends = ends_, .order = std::exchange(waiting_, std::nullopt)};
}

bool Orders::has_order() {
  const std::lock_guard lock(mutex_);
  return waiting_.has_value();
}

void Orders::put_back(const Order& order) {
  const std::lock_guard lock(mutex_);
  if (!waiting_) waiting_ = order;
}

}  // namespace remote
