// SPDX-License-Identifier: GPL-3.0-or-later
// The link to a board over the kernel's drivers, for a program that opens and closes it many times.
#include <bcm2835.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "lock/board_lock.h"
#include "si468x/spi/split_transfer.h"

namespace {

constexpr uint8_t reset_pin = 23;
const std::vector<uint8_t> power_up = {1, 0, 31, 127, 0, 248, 36, 1, 32, 16, 0, 0, 0, 24, 0, 0};

// The file that programs lock in place of the device. The simulated kernel reads its settings once.
const std::string& device() {
  static const std::string path = [] {
    std::string file = testing::TempDir() + "link_test." + std::to_string(getpid());
    setenv("KELVO_SIM_STATE", "/dev/null", 1);
    setenv("KELVO_SIM_KERNEL", ("spidev=" + file).c_str(), 1);
    return file;
  }();
  return path;
}

bool open_link() { return bcm2835_init() != 0 && bcm2835_spi_begin() != 0; }

void reset() {
  bcm2835_gpio_write(reset_pin, LOW);
  bcm2835_gpio_write(reset_pin, HIGH);
  bcm2835_delay(50);
}

// What is received while the bytes are sent, in one call and in pieces.
std::vector<uint8_t> exchange(std::vector<uint8_t> bytes) {
  bcm2835_spi_transfern(reinterpret_cast<char*>(bytes.data()), static_cast<uint32_t>(bytes.size()));
  return bytes;
}
std::vector<uint8_t> exchange_in_pieces(std::vector<uint8_t> bytes) {
  bcm2835_spi_lowerCS();
  bcm2835_spi_transfern_noCS(bytes.data(), 1);
  bcm2835_spi_transfern_noCS(bytes.data() + 1, static_cast<uint32_t>(bytes.size() - 1));
  bcm2835_spi_higherCS();
  return bytes;
}

class Link : public testing::Test {
 protected:
  Link() : other_(open(device().c_str(), O_RDONLY | O_CREAT | O_CLOEXEC, 0600)) {
    lock::set_wait_limit(std::chrono::milliseconds(0));
    testing::internal::CaptureStderr();
  }
  ~Link() override {
    bcm2835_close();
    if (is_captured_) printed();
    close(other_);
    unlink(device().c_str());
  }

  bool is_locked() const { return flock(other_, LOCK_EX | LOCK_NB) != 0; }
  // The lines on standard error.
  std::string printed() {
    is_captured_ = false;
    return testing::internal::GetCapturedStderr();
  }

  int other_;  // another program's device

 private:
  bool is_captured_ = true;
};

TEST_F(Link, OpensActsAndClosesAgainAndAgain) {
  for (int i = 0; i < 3; ++i) {
    ASSERT_TRUE(open_link());
    EXPECT_TRUE(is_locked());
    reset();
    EXPECT_NE(exchange(std::vector<uint8_t>(7, 0))[1] & 0x80, 0);  // clear-to-send
    EXPECT_EQ(exchange_in_pieces(std::vector<uint8_t>(7, 0)), exchange(std::vector<uint8_t>(7, 0)));
    bcm2835_close();
    EXPECT_FALSE(is_locked());
    ASSERT_EQ(flock(other_, LOCK_UN), 0);
  }
  EXPECT_EQ(printed(), "");
}

TEST_F(Link, ReceivesZerosWhereItIsClosedOrStopped) {
  const std::vector<uint8_t> zeros(power_up.size(), 0);
  EXPECT_EQ(bcm2835_spi_begin(), 0);
  bcm2835_gpio_write(reset_pin, HIGH);
  EXPECT_EQ(exchange(power_up), zeros);
  EXPECT_EQ(exchange_in_pieces(power_up), zeros);
  ASSERT_TRUE(open_link());
  reset();
  bcm2835_spi_end();
  EXPECT_EQ(exchange(power_up), zeros);
  ASSERT_EQ(bcm2835_spi_begin(), 1);
  EXPECT_NE(exchange(std::vector<uint8_t>(16, 0)), zeros);
  EXPECT_EQ(printed(), "");
}

TEST_F(Link, FailsInSilenceWhileAnotherProgramHasTheBoard) {
  ASSERT_EQ(flock(other_, LOCK_EX | LOCK_NB), 0);
  EXPECT_EQ(bcm2835_init(), 0);
  EXPECT_TRUE(lock::board_user());
  ASSERT_EQ(flock(other_, LOCK_UN), 0);
  EXPECT_EQ(bcm2835_init(), 1);
  EXPECT_FALSE(lock::board_user());
  EXPECT_EQ(printed(), "");
}

// The driver opens the device a second time, and only the link knows why that fails.
TEST_F(Link, GivesTheReasonOfASecondOpenThatFailsOnce) {
  ASSERT_TRUE(open_link());
  bcm2835_close();
  rlimit before{};
  ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
  const int next = dup(other_);
  close(next);
  const rlimit one_more{.rlim_cur = static_cast<rlim_t>(next) + 1, .rlim_max = before.rlim_max};
  ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &one_more), 0);
  EXPECT_EQ(bcm2835_init(), 0);
  EXPECT_EQ(bcm2835_init(), 0);
  ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &before), 0);
  EXPECT_FALSE(is_locked());
  EXPECT_EQ(printed(), std::string(program_invocation_short_name) + ": /dev/spidev0.0: Too many open files\n");
}

}  // namespace
