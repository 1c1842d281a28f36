// SPDX-License-Identifier: GPL-3.0-or-later
// The DAB application's receiver.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "simulator/broadcast/broadcast.h"
#include "simulator/chip/chip_state.h"
#include "simulator/chip/clock.h"
#include "simulator/chip/observer.h"

namespace sim {

// As DAB_DIGRAD_STATUS reports them: interrupts in byte 4, and, save the two RSSI bits, the present state in byte 5.
//   ...HFARr   H audio muted, F fast information channel errors, A acquisition, R and r RSSI thresholds
//   (bit 0 of byte 5 instead: valid)
inline constexpr unsigned digrad_hardmute = 0x10;
inline constexpr unsigned digrad_fic_error = 0x08;
inline constexpr unsigned digrad_acquired = 0x04;
inline constexpr unsigned digrad_rssi_high = 0x02;
inline constexpr unsigned digrad_rssi_low = 0x01;
inline constexpr unsigned digrad_valid = 0x01;

// As DAB_GET_EVENT_STATUS reports them in byte 4.
//   RW..A.FL   R reconfiguration, W its warning, A announcement, F frequency information, L new service list
inline constexpr unsigned event_reconfiguration = 0x80;
inline constexpr unsigned event_reconfiguration_warning = 0x40;
inline constexpr unsigned event_announcement = 0x08;
inline constexpr unsigned event_frequency_info = 0x02;
inline constexpr unsigned event_service_list = 0x01;

/// The DAB application's receiver: what it is tuned to, what it has decoded so far and which components it plays.
class Dab_receiver {
 public:
  Dab_receiver(const Broadcast& air, const Clock& clock, Observer& observer)
      : air_(air), clock_(clock), observer_(observer) {}

  void reset();
  /// Completes whatever is due by now.
  void settle(Time now);

  /// The list of frequencies in kHz that tunes refer to.
  const std::vector<uint32_t>& frequencies() const;
  void load_frequencies(std::vector<uint32_t> khz) { state_.loaded_frequencies = std::move(khz); }

  /// Starts a tune to an index of the list, which drops ensemble and services.
  void tune(uint8_t index, uint16_t antenna_cap, Time now);
  /// A tune in progress does not complete. @return whether there is one
  bool hold_tune();
  bool tune_complete() const { return state_.tune_complete; }
  void acknowledge_tune() { state_.tune_complete = false; }

  uint32_t tuned_khz() const;  ///< 0 before the first tune
  uint8_t tuned_index() const { return state_.tuned_index.value_or(0); }
  uint16_t antenna_cap() const;
  /// What is received now; that of an empty frequency until the tune is over.
  Signal signal() const;
  bool valid() const;
  bool acquired() const;
  unsigned status_interrupts() const { return state_.status_interrupts; }
  void acknowledge_status() { state_.status_interrupts = 0; }

  unsigned events() const { return state_.events; }
  void acknowledge_events() { state_.events = 0; }
  bool frequency_info() const;
  /// The newest service list, null while there is none.
  const Service_list* list() const;

  void start(uint32_t service_id, uint32_t component_id);
  /// @return whether the component was running
  bool stop(uint32_t service_id, uint32_t component_id);

  /// Packets that the host has not fetched.
  size_t packets_waiting() const;
  struct Packet {
    uint32_t service_id;
    const Component* component;
    const Data_segment* segment;
  };
  /// Takes the next packet from the queue, nothing when it is empty.
  std::optional<Packet> fetch_packet();

  const Dab_state& state() const { return state_; }
  /// Continues from a saved state; a tune or list that was in progress is complete.
  void restore(const Dab_state& state, Time now);

 private:
  const Ensemble* ensemble() const;
  void finish_tune();
  void note_acquisition();
  size_t packets_left(const Running_service& running) const;

  const Broadcast& air_;
  const Clock& clock_;
  Observer& observer_;
  Dab_state state_ = not_tuned;
  Time tune_over_{};           // when the tune is, or was, complete
  bool was_acquired_ = false;  // with a fading: when it was last checked
};

}  // namespace sim
