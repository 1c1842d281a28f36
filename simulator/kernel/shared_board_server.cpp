// SPDX-License-Identifier: GPL-3.0-or-later
// kelvo-shared-board SOCKET COMMAND [ARGUMENT...]: runs COMMAND and, until it ends, the board of the KELVO_SIM_
// variables for programs on a simulated kernel with the setting board=SOCKET. As spidev does, it keeps the bytes of one
// message together and no more. The exit status is that of COMMAND.
#include <bcm2835.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <vector>

#include "messages/messages.h"
#include "simulator/host/environment.h"
#include "simulator/kernel/shared_board.h"

namespace {

constexpr uint8_t reset_pin = 23;

int listen_at(const char* path) {
  const int listener = socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::snprintf(address.sun_path, sizeof address.sun_path, "%s", path);
  if (bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
      listen(listener, SOMAXCONN) != 0)
    messages::refuse(path + std::string(": ") + std::strerror(errno));
  return listener;
}

void set_up_board() {
  if (bcm2835_init() == 0 || bcm2835_spi_begin() == 0) messages::refuse("the simulated board does not open");
  bcm2835_spi_setBitOrder(BCM2835_SPI_BIT_ORDER_MSBFIRST);
  bcm2835_spi_setDataMode(BCM2835_SPI_MODE0);
  bcm2835_spi_setClockDivider(BCM2835_SPI_CLOCK_DIVIDER_32);
  bcm2835_spi_chipSelect(BCM2835_SPI_CS0);
  bcm2835_gpio_fsel(reset_pin, BCM2835_GPIO_FSEL_OUTP);
}

// Carries out a program's next request. @return false: the program is gone
bool serve(int program) {
  static std::vector<char> packet(1U << 16U);
  const ssize_t length = recv(program, packet.data(), packet.size(), 0);
  sim::Board_request request{};
  if (length < static_cast<ssize_t>(sizeof request)) return false;
  std::memcpy(&request, packet.data(), sizeof request);
  char* const bytes = packet.data() + sizeof request;
  const size_t count = static_cast<size_t>(length) - sizeof request;
  switch (request.kind) {
    case sim::Board_request::transfer:
      bcm2835_spi_transfern(bytes, static_cast<uint32_t>(count));
      return send(program, bytes, count, MSG_NOSIGNAL) >= 0;
    case sim::Board_request::reset_low:
      bcm2835_gpio_write(reset_pin, LOW);
      return true;
    case sim::Board_request::reset_high:
      bcm2835_gpio_write(reset_pin, HIGH);
      return true;
    case sim::Board_request::wait:
      sim::current_board().wait(sim::Time(request.nanoseconds));
      return true;
  }
  return false;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) messages::refuse("usage: kelvo-shared-board SOCKET COMMAND [ARGUMENT...]");
  set_up_board();
  std::vector<pollfd> files{{.fd = listen_at(argv[1]), .events = POLLIN, .revents = 0}};
  pid_t command = 0;
  if (const int error = posix_spawnp(&command, argv[2], nullptr, nullptr, argv + 2, environ); error != 0)
    messages::refuse(argv[2] + std::string(": ") + std::strerror(error));

  int status = 0;
  while (waitpid(command, &status, WNOHANG) == 0) {
    constexpr int check_command_ms = 10;
    if (poll(files.data(), files.size(), check_command_ms) <= 0) continue;
    for (size_t i = files.size() - 1; i > 0; --i) {
      if (files[i].revents == 0 || serve(files[i].fd)) continue;
      close(files[i].fd);
      files.erase(files.begin() + static_cast<ptrdiff_t>(i));
    }
    if (files[0].revents != 0)
      files.push_back({.fd = accept4(files[0].fd, nullptr, nullptr, SOCK_CLOEXEC), .events = POLLIN, .revents = 0});
  }
  unlink(argv[1]);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}
