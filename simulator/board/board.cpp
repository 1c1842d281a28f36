// SPDX-License-Identifier: GPL-3.0-or-later
// A Raspberry Pi's SPI0 and GPIO pins with the receiver chip behind them.
#include "simulator/board/board.h"

#include <bcm2835.h>

#include <utility>

namespace sim {

namespace {

constexpr unsigned reset_pin = 23;  // RSTB of the chip; pulled low on the board, so that an input holds it in reset
constexpr unsigned first_spi_pin = 7;
constexpr unsigned last_spi_pin = 11;

std::string_view function_name(unsigned function) {
  constexpr std::string_view names[] = {"input",       "output",      "alternate 5", "alternate 4",
                                        "alternate 0", "alternate 1", "alternate 2", "alternate 3"};
  return names[function & BCM2835_GPIO_FSEL_MASK];
}

std::string_view pull_name(unsigned pull) {
  if (pull == BCM2835_GPIO_PUD_UP) return "pull up";
  return pull == BCM2835_GPIO_PUD_DOWN ? "pull down" : "pull off";
}

}  // namespace

Board::Board(Broadcast broadcast, const Board_settings& settings)
    : broadcast_(std::move(broadcast)),
      settings_(settings),
      chip_(broadcast_, settings_.chip, clock_, observers_),
      fault_layer_(chip_, clock_, observers_),
      wire_(fault_layer_, clock_, observers_),
      controller_(wire_, clock_, observers_) {
  observers_.add(recorder_);
  controller_.reset();
}

void Board::mistake(const std::string& what) { observers_.event(clock_.now(), event::mistake, what); }

bool Board::open() {
  open_ = settings_.registers;
  wire_.set_mapped(open_);
  return open_;
}

void Board::close() {
  open_ = false;
  wire_.set_mapped(false);
  wire_.set_running(false);
}

bool Board::spi_begin() {
  if (!open_) return false;
  for (unsigned number = first_spi_pin; number <= last_spi_pin; ++number)
    set_pin_function(number, BCM2835_GPIO_FSEL_ALT0);
  write_register(BCM2835_SPI0_CS, 0);
  write_register(BCM2835_SPI0_CS, BCM2835_SPI0_CS_CLEAR);
  wire_.set_running(true);
  return true;
}

void Board::spi_end() {
  for (unsigned number = first_spi_pin; number <= last_spi_pin; ++number)
    set_pin_function(number, BCM2835_GPIO_FSEL_INPT);
  wire_.set_running(false);
}

bool Board::valid_pin(unsigned number, const char* what) {
  if (!open_) mistake(std::string(what) + " before bcm2835_init");
  if (number >= pins_.size()) mistake(std::string(what) + ": there is no GPIO " + std::to_string(number));
  return open_ && number < pins_.size();
}

void Board::set_pin_function(unsigned number, unsigned function) {
  if (!valid_pin(number, "pin function set")) return;
  pins_[number].function = static_cast<uint8_t>(function & BCM2835_GPIO_FSEL_MASK);
  observers_.pin(clock_.now(), number, function_name(function));
  if (number == reset_pin) chip_.set_reset_line(reset_line());
}

void Board::set_pin_pull(unsigned number, unsigned pull) {
  if (!valid_pin(number, "pin pull set")) return;
  pins_[number].pull = static_cast<uint8_t>(pull & 3);
  observers_.pin(clock_.now(), number, pull_name(pull));
}

void Board::write_pin(unsigned number, bool level) {
  if (!valid_pin(number, "pin written")) return;
  Pin_state& pin = pins_[number];
  if (pin.function != BCM2835_GPIO_FSEL_OUTP)
    mistake("GPIO " + std::to_string(number) + " written although it is no output");
  pin.level = level;
  observers_.pin(clock_.now(), number, level ? "high" : "low");
  if (number == reset_pin) chip_.set_reset_line(reset_line());
}

void Board::drive_pin(unsigned number, bool level) {
  if (!valid_pin(number, "pin driven")) return;
  Pin_state& pin = pins_[number];
  pin.level = level;
  if (pin.function != BCM2835_GPIO_FSEL_OUTP) set_pin_function(number, BCM2835_GPIO_FSEL_OUTP);
  write_pin(number, level);
}

void Board::start_drivers() {
  open_ = true;
  wire_.set_mapped(true);
  wire_.set_running(true);
  for (unsigned number = first_spi_pin; number <= last_spi_pin; ++number)
    pins_[number].function = BCM2835_GPIO_FSEL_ALT0;
}

bool Board::pin(unsigned number) const {
  const Pin_state& pin = pins_.at(number);
  return pin.function == BCM2835_GPIO_FSEL_OUTP ? pin.level : pin.pull == BCM2835_GPIO_PUD_UP;
}

unsigned Board::pin_function(unsigned number) const { return pins_.at(number).function; }

unsigned Board::pin_pull(unsigned number) const { return pins_.at(number).pull; }

bool Board::reset_line() const { return pins_[reset_pin].function == BCM2835_GPIO_FSEL_OUTP && pins_[reset_pin].level; }

uint32_t Board::read_register(uint32_t offset) { return controller_.read(offset); }

void Board::write_register(uint32_t offset, uint32_t value) { controller_.write(offset, value); }

void Board::wait(Time span) {
  observers_.wait(clock_.now(), span);
  clock_.advance(span);
  controller_.time_passed();
}

Board_state Board::state() const {
  Board_state state{.chip = chip_.state()};
  if (has_fading(broadcast_))
    state.on_air_ms = static_cast<uint64_t>(std::chrono::floor<std::chrono::milliseconds>(clock_.on_air()).count());
  for (size_t number = 0; number < pins_.size(); ++number) {
    const Pin_state& pin = pins_[number];
    if (pin.function != 0 || pin.pull != 0 || pin.level) state.pins[static_cast<uint16_t>(number)] = pin;
  }
  return state;
}

// The reset line follows the chip, so that a state that names only the chip's mode is whole. What was in progress is
// completed without events: nothing of it happens now.
void Board::restore(const Board_state& state) {
  const Observers observers = std::exchange(observers_, {});
  clock_.set_on_air(std::chrono::milliseconds(state.on_air_ms));
  pins_ = {};
  for (const auto& [number, pin] : state.pins) pins_.at(number) = pin;
  if (state.chip.mode != Mode::reset) {
    pins_[reset_pin].function = BCM2835_GPIO_FSEL_OUTP;
    pins_[reset_pin].level = true;
  } else {
    pins_[reset_pin].level = false;
  }
  chip_.restore(state.chip);
  controller_.reset();
  observers_ = observers;
}

}  // namespace sim
