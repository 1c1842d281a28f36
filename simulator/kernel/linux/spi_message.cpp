// SPDX-License-Identifier: GPL-3.0-or-later
// kelvo-spi-message LENGTH...
//
// Sends one message with a transfer of each length, all zeros, and prints the kernel's result.
#include <fcntl.h>
#include <linux/spi/spidev.h>
#include <sys/ioctl.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <vector>

int main(int argc, char** argv) {
  std::deque<std::vector<char>> buffers;
  std::vector<spi_ioc_transfer> transfers;
  for (int i = 1; i < argc; ++i) {
    std::vector<char>& buffer = buffers.emplace_back(std::strtoul(argv[i], nullptr, 10));
    spi_ioc_transfer& transfer = transfers.emplace_back();
    transfer.tx_buf = transfer.rx_buf = reinterpret_cast<std::uintptr_t>(buffer.data());
    transfer.len = static_cast<std::uint32_t>(buffer.size());
    transfer.speed_hz = 7'812'500;
  }
  const int device = open("/dev/spidev0.0", O_RDWR);
  // SPI_IOC_MESSAGE wants a number that the compiler knows.
  const auto request = _IOC(_IOC_WRITE, SPI_IOC_MAGIC, 0, transfers.size() * sizeof(spi_ioc_transfer));
  const int taken = ioctl(device, request, transfers.data());
  if (taken < 0)
    std::puts(std::strerror(errno));
  else
    std::printf("%d bytes\n", taken);
}
