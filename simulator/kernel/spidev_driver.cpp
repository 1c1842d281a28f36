// SPDX-License-Identifier: GPL-3.0-or-later
// The spidev of the simulated kernel.
#include "simulator/kernel/spidev_driver.h"

#include <bcm2835.h>
#include <linux/spi/spi.h>

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cstring>

#include "simulator/host/environment.h"
#include "simulator/host/spi_registers.h"

namespace sim {

namespace {

constexpr uint32_t core_hz = 250'000'000;
constexpr uint32_t fastest_hz = 125'000'000;  // of the device, used if a transfer has no speed
constexpr uint32_t dma_alignment = 128;

uint32_t aligned(uint32_t length) { return (length + dma_alignment - 1) / dma_alignment * dma_alignment; }

// The highest speed that is not above the wanted one.
uint16_t divider(uint32_t wanted_hz) {
  const uint32_t exact = (core_hz + wanted_hz - 1) / wanted_hz;
  return static_cast<uint16_t>(std::min(exact + exact % 2, uint32_t{65534}));
}

template <typename Pointer>
Pointer user_memory(uint64_t address) {
  return std::bit_cast<Pointer>(static_cast<uintptr_t>(address));
}

}  // namespace

int Spidev_driver::control(unsigned long request, void* argument) {
  if (unbound_ != 0 && messages_ + 1 >= unbound_) return -ESHUTDOWN;
  if (request == SPI_IOC_WR_MODE) {
    std::memcpy(&mode_, argument, sizeof mode_);
    return 0;
  }
  const uint32_t size = _IOC_SIZE(request);
  if (_IOC_TYPE(request) != SPI_IOC_MAGIC || _IOC_NR(request) != 0 || _IOC_DIR(request) != _IOC_WRITE ||
      size % sizeof(spi_ioc_transfer) != 0)
    return -ENOTTY;
  ++messages_;
  if (messages_ == failing_) return -EIO;
  return message(static_cast<const spi_ioc_transfer*>(argument), size / sizeof(spi_ioc_transfer));
}

// Each transfer occupies its length, rounded up for DMA, in the driver's two buffers.
int Spidev_driver::check(const spi_ioc_transfer* transfers, uint32_t count) const {
  uint64_t to_send = 0;
  uint64_t to_receive = 0;
  for (const spi_ioc_transfer* transfer = transfers; transfer != transfers + count; ++transfer) {
    if (transfer->bits_per_word != 0 && transfer->bits_per_word != 8) return -EINVAL;
    if (transfer->tx_buf != 0) to_send += aligned(transfer->len);
    if (transfer->rx_buf != 0) to_receive += aligned(transfer->len);
  }
  return to_send > bufsiz_ || to_receive > bufsiz_ ? -EMSGSIZE : 0;
}

void Spidev_driver::set_up(const spi_ioc_transfer& transfer) const {
  Board& board = current_board();
  board.set_bit_order((mode_ & SPI_LSB_FIRST) == 0);
  board.write_register(BCM2835_SPI0_CLK, divider(transfer.speed_hz == 0 ? fastest_hz : transfer.speed_hz));
  uint32_t control = 0;
  if ((mode_ & SPI_CPHA) != 0) control |= BCM2835_SPI0_CS_CPHA;
  if ((mode_ & SPI_CPOL) != 0) control |= BCM2835_SPI0_CS_CPOL;
  if ((mode_ & SPI_CS_HIGH) != 0) control |= BCM2835_SPI0_CS_CSPOL0;
  set_cs_bits(control, BCM2835_SPI0_CS_CPHA | BCM2835_SPI0_CS_CPOL | BCM2835_SPI0_CS_CSPOL0);
}

// Chip select stays active from the first transfer to the last; `cs_change`, which some controllers do not honour, is
// ignored.
int Spidev_driver::message(const spi_ioc_transfer* transfers, uint32_t count) {
  if (const int error = check(transfers, count); error != 0) return error;
  if (count == 0) return 0;
  std::vector<uint8_t> bytes;
  for (const spi_ioc_transfer* transfer = transfers; transfer != transfers + count; ++transfer) {
    const auto* const sent = user_memory<const uint8_t*>(transfer->tx_buf);
    bytes.resize(bytes.size() + transfer->len);
    if (sent != nullptr) std::copy_n(sent, transfer->len, bytes.end() - transfer->len);
  }
  if (!exchange(bytes, transfers[0])) return -ETIMEDOUT;
  const uint8_t* received = bytes.data();
  for (const spi_ioc_transfer* transfer = transfers; transfer != transfers + count; ++transfer) {
    auto* const buffer = user_memory<uint8_t*>(transfer->rx_buf);
    if (buffer != nullptr) std::copy_n(received, transfer->len, buffer);
    received += transfer->len;
  }
  return static_cast<int>(bytes.size());
}

// @return false: the controller is not done
bool Spidev_driver::exchange(std::vector<uint8_t>& bytes, const spi_ioc_transfer& first) const {
  if (shared_ != nullptr) {
    shared_->transfer(bytes);
    return true;
  }
  set_up(first);
  open_transaction();
  move_bytes(bytes.data(), bytes.data(), static_cast<uint32_t>(bytes.size()));
  const bool done = transfer_done();
  close_transaction();
  return done;
}

}  // namespace sim
