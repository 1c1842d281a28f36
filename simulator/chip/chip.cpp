// SPDX-License-Identifier: GPL-3.0-or-later
// The receiver chip as an SPI slave: transactions, status bytes, clear-to-send.
#include "simulator/chip/chip.h"

#include "simulator/chip/command_table.h"
#include "trace/command_names.h"

namespace sim {

namespace {

using namespace std::chrono_literals;

constexpr Time start_up = 3ms;         // from the release of RSTB to clear-to-send
constexpr Time busy_refusing = 100us;  // a refused command
constexpr size_t first_response_byte = 4;

// STATUS0  CED.S...T   C clear-to-send, E command error, D link change, S service data, T seek/tune complete
// STATUS1  ..V.....    V events
// STATUS3  PP...O..    PP power-up state, O bytes of a command were dropped
constexpr unsigned status0_cts = 0x80;
constexpr unsigned status0_command_error = 0x40;
constexpr unsigned status0_link_change = 0x20;
constexpr unsigned status0_service_data = 0x10;
constexpr unsigned status0_tune_complete = 0x01;
constexpr unsigned status1_event = 0x20;
constexpr unsigned status3_command_overflow = 0x04;

unsigned power_up_state(Mode mode) {
  if (mode == Mode::bootloader) return 2;
  return mode == Mode::dab || mode == Mode::fm ? 3 : 0;
}

std::string check_form(const Command_rule& rule, size_t length, Mode mode) {
  if (length < rule.shortest || length > rule.longest) return "wrong length: " + std::to_string(length) + " bytes";
  if ((rule.modes & static_cast<unsigned>(mode)) == 0) return "not known in the chip's present state";
  return {};
}

}  // namespace

Chip::Chip(const Broadcast& air, const Chip_settings& settings, const Clock& clock, Observer& observer)
    : settings_(settings), core_{.air = air, .clock = clock, .observer = observer} {}

void Chip::set_reset_line(bool high) {
  if (high == (core_.mode != Mode::reset)) return;
  start_over(high ? Mode::waiting : Mode::reset, high ? start_up : Time::zero());
  core_.observer.persistent_change(core_.clock.now());
}

void Chip::brown_out() {
  if (!in_reset()) start_over(Mode::waiting, start_up);
}

void Chip::start_over(Mode mode, Time busy) {
  core_.mode = mode;
  old_mode_ = mode;
  core_.bootloader = {};
  core_.properties.reset(mode);
  core_.dab.reset();
  core_.fm.reset();
  position_ = 0;
  opcode_ = trace::rd_reply_opcode;
  command_error_ = false;
  command_overflow_ = false;
  response_.clear();
  be_busy(busy);
}

bool Chip::ready() const { return core_.clock.now() >= ready_at_; }

void Chip::be_busy(Time span) { ready_at_ = core_.clock.now() + (settings_.always_ready ? Time::zero() : span); }

// Completes whatever is due by now.
void Chip::settle() {
  if (core_.mode == Mode::dab) core_.dab.settle(core_.clock.now());
  if (core_.mode == Mode::fm) core_.fm.settle(core_.clock.now());
}

uint8_t Chip::exchange(uint8_t sent) {
  if (core_.mode == Mode::reset) return 0;
  const size_t number = position_++;
  if (number == 0) {
    settle();
    opcode_ = sent;
    dropped_ = !ready();
  }
  if (opcode_ == trace::rd_reply_opcode) return number == 0 ? 0 : reply_byte(number - 1);
  if (number < command_.size()) command_[number] = sent;
  return 0;
}

uint8_t Chip::reply_byte(size_t number) {
  if (number < first_response_byte) return status_byte(static_cast<unsigned>(number));
  const size_t at = number - first_response_byte;
  return ready() && at < response_.size() ? response_[at] : uint8_t{0};
}

// A receiver whose application does not run has nothing to report.
uint8_t Chip::status_byte(unsigned number) const {
  unsigned bits = 0;
  if (number == 0)
    bits = bit(ready(), status0_cts) | bit(ready() && command_error_, status0_command_error) |
           bit(core_.dab.status_interrupts() != 0, status0_link_change) |
           bit(core_.dab.packets_waiting() != 0, status0_service_data) |
           bit(core_.dab.tune_complete() || core_.fm.seek_complete(), status0_tune_complete);
  if (number == 1) bits = bit(core_.dab.events() != 0, status1_event);
  if (number == 3)
    bits = power_up_state(ready() ? core_.mode : old_mode_) << 6 | bit(command_overflow_, status3_command_overflow);
  return static_cast<uint8_t>(bits);
}

void Chip::deselect() {
  if (position_ != 0 && opcode_ != trace::rd_reply_opcode) take_command();
  position_ = 0;
}

void Chip::take_command() {
  const std::string name(trace::command_name(opcode_));
  if (dropped_ || position_ > command_.size()) {
    command_overflow_ = true;
    core_.observer.event(core_.clock.now(), event::refused,
                         name + ": " + (dropped_ ? "sent before clear-to-send" : "longer than 4096 bytes"));
    return;
  }
  const Command_rule& rule = find_command(opcode_);
  old_mode_ = core_.mode;
  command_overflow_ = false;
  Answer answer{.refusal = check_form(rule, position_, core_.mode)};
  if (answer.refusal.empty()) answer = rule.carry_out(core_, Bytes(command_.data(), position_));
  command_error_ = !answer.refusal.empty();
  response_ = std::move(answer.response);
  be_busy(command_error_ ? busy_refusing : rule.busy);
  if (command_error_)
    core_.observer.event(core_.clock.now(), event::refused, name + ": " + answer.refusal);
  else if (rule.persistent)
    core_.observer.persistent_change(core_.clock.now());
}

bool Chip::hold_tune() {
  if (command_error_ || command_overflow_) return false;
  return core_.mode == Mode::dab ? core_.dab.hold_tune() : core_.fm.hold_seek();
}

Chip_state Chip::state() const {
  return {.mode = core_.mode,
          .command_error = command_error_,
          .command_overflow = command_overflow_,
          .properties = core_.properties.changed(),
          .dab = core_.dab.state(),
          .fm = core_.fm.state()};
}

void Chip::restore(const Chip_state& state) {
  start_over(state.mode, Time::zero());
  command_error_ = state.command_error;
  command_overflow_ = state.command_overflow;
  for (const auto& [id, value] : state.properties)
    if (core_.properties.accepts(id, value)) core_.properties.set(id, value);
  if (state.mode == Mode::dab) core_.dab.restore(state.dab, core_.clock.now());
  if (state.mode == Mode::fm) core_.fm.restore(state.fm, core_.clock.now());
}

}  // namespace sim
