// SPDX-License-Identifier: GPL-3.0-or-later
// The thread of the board: carries out orders, takes samples while somebody looks.
#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "live/sample.h"
#include "remote/events.h"
#include "remote/orders.h"
#include "remote/state.h"
#include "remote/stations.h"
#include "remote/storage.h"

namespace remote {

class Radio {
 public:
  /// Of the last station and of the last scan.
  struct Files {
    std::filesystem::path last, scan;
  };

  /// Reads the files, as far as they exist. The others must outlive the radio.
  Radio(Files files, std::chrono::milliseconds interval, Orders& orders, Events& events, Stations& stations);

  /// Takes the first sample. @return why there is no link to the board
  live::Outcome open();
  /// Boots a chip that runs no application and plays the last station; another one is left as it is. Then works until
  /// the orders end.
  void run();

 private:
  using Action = std::function<live::Outcome()>;

  void resume();
  void await_mode();
  void carry_out(const Order& order);
  void sample();
  void learn_volume();
  void send_state();

  // They send their failures; the action may change the cure. @return whether they are carried out
  bool act(const std::string_view& cure_of_chip, const Action& action);
  bool boot(Mode mode);
  bool play(const Play& order);
  bool stop();
  bool set_volume(const Volume& order);
  bool seek(bool up);
  void find();

  live::Outcome need(Mode mode);
  live::Outcome boot_chip(Mode mode);
  bool keeps_finding();
  void keep_scan(const std::string& text, std::time_t time);
  void remember(const Last& last);
  void fail(const std::string& message, std::string_view cure);

  Files files_;
  std::chrono::milliseconds interval_;
  Orders& orders_;
  Events& events_;
  Stations& stations_;
  live::Sampler sampler_;
  State state_;
  std::string sent_state_;
  Last last_;
};

}  // namespace remote
