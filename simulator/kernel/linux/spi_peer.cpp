// SPDX-License-Identifier: GPL-3.0-or-later
// kelvo-spi-peer LINE COMMAND [ARGUMENT...]
//
// The simulated board on a real kernel's SPI bus, with spi-peer.c as the controller: runs COMMAND and, until it ends,
// passes the bytes of every message and the level of the reset line to the chip. The kernel's simulated GPIO controller
// shows that level in the file LINE. The exit status is that of COMMAND.
#include <bcm2835.h>
#include <fcntl.h>
#include <linux/spi/spi.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include "simulator/host/environment.h"
#include "simulator/kernel/linux/spi-peer.h"

namespace {

using Steady = std::chrono::steady_clock;

constexpr const char* device_path = "/dev/spi-peer";
constexpr uint8_t reset_pin = 23;
constexpr int exit_failed = 125;  // of this program, not of its command

[[noreturn]] void fail(const std::string& what) {
  std::fprintf(stderr, "kelvo-spi-peer: %s\n", what.c_str());
  std::exit(exit_failed);
}

[[noreturn]] void fail_on(const std::string& path) { fail(path + ": " + std::strerror(errno)); }

int open_file(const char* path, int flags) {
  const int descriptor = open(path, flags | O_CLOEXEC);
  if (descriptor < 0) fail_on(path);
  return descriptor;
}

/// The bus that the kernel drives, with the board of the KELVO_SIM_ variables. The board's time is kept equal to the
/// monotonic clock: bytes take as long as on a wire.
class Bus {
 public:
  explicit Bus(const char* line) : line_path_(line), line_(open_file(line, O_RDONLY)) {
    if (bcm2835_init() == 0 || bcm2835_spi_begin() == 0) fail("the simulated board does not open");
    bcm2835_spi_setBitOrder(BCM2835_SPI_BIT_ORDER_MSBFIRST);
    bcm2835_spi_chipSelect(BCM2835_SPI_CS0);
    bcm2835_gpio_fsel(reset_pin, BCM2835_GPIO_FSEL_OUTP);
    follow_line();
  }

  int device() const { return device_; }

  void follow_line() {
    char level = 0;
    if (pread(line_, &level, 1, 0) != 1) fail_on(line_path_);
    if (level == level_) return;
    level_ = level;
    levels_ += levels_.empty() ? "" : ", ";
    levels_ += level == '1' ? "high" : "low";
    catch_up();
    bcm2835_gpio_write(reset_pin, level == '1' ? HIGH : LOW);
  }

  void answer() {
    const ssize_t count = read(device_, buffer_.data(), buffer_.size());
    if (count < 0) fail_on(device_path);
    spi_peer_message message{};
    std::memcpy(&message, buffer_.data(), sizeof message);
    note(message);
    char* const bytes = buffer_.data() + sizeof message;
    catch_up();
    set_up(message);
    bcm2835_spi_transfern(bytes, message.length);
    std::this_thread::sleep_until(start_ + sim::current_board().now());
    if (write(device_, bytes, message.length) < 0) fail_on(device_path);
  }

  void print_summary() const {
    std::fprintf(stderr, "%u messages up to %u bytes, mode %u, %u Hz; line %s\n", messages_, worst_.length, worst_.mode,
                 worst_.speed_hz, levels_.c_str());
  }

 private:
  void note(const spi_peer_message& message) {
    messages_ += 1;
    worst_.length = std::max(worst_.length, message.length);
    worst_.speed_hz = std::max(worst_.speed_hz, message.speed_hz);
    worst_.mode = std::max(worst_.mode, message.mode);
  }

  void catch_up() {
    sim::Board& board = sim::current_board();
    const sim::Time behind = Steady::now() - start_ - board.now();
    if (behind > sim::Time::zero()) board.wait(behind);
  }

  static void set_up(const spi_peer_message& message) {
    constexpr uint32_t core_hz = 250'000'000;
    constexpr uint32_t slowest_hz = 4'000;  // the divider has 16 bits
    const uint32_t divider = (core_hz - 1) / std::max(message.speed_hz, slowest_hz) + 1;
    bcm2835_spi_setClockDivider(static_cast<uint16_t>(divider + divider % 2));
    bcm2835_spi_setDataMode(static_cast<uint8_t>(message.mode & SPI_MODE_X_MASK));
    bcm2835_spi_setChipSelectPolarity(BCM2835_SPI_CS0, (message.mode & SPI_CS_HIGH) != 0 ? HIGH : LOW);
  }

  const char* line_path_;
  int line_;
  int device_ = open_file(device_path, O_RDWR);
  Steady::time_point start_ = Steady::now();
  std::vector<char> buffer_ = std::vector<char>(1U << 16U);  // far above the kernel's limit of 4096
  char level_ = 0;
  std::string levels_;
  unsigned messages_ = 0;
  spi_peer_message worst_{};
};

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) fail("usage: kelvo-spi-peer LINE COMMAND [ARGUMENT...]");
  Bus bus(argv[1]);
  pid_t command = 0;
  if (const int error = posix_spawnp(&command, argv[2], nullptr, nullptr, argv + 2, environ); error != 0)
    fail(argv[2] + std::string(": ") + std::strerror(error));

  int status = 0;
  while (waitpid(command, &status, WNOHANG) == 0) {
    constexpr int poll_ms = 10;  // a reset takes many times as long
    pollfd device{.fd = bus.device(), .events = POLLIN, .revents = 0};
    const bool message = poll(&device, 1, poll_ms) > 0;
    bus.follow_line();
    if (message) bus.answer();
  }
  bus.follow_line();
  bus.print_summary();
  return WIFEXITED(status) ? WEXITSTATUS(status) : exit_failed;
}
