// SPDX-License-Identifier: GPL-3.0-or-later
// SPI0 with chip select 0, through the kernel's spidev.
#include "platform/kernel/spi_device.h"

#include <linux/spi/spidev.h>

#include <cerrno>

#include "lock/board_lock.h"

namespace kernel {

namespace {

constexpr const char* path = "/dev/spidev0.0";
constexpr uint32_t speed_hz = 7'812'500;
constexpr uint8_t bits_per_byte = 8;

static_assert(sizeof(spi_ioc_transfer) == 32, "the layout is the same for programs of 32 and 64 bits");

std::string cure(int error) {
  switch (error) {
    case ENOENT:
      return "; enable SPI with raspi-config";
    case EACCES:
      return "; join the group spi";
    case EMSGSIZE:
      return "; set the parameter bufsiz of the module spidev to 4096 or more";
    case ESHUTDOWN:
      return "; the device was removed from its driver, start again when it is back";
    default:
      return "";
  }
}

std::optional<std::string> fault(int error) {
  if (error == 0) return std::nullopt;
  return path + (": " + reason(error)) + cure(error);
}

}  // namespace

// spidev itself keeps only the bytes of one message together, not a command with its polls and its reply.
std::optional<std::string> Spi_device::open() {
  const int error = file_.open(path);
  return fault(error != 0 ? error : lock::acquire(file_.descriptor(), path));
}

std::optional<std::string> Spi_device::set_up() {
  uint8_t mode = SPI_MODE_0;
  return fault(file_.control(SPI_IOC_WR_MODE, mode));
}

std::optional<std::string> Spi_device::transfer(uint8_t* bytes, uint32_t length) {
  spi_ioc_transfer message{};
  message.tx_buf = message.rx_buf = reinterpret_cast<uintptr_t>(bytes);  // as 64 bits in every program
  message.len = length;
  message.speed_hz = speed_hz;
  message.bits_per_word = bits_per_byte;
  return fault(file_.control(SPI_IOC_MESSAGE(1), message));
}

std::optional<std::string> Spi_device::try_open() { return fault(Device_file().open(path)); }

}  // namespace kernel
