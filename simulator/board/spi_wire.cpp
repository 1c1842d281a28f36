// SPDX-License-Identifier: GPL-3.0-or-later
// The lines between SPI controller and chip: bytes take time, and a wrong set-up is noticed.
#include "simulator/board/spi_wire.h"

#include <bcm2835.h>

#include "trace/command_names.h"

namespace sim {

namespace {

constexpr uint32_t core_hz = 250'000'000;
constexpr Time core_cycle = std::chrono::nanoseconds(4);
constexpr uint32_t fastest_hz = 30'000'000;  // the chip's limit for SPI

// A divider of 0 means 65536; odd values are rounded down.
uint32_t effective_divider(uint32_t divider) { return divider < 2 ? 65536 : divider & ~1U; }

}  // namespace

Spi_wire::Spi_wire(Fault_layer& chip, Clock& clock, Observer& observer)
    : chip_(chip), clock_(clock), observer_(observer) {
  // The longest transaction of a driver; longer ones make the buffers grow.
  constexpr size_t usual_longest = 4096;
  sent_.reserve(usual_longest);
  received_.reserve(usual_longest);
}

std::string Spi_wire::setup_mistake(uint32_t control, uint32_t divider) const {
  if (!mapped_) return "transfer before bcm2835_init";
  if (!running_) return "transfer before bcm2835_spi_begin";
  if (!msb_first_) return "transfer with the least significant bit first";
  if ((control & (BCM2835_SPI0_CS_CPOL | BCM2835_SPI0_CS_CPHA)) != 0) return "transfer in another SPI mode than 0";
  if ((control & BCM2835_SPI0_CS_CS) != BCM2835_SPI_CS0) return "transfer with another chip select than 0";
  if ((control & (BCM2835_SPI0_CS_CSPOL | BCM2835_SPI0_CS_CSPOL0)) != 0) return "transfer with chip select active high";
  if (core_hz / effective_divider(divider) > fastest_hz) return "transfer with a clock too fast for the chip";
  return {};
}

void Spi_wire::select(uint32_t control, uint32_t divider) {
  start_ = clock_.now();
  byte_time_ = 8 * effective_divider(divider) * core_cycle;
  sent_.clear();
  received_.clear();
  const std::string mistake = setup_mistake(control, divider);
  chip_.select(mistake.empty());
  if (!mistake.empty()) observer_.event(start_, event::mistake, mistake);
}

void Spi_wire::select_again() {
  if (!chip_.connected()) return;  // its mistake was reported
  observer_.event(clock_.now(), event::mistake, "transaction opened inside an open one");
  chip_.disconnect();
}

uint8_t Spi_wire::exchange(uint8_t sent) {
  clock_.advance(byte_time_);
  const uint8_t received = chip_.exchange(sent);
  sent_.push_back(sent);
  received_.push_back(received);
  return received;
}

void Spi_wire::deselect() {
  observer_.transaction({.start = start_,
                         .end = clock_.now(),
                         .command = sent_.empty() ? "-" : trace::command_name(sent_.front()),
                         .sent = sent_,
                         .received = received_});
  chip_.deselect();
}

}  // namespace sim
