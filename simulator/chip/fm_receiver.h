// SPDX-License-Identifier: GPL-3.0-or-later
// The FM application's receiver.
#pragma once

#include <cstdint>

#include "simulator/broadcast/broadcast.h"
#include "simulator/chip/chip_state.h"
#include "simulator/chip/clock.h"
#include "simulator/chip/observer.h"

namespace sim {

// As FM_RSQ_STATUS reports them in byte 4.
//   ....SsRr   S and s SNR above and below its threshold, R and r RSSI likewise
inline constexpr unsigned fm_snr_high = 0x08;
inline constexpr unsigned fm_snr_low = 0x04;
inline constexpr unsigned fm_rssi_high = 0x02;
inline constexpr unsigned fm_rssi_low = 0x01;

class Fm_receiver {
 public:
  Fm_receiver(const Broadcast& air, const Clock& clock, Observer& observer)
      : air_(air), clock_(clock), observer_(observer) {}

  void reset();
  /// Completes whatever is due by now.
  void settle(Time now);

  /// Starts a seek for the next station that is good enough; it ends at the band's limit or, with `wrap`, goes on from
  /// the other end up to where it began.
  void seek(bool up, bool wrap, Time now);
  /// A seek in progress does not complete. @return whether there is one
  bool hold_seek();
  bool seek_complete() const { return state_.seek_complete; }
  void acknowledge_seek() { state_.seek_complete = false; }

  uint32_t khz() const { return state_.khz; }
  bool band_limit() const { return state_.band_limit; }
  Fm_signal signal() const;
  unsigned signal_interrupts() const { return state_.signal_interrupts; }
  void acknowledge_signal() { state_.signal_interrupts = 0; }

  /// The radio data that can be decoded now, null: none.
  const Rds* rds() const;
  /// The number of the group that has arrived, 0 to 3 in turn.
  uint8_t take_group();

  const Fm_state& state() const { return state_; }
  void restore(const Fm_state& state, Time now);

 private:
  struct Seek_end {
    uint32_t khz;
    uint32_t distance;  // kHz passed on the way
    bool band_limit;
  };
  Seek_end find_seek_end(bool up, bool wrap) const;
  void finish_seek();

  const Broadcast& air_;
  const Clock& clock_;
  Observer& observer_;
  Fm_state state_{};
  Time over_{};
};

}  // namespace sim
