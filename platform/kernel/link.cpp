// SPDX-License-Identifier: GPL-3.0-or-later
// The program's link to the board.
#include "platform/kernel/link.h"

#include <algorithm>

#include "platform/kernel/clock.h"
#include "platform/kernel/errors.h"

namespace kernel {

Link::Link()
    : settings_(read_settings()),
      trace_(settings_.trace),
      split_([this](uint8_t* bytes, uint32_t length) { transfer(bytes, length); }) {}

bool Link::open() { return spi_.open(); }

bool Link::begin_spi() {
  spi_in_use_ = spi_.set_up();
  return spi_in_use_;
}

void Link::transfer(uint8_t* bytes, uint32_t length) {
  trace_.begin(bytes, length);
  if (spi_in_use_)
    spi_.transfer(bytes, length);
  else
    std::fill_n(bytes, length, uint8_t{0});
  trace_.end(bytes);
}

void Link::drive(uint8_t pin, bool high) {
  if (!settings_.reset) {
    std::string controller;
    if (!find_pin_controller(controller)) return;
    settings_.reset = Line_place{controller, pin};
  }
  if (reset_line_.drive(*settings_.reset, high)) trace_.pin(pin, high);
}

void Link::wait(trace::Time span) {
  trace_.wait(span);
  sleep(span);
}

}  // namespace kernel
