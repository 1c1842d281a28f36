// SPDX-License-Identifier: GPL-3.0-or-later
// A sample as one line of JSON.
#include <array>
#include <cstdio>
#include <ctime>
#include <nlohmann/json.hpp>

#include "live/sample.h"
#include "survey/text/codes.h"

namespace live {

namespace {

using Json = nlohmann::ordered_json;

// RFC 3339, UTC, with milliseconds.
std::string time_text(std::chrono::system_clock::time_point time) {
  const auto milliseconds = std::chrono::floor<std::chrono::milliseconds>(time.time_since_epoch());
  const auto seconds = std::chrono::floor<std::chrono::seconds>(milliseconds);
  const std::time_t whole = std::chrono::system_clock::to_time_t(std::chrono::system_clock::time_point(seconds));
  std::tm utc{};
  gmtime_r(&whole, &utc);
  std::array<char, 32> text{};
  const size_t length = std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%S", &utc);
  static_cast<void>(std::snprintf(text.data() + length, text.size() - length, ".%03dZ",
                                  static_cast<int>((milliseconds - seconds).count())));
  return text.data();
}

struct Add_reading {
  Json& json;

  void operator()(const Failure& failure) const { json["error"] = failure.why; }
  void operator()(const Not_booted& /*nothing*/) const { json["mode"] = "not booted"; }
  void operator()(const Dab_signal& signal) const {
    json["mode"] = "DAB";
    json["tune_index"] = signal.index;
    if (const std::string_view block = survey::block_name(signal.frequency); !block.empty()) json["block"] = block;
    json["tune_freq"] = signal.frequency;
    json["rssi"] = signal.rssi;
    json["snr"] = signal.snr;
    json["fic_quality"] = signal.fic_quality;
    json["cnr"] = signal.cnr;
    json["fib_errors"] = signal.fib_errors ? Json(*signal.fib_errors) : Json(nullptr);
    json["acq"] = signal.acquired;
    json["valid"] = signal.valid;
    json["hardmute"] = signal.muted;
  }
  void operator()(const Fm_signal& signal) const {
    json["mode"] = "FM";
    json["tune_freq"] = signal.frequency;
    json["rssi"] = signal.rssi;
    json["snr"] = signal.snr;
    json["multipath"] = signal.multipath;
    json["frequency_offset"] = signal.frequency_offset;
    json["valid"] = signal.valid;
  }
};

}  // namespace

std::string to_json(const Sample& sample) {
  Json json{{"time", time_text(sample.time)}};
  std::visit(Add_reading{json}, sample.reading);
  return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace live
