// SPDX-License-Identifier: GPL-3.0-or-later
// The thread of the board: orders and samples.
#include "remote/radio.h"

#include <nlohmann/json.hpp>
#include <thread>
#include <utility>

#include "messages/messages.h"
#include "remote/finder.h"
#include "remote/receiver.h"
#include "survey/file/reader.h"
#include "survey/text/codes.h"

namespace remote {

namespace {

using Json = nlohmann::ordered_json;
using live::Outcome;

std::string dump(const Json& json) { return json.dump(-1, ' ', false, Json::error_handler_t::replace); }

constexpr std::string_view boot_again = "Boot the chip again.";
constexpr std::string_view find_again = "Find stations again.";
constexpr std::string_view other_place = "Find a better place for the antenna, or find stations again.";
constexpr std::string_view check_antenna = "Check the antenna, and find stations again.";
constexpr std::string_view check_board = "Check the board's supply and wiring, and the firmware images.";

std::string_view cure(live::Failure::Cause cause, std::string_view of_chip) {
  if (cause == live::Failure::Cause::in_use) return "Wait until the other program has ended, and try again.";
  if (cause == live::Failure::Cause::no_link) return "See DIAGNOSTICS in kelvo-spidev(1).";
  return of_chip;
}

std::optional<std::string> read(const std::filesystem::path& file) {
  try {
    return read_file(file);
  } catch (const Storage_error& error) {
    messages::print(error.what());
    return std::nullopt;
  }
}

bool is_last(std::string_view text) { return parse_last(text).has_value(); }
bool is_scan(std::string_view text) { return text.starts_with("{\"content\": \"FullStationScan\""); }

}  // namespace

Radio::Radio(Files files, std::chrono::milliseconds interval, Orders& orders, Events& events, Stations& stations)
    : files_(std::move(files)), interval_(interval), orders_(orders), events_(events), stations_(stations) {
  if (const auto text = read(files_.last)) last_ = parse_last(*text).value_or(Last{});
  if (const auto text = read(files_.scan)) keep_scan(*text, time_written(files_.scan));
}

live::Outcome Radio::open() {
  const live::Sample first = sampler_.take();
  static_cast<void>(state_.notice(first));
  send_state();
  const auto* const failure = std::get_if<live::Failure>(&first.reading);
  return failure != nullptr && failure->cause == live::Failure::Cause::no_link ? Outcome(*failure) : std::nullopt;
}

void Radio::run() {
  auto next = Orders::Clock::now();
  Orders::Task task;
  for (bool first = true; !task.ends; first = false) {
    try {
      if (first)
        resume();
      else
        task.order ? carry_out(*task.order) : sample();
    } catch (const std::exception& error) {  // memory has run out
      fail(error.what(), "");
      state_.doing.reset();
    }
    next = Orders::Clock::now();
    if (!first && !task.order) next += interval_;  // after an order, its outcome is worth a sample at once
    task = orders_.wait(next);
  }
}

void Radio::resume() {
  await_mode();
  if (state_.mode == Mode::off) {
    carry_out(Boot{Mode::dab});
    if (state_.mode == Mode::dab && last_.play) carry_out(*last_.play);
  } else if (state_.mode != Mode::unknown) {
    learn_volume();
  }
  send_state();
}

// Another program may have the board, or a reply may be lost. An order finds the mode out itself.
void Radio::await_mode() {
  constexpr int attempts = 60;
  for (int attempt = 1; state_.mode == Mode::unknown && attempt <= attempts; ++attempt) {
    const Orders::Task task = orders_.poll();
    if (task.order) orders_.put_back(*task.order);
    if (task.order || task.ends) return;
    if (attempt > 1) std::this_thread::sleep_for(std::chrono::seconds(1));
    static_cast<void>(state_.notice(sampler_.take()));
  }
}

void Radio::learn_volume() {
  uint16_t level = 0;
  if (!live::with_board([&] { return read_volume(level); })) state_.volume = level;
}

void Radio::sample() {
  const live::Sample sample = sampler_.take();
  events_.send("sample", live::to_json(sample));
  if (state_.notice(sample) && state_.mode != Mode::off) learn_volume();
  send_state();
}

void Radio::send_state() {
  std::string text = to_json(state_, stations_);
  if (text == sent_state_) return;
  events_.send_state(text);
  sent_state_ = std::move(text);
}

void Radio::fail(const std::string& message, std::string_view cure) {
  const std::string order(state_.doing.value_or(""));
  messages::print(order.empty() ? message : order + ": " + message);
  events_.send("failure", dump({{"order", order}, {"message", message}, {"cure", cure}}));
}

bool Radio::act(const std::string_view& cure_of_chip, const Action& action) {
  const Outcome failure = live::with_board(action);
  if (failure) fail(failure->why, cure(failure->cause, cure_of_chip));
  return !failure;
}

void Radio::remember(const Last& last) {
  if (std::exchange(last_, last) == last) return;
  try {
    write_file(files_.last, to_text(last_), is_last);
  } catch (const Storage_error& error) {
    fail(error.what(), "The radio goes on, but will not play this again after a power cut.");
  }
}

// ---- Orders ----

void Radio::carry_out(const Order& order) {
  state_.doing = name(order);
  send_state();
  struct Carry_out {
    Radio& radio;
    void operator()(const Play& play) const {
      if (radio.play(play)) radio.remember({.play = play, .volume = radio.last_.volume});
    }
    void operator()(const Stop& /*order*/) const {
      if (radio.stop()) radio.remember({.volume = radio.last_.volume});
    }
    void operator()(const Volume& volume) const {
      if (radio.set_volume(volume)) radio.remember({.play = radio.last_.play, .volume = volume});
    }
    void operator()(const Find& /*order*/) const { radio.find(); }
    void operator()(const Cancel& /*order*/) const {}  // there is nothing to be given up
    void operator()(const Boot& boot) const { static_cast<void>(radio.boot(boot.mode)); }
    void operator()(const Seek& seek) const { static_cast<void>(radio.seek(seek.up)); }
  };
  std::visit(Carry_out{*this}, order);
  state_.doing.reset();
  send_state();
}

// The chip forgets its volume.
Outcome Radio::boot_chip(Mode mode) {
  state_.doing = "boot";
  state_.set_mode(Mode::unknown);
  send_state();
  if (Outcome failure = remote::boot(mode)) return failure;
  state_.set_mode(mode);
  uint16_t level = 0;
  if (last_.volume) {
    if (Outcome failure = remote::set_volume(last_.volume->level)) return failure;
  }
  if (Outcome failure = read_volume(level)) return failure;
  state_.volume = level;
  return std::nullopt;
}

Outcome Radio::need(Mode mode) {
  Mode present = Mode::unknown;
  if (!read_mode(present) && present == mode) return std::nullopt;  // a chip that does not answer may boot
  return boot_chip(mode);
}

bool Radio::boot(Mode mode) {
  return act(check_board, [&] { return boot_chip(mode); });
}

bool Radio::play(const Play& order) {
  std::string_view chip_cure = boot_again;
  return act(chip_cure, [&]() -> Outcome {
    if (Outcome failure = need(Mode::dab)) return failure;
    state_.doing = "play";
    send_state();
    Tuning tuning;
    if (Outcome failure = read_tuning(tuning)) return failure;
    if (tuning.index != order.index || !tuning.acquired) {
      state_.set_tuning(order.index);
      if (Outcome failure = tune(order.index)) return failure;
      chip_cure = other_place;
      if (Outcome failure = await_services()) return failure;
      if (Outcome failure = read_tuning(tuning)) return failure;
    }
    chip_cure = find_again;
    if (Outcome failure = start(order)) return failure;
    chip_cure = boot_again;
    if (Outcome failure = check_dab()) return failure;
    state_.set_tuning(order.index);
    state_.khz = tuning.khz;
    state_.set_playing(order);
    return std::nullopt;
  });
}

// The chip stops a service by its ids alone; tuning again ends one that is not known.
bool Radio::stop() {
  return act(state_.mode == Mode::fm ? "Set the volume to 0, or boot DAB." : boot_again, [&]() -> Outcome {
    if (state_.mode == Mode::off) return std::nullopt;
    if (state_.mode == Mode::fm)
      return live::Failure{.cause = live::Failure::Cause::chip, .why = "FM plays as long as the chip runs it"};
    if (!state_.playing || remote::stop(*state_.playing)) {
      Tuning tuning;
      if (Outcome failure = read_tuning(tuning)) return failure;
      if (tuning.khz == 0) return std::nullopt;
      if (Outcome failure = tune(tuning.index)) return failure;
      state_.set_tuning(tuning.index);
      state_.khz = tuning.khz;
    }
    state_.playing.reset();
    state_.unknown_service = false;
    return std::nullopt;
  });
}

bool Radio::set_volume(const Volume& order) {
  return act(boot_again, [&] {
    Outcome failure = remote::set_volume(order.level);
    if (!failure) state_.volume = order.level;
    return failure;
  });
}

bool Radio::seek(bool up) {
  return act(boot_again, [&]() -> Outcome {
    if (Outcome failure = need(Mode::fm)) return failure;
    state_.doing = "seek";
    send_state();
    return remote::seek(up);
  });
}

// ---- Find stations ----

// The volume needs no end of the search, and another search none either.
bool Radio::keeps_finding() {
  const Orders::Task task = orders_.poll();
  if (task.ends) return false;
  if (!task.order || std::holds_alternative<Find>(*task.order)) return true;
  if (const auto* const volume = std::get_if<Volume>(&*task.order)) {
    carry_out(*volume);
    state_.doing = "find";
    send_state();
    return true;
  }
  if (!std::holds_alternative<Cancel>(*task.order)) orders_.put_back(*task.order);
  return false;
}

void Radio::keep_scan(const std::string& text, std::time_t time) {
  try {
    std::vector<survey::Scan_file> files = survey::read_scans(text, files_.scan.string());
    stations_.set_found(std::move(files.front().scan), time);
    events_.send("stations", "{}");
  } catch (const survey::File_error& error) {
    fail(error.what(), find_again);
  }
}

void Radio::find() {
  // What plays afterwards; of a service that is not known, the last one, where it is on the tuned frequency.
  std::optional<Play> before = state_.playing;
  if (!before && state_.unknown_service && last_.play && last_.play->index == state_.index) before = last_.play;
  if (!act(check_board, [&] { return need(Mode::dab); })) return;
  state_.doing = "find";
  send_state();
  unsigned services = 0;
  const auto report = [&](const Find_step& step) {
    services += step.services;
    state_.set_tuning(static_cast<uint8_t>(step.index));
    send_state();
    events_.send("progress", dump({{"step", step.step},
                                   {"of", step.of},
                                   {"index", step.index},
                                   {"block", survey::block_name(step.khz)},
                                   {"khz", step.khz},
                                   {"services", step.services},
                                   {"rssi", step.rssi},
                                   {"snr", step.snr}}));
  };
  const Found found = find_stations(report, [&] { return keeps_finding(); });
  if (found.failure) fail(found.failure->why, cure(found.failure->cause, boot_again));
  if (found.complete && services == 0) {
    fail("no station is received; the list stays as it was", check_antenna);
  } else if (found.complete) {
    try {
      write_file(files_.scan, found.text, is_scan);
    } catch (const Storage_error& error) {
      fail(error.what(), "The stations are known until the program ends.");
    }
    keep_scan(found.text, std::time(nullptr));
  }
  if (before && !orders_.has_order()) static_cast<void>(play(*before));
}

}  // namespace remote
