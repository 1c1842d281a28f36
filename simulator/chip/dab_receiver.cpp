// SPDX-License-Identifier: GPL-3.0-or-later
// The DAB application's receiver.
#include "simulator/chip/dab_receiver.h"

#include <algorithm>

#include "simulator/chip/bytes.h"

namespace sim {

namespace {

using namespace std::chrono_literals;

constexpr Time tune_with_signal = 180ms;
constexpr Time tune_without_signal = 250ms;
// Where a fading signal is lost and found.
constexpr int detectable_rssi = 20;  // dBµV
constexpr unsigned readable_fic_quality = 30;
constexpr Time long_ago = 24h;  // anything that was in progress is over by now

}  // namespace

void Dab_receiver::reset() { state_ = not_tuned; }

const std::vector<uint32_t>& Dab_receiver::frequencies() const {
  return state_.loaded_frequencies.empty() ? air_.frequencies : state_.loaded_frequencies;
}

void Dab_receiver::tune(uint8_t index, uint16_t antenna_cap, Time now) {
  state_ = {.loaded_frequencies = std::move(state_.loaded_frequencies),
            .tuned_index = index,
            .antenna_cap = antenna_cap,
            .tuning = true,
            .tune_complete = false};
  const Ensemble* tuned_to = ensemble();
  tune_over_ = now + (tuned_to != nullptr && tuned_to->valid ? tune_with_signal : tune_without_signal);
}

bool Dab_receiver::hold_tune() {
  if (state_.tuning) tune_over_ = Time::max();
  return state_.tuning;
}

void Dab_receiver::settle(Time now) {
  if (state_.tuning && now >= tune_over_) finish_tune();
  note_acquisition();
  if (!acquired()) return;
  const std::vector<Service_list>& lists = ensemble()->lists;
  while (state_.lists_arrived < lists.size() && now >= tune_over_ + lists[state_.lists_arrived].after) {
    const Service_list& arrived = lists[state_.lists_arrived];
    observer_.event(tune_over_ + arrived.after, event::chip,
                    "service list version " + std::to_string(arrived.version) + " arrived");
    state_.lists_arrived += 1;
    state_.events |= event_service_list;
  }
}

// A fading signal is lost and found without a tune.
void Dab_receiver::note_acquisition() {
  if (ensemble() == nullptr || ensemble()->fading.empty() || state_.tuning || acquired() == was_acquired_) return;
  was_acquired_ = acquired();
  state_.status_interrupts |= digrad_acquired;
  observer_.event(clock_.now(), event::chip, was_acquired_ ? "ensemble acquired" : "ensemble lost");
}

void Dab_receiver::finish_tune() {
  state_.tuning = false;
  state_.tune_complete = true;
  observer_.event(tune_over_, event::chip,
                  "tune ended at " + std::to_string(tuned_khz()) + " kHz, " +
                      (acquired() ? "ensemble acquired" : "no ensemble acquired"));
  const Signal received = signal();
  was_acquired_ = acquired();
  state_.status_interrupts =
      static_cast<uint8_t>(bit(received.hardmute, digrad_hardmute) | bit(received.fic_error, digrad_fic_error) |
                           bit(received.rssi_high, digrad_rssi_high) | bit(received.rssi_low, digrad_rssi_low) |
                           bit(acquired(), digrad_acquired));
  if (!acquired()) return;
  const Ensemble& found = *ensemble();
  state_.events = static_cast<uint8_t>(bit(found.reconfiguration, event_reconfiguration) |
                                       bit(found.reconfiguration_warning, event_reconfiguration_warning) |
                                       bit(found.announcement, event_announcement) |
                                       bit(found.frequency_info, event_frequency_info));
}

uint32_t Dab_receiver::tuned_khz() const {
  const std::vector<uint32_t>& list = frequencies();
  return state_.tuned_index && *state_.tuned_index < list.size() ? list[*state_.tuned_index] : 0;
}

const Ensemble* Dab_receiver::ensemble() const { return state_.tuned_index ? ensemble_on(air_, tuned_khz()) : nullptr; }

Signal Dab_receiver::signal() const {
  const Ensemble* tuned_to = ensemble();
  if (tuned_to == nullptr || state_.tuning) return air_.noise;
  if (tuned_to->fading.empty()) return tuned_to->signal;
  Signal received = tuned_to->signal;
  const Fade_point now = signal_at(tuned_to->fading, clock_.on_air());
  received.rssi = now.rssi;
  received.snr = now.snr;
  received.fic_quality = now.quality;
  received.hardmute |= now.quality < readable_fic_quality;
  return received;
}

uint16_t Dab_receiver::antenna_cap() const {
  return state_.antenna_cap != 0 ? state_.antenna_cap : signal().antenna_cap;
}

bool Dab_receiver::valid() const {
  const Ensemble* tuned_to = ensemble();
  return tuned_to != nullptr && !state_.tuning && tuned_to->valid &&
         (tuned_to->fading.empty() || signal().rssi >= detectable_rssi);
}

bool Dab_receiver::acquired() const {
  return valid() && ensemble()->acquired &&
         (ensemble()->fading.empty() || signal().fic_quality >= readable_fic_quality);
}

bool Dab_receiver::frequency_info() const { return acquired() && ensemble()->frequency_info; }

const Service_list* Dab_receiver::list() const {
  if (!acquired() || state_.lists_arrived == 0) return nullptr;
  const std::vector<Service_list>& lists = ensemble()->lists;
  return lists.empty() ? nullptr : &lists[std::min<size_t>(state_.lists_arrived, lists.size()) - 1];
}

// The chip plays one audio component at a time; data components run beside it.
void Dab_receiver::start(uint32_t service_id, uint32_t component_id) {
  stop(service_id, component_id);
  const Component* component = find_component(*list(), service_id, component_id);
  if (component->tmid == 0) {
    std::erase_if(state_.running, [this](const Running_service& other) {
      const Component* playing = find_component(*list(), other.service_id, other.component_id);
      return playing == nullptr || playing->tmid == 0;
    });
  }
  state_.running.push_back({.service_id = service_id, .component_id = component_id});
}

bool Dab_receiver::stop(uint32_t service_id, uint32_t component_id) {
  return std::erase_if(state_.running, [=](const Running_service& running) {
           return running.service_id == service_id && running.component_id == component_id;
         }) != 0;
}

size_t Dab_receiver::packets_left(const Running_service& running) const {
  const Component* component =
      list() != nullptr ? find_component(*list(), running.service_id, running.component_id) : nullptr;
  if (component == nullptr || running.next_segment >= component->segments.size()) return 0;
  return component->segments.size() - running.next_segment;
}

size_t Dab_receiver::packets_waiting() const {
  size_t count = 0;
  for (const Running_service& running : state_.running) count += packets_left(running);
  return count;
}

std::optional<Dab_receiver::Packet> Dab_receiver::fetch_packet() {
  for (Running_service& running : state_.running) {
    if (packets_left(running) == 0) continue;
    const Component* component = find_component(*list(), running.service_id, running.component_id);
    const Data_segment* segment = &component->segments[running.next_segment++];
    return Packet{.service_id = running.service_id, .component = component, .segment = segment};
  }
  return std::nullopt;
}

void Dab_receiver::restore(const Dab_state& state, Time now) {
  state_ = state;
  if (tuned_khz() == 0) {  // the list has become shorter than the index, or there was no tune
    state_ = not_tuned;
    state_.loaded_frequencies = state.loaded_frequencies;
    return;
  }
  tune_over_ = now - long_ago;
  was_acquired_ = acquired();
  settle(now);
}

}  // namespace sim
