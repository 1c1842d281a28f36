// SPDX-License-Identifier: GPL-3.0-or-later
// SPI0 with chip select 0, through the kernel's spidev.
#include "platform/kernel/spi_device.h"

#include <linux/spi/spidev.h>

#include <algorithm>
#include <cerrno>
#include <string>

#include "platform/kernel/errors.h"

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

bool succeeded(int error) {
  if (error != 0) report(path + (": " + reason(error)) + cure(error));
  return error == 0;
}

}  // namespace

bool Spi_device::open() { return succeeded(file_.open(path)); }

bool Spi_device::set_up() {
  uint8_t mode = SPI_MODE_0;
  return succeeded(file_.control(SPI_IOC_WR_MODE, mode));
}

void Spi_device::transfer(uint8_t* bytes, uint32_t length) {
  spi_ioc_transfer message{};
  message.tx_buf = message.rx_buf = reinterpret_cast<uintptr_t>(bytes);  // as 64 bits in every program
  message.len = length;
  message.speed_hz = speed_hz;
  message.bits_per_word = bits_per_byte;
  if (!succeeded(file_.control(SPI_IOC_MESSAGE(1), message))) std::fill_n(bytes, length, uint8_t{0});
}

}  // namespace kernel
