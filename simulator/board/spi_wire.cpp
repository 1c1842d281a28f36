// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/board/spi_wire.h"

#include <bcm2835.h>

#include "simulator/chip/command_table.h"

namespace sim {

namespace {

constexpr uint32_t core_hz = 250'000'000;
constexpr Time core_cycle = std::chrono::nanoseconds(4);
constexpr uint32_t fastest_hz = 30'000'000;  // the chip's limit for SPI

// The divider's 0 stands for 65536; odd values are rounded down.
uint32_t effective_divider(uint32_t divider) { return divider < 2 ? 65536 : divider & ~1U; }

}  // namespace

Spi_wire::Spi_wire(Chip& chip, Clock& clock, Faults& faults, Board_log& log)
    : chip_(chip), clock_(clock), faults_(faults), log_(log) {
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
  previous_ = 0;
  sent_.clear();
  received_.clear();
  const std::string mistake = setup_mistake(control, divider);
  reaches_chip_ = mistake.empty();
  if (reaches_chip_)
    chip_.select();
  else
    log_.mistake(start_, mistake);
}

void Spi_wire::select_again() {
  if (!reaches_chip_) return;  // said already
  log_.mistake(clock_.now(), "transaction opened inside an open one");
  reaches_chip_ = false;
}

uint8_t Spi_wire::exchange(uint8_t sent) {
  clock_.advance(byte_time_);
  if (sent_.empty()) begin(sent);
  uint8_t received = reaches_chip_ ? chip_.exchange(sent) : 0;
  if (const Fault* fault = faults_.on_bus(); fault != nullptr) received = distort(*fault, received);
  sent_.push_back(sent);
  received_.push_back(received);
  return received;
}

void Spi_wire::begin(uint8_t opcode) {
  const std::string met = faults_.begin(opcode);
  if (met.empty()) return;
  log_.fault(clock_.now(), met);
  if (faults_.on_bus() == nullptr || faults_.on_bus()->bus != Bus_fault::reset_chip) return;
  chip_.drop_out();
  reaches_chip_ = false;
}

uint8_t Spi_wire::distort(const Fault& fault, uint8_t received) {
  switch (fault.bus) {
    case Bus_fault::zeros:
      return 0x00;
    case Bus_fault::ones:
      return 0xFF;
    case Bus_fault::flip_bit:
      if (fault.bit / 8 == sent_.size()) received = static_cast<uint8_t>(received ^ 0x80 >> fault.bit % 8);
      return received;
    case Bus_fault::shift:
      std::swap(previous_, received);
      return received;
    default:
      return received;
  }
}

void Spi_wire::deselect() {
  log_.transaction({.start = start_,
                    .end = clock_.now(),
                    .command = sent_.empty() ? "-" : command_name(sent_.front()),
                    .sent = sent_,
                    .received = received_});
  chip_.deselect();
  faults_.end();
}

bool Spi_wire::never_done() const {
  return faults_.on_bus() != nullptr && faults_.on_bus()->bus == Bus_fault::never_done;
}

}  // namespace sim
