// SPDX-License-Identifier: GPL-3.0-or-later
// The FM application's receiver.
#include "simulator/chip/fm_receiver.h"

#include <algorithm>

#include "simulator/chip/bytes.h"

namespace sim {

namespace {

using namespace std::chrono_literals;

constexpr Time seek_time_per_khz = 60us;

}  // namespace

void Fm_receiver::reset() {
  state_ = {};
  finish_seek();
  state_.seek_complete = false;
}

void Fm_receiver::seek(bool up, bool wrap, Time now) {
  const Seek_end end = find_seek_end(up, wrap);
  state_ = {.khz = end.khz, .seeking = true, .band_limit = end.band_limit};
  over_ = now + end.distance * seek_time_per_khz;
}

// The nearest station in the direction of the seek; a seek that wraps goes on from the other end of the band.
Fm_receiver::Seek_end Fm_receiver::find_seek_end(bool up, bool wrap) const {
  constexpr uint32_t band_width = fm_band_top - fm_band_bottom;
  const uint32_t to_limit = up ? fm_band_top - state_.khz : state_.khz - fm_band_bottom;
  Seek_end nearest = wrap
                         ? Seek_end{.khz = state_.khz, .distance = band_width, .band_limit = true}
                         : Seek_end{.khz = up ? fm_band_top : fm_band_bottom, .distance = to_limit, .band_limit = true};
  for (const Fm_station& station : air_.fm.stations) {
    if (!station.signal.valid || station.khz == state_.khz) continue;
    const bool ahead = (station.khz > state_.khz) == up;
    const uint32_t apart = std::max(station.khz, state_.khz) - std::min(station.khz, state_.khz);
    if (!ahead && !wrap) continue;
    const uint32_t distance = ahead ? apart : band_width - apart;
    if (distance < nearest.distance || (distance == nearest.distance && nearest.band_limit))
      nearest = {.khz = station.khz, .distance = distance, .band_limit = false};
  }
  return nearest;
}

bool Fm_receiver::hold_seek() {
  if (state_.seeking) over_ = Time::max();
  return state_.seeking;
}

void Fm_receiver::settle(Time now) {
  if (state_.seeking && now >= over_) {
    finish_seek();
    observer_.event(
        over_, event::chip,
        "seek ended at " + std::to_string(state_.khz) + " kHz" + (state_.band_limit ? ", no station found" : ""));
  }
}

void Fm_receiver::finish_seek() {
  state_.seeking = false;
  state_.seek_complete = true;
  const Fm_signal received = signal();
  state_.signal_interrupts =
      static_cast<uint8_t>(bit(received.snr_high, fm_snr_high) | bit(received.snr_low, fm_snr_low) |
                           bit(received.rssi_high, fm_rssi_high) | bit(received.rssi_low, fm_rssi_low));
}

Fm_signal Fm_receiver::signal() const {
  const Fm_station* station = fm_station_on(air_, state_.khz);
  if (station == nullptr || state_.seeking) return air_.fm.noise;
  if (station->fading.empty()) return station->signal;
  Fm_signal received = station->signal;
  const Fade_point now = signal_at(station->fading, clock_.on_air());
  received.rssi = now.rssi;
  received.snr = now.snr;
  received.multipath = now.quality;
  return received;
}

const Rds* Fm_receiver::rds() const {
  const Fm_station* station = fm_station_on(air_, state_.khz);
  if (station == nullptr || state_.seeking || !station->signal.valid || !station->rds) return nullptr;
  return &*station->rds;
}

uint8_t Fm_receiver::take_group() {
  const uint8_t group = state_.next_group;
  state_.next_group = static_cast<uint8_t>((group + 1) % 4);
  return group;
}

void Fm_receiver::restore(const Fm_state& state, Time now) {
  state_ = state;
  over_ = now;
  settle(now);
}

}  // namespace sim
