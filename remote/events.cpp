// SPDX-License-Identifier: GPL-3.0-or-later
// Events for all who listen.
#include "remote/events.h"

#include <algorithm>
#include <utility>

namespace remote {

namespace {

std::string event_text(std::string_view name, std::string_view json) {
  return std::string("event: ").append(name).append("\ndata: ").append(json).append("\n\n");
}

}  // namespace

void Events::give(Listener& listener, std::string_view text) {
  listener.dropped = listener.dropped || listener.waiting.size() + text.size() > most_waiting;
  if (!listener.dropped) listener.waiting += text;
  if (std::exchange(listener.asleep, false)) listener.wake();
}

void Events::send(std::string_view name, std::string_view json) {
  const std::string text = event_text(name, json);
  const std::lock_guard lock(mutex_);
  for (Listener& listener : listeners_) give(listener, text);
}

void Events::send_state(std::string_view json) {
  const std::lock_guard lock(mutex_);
  state_ = event_text("state", json);
  for (Listener& listener : listeners_) give(listener, state_);
}

Events::Listener* Events::add(std::function<void()> sleep, std::function<void()> wake) {
  const std::lock_guard lock(mutex_);
  if (listeners_.size() == most_listeners) return nullptr;
  listeners_.push_back({.sleep = std::move(sleep), .wake = std::move(wake), .waiting = state_});
  return &listeners_.back();
}

void Events::remove(const Listener* listener) {
  const std::lock_guard lock(mutex_);
  listeners_.remove_if([&](const Listener& other) { return &other == listener; });
}

size_t Events::size() {
  const std::lock_guard lock(mutex_);
  return listeners_.size();
}

std::optional<size_t> Events::take(Listener& listener, std::span<char> bytes) {
  const std::lock_guard lock(mutex_);
  if (listener.dropped) return std::nullopt;
  if (listener.waiting.empty()) {
    listener.asleep = true;
    listener.sleep();
    return 0;
  }
  const size_t length = std::min(listener.waiting.size(), bytes.size());
  std::copy_n(listener.waiting.begin(), length, bytes.begin());
  listener.waiting.erase(0, length);
  return length;
}

void Events::end() {
  const std::lock_guard lock(mutex_);
  for (Listener& listener : listeners_) {
    listener.dropped = true;
    if (std::exchange(listener.asleep, false)) listener.wake();
  }
}

}  // namespace remote
