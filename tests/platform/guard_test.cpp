// SPDX-License-Identifier: GPL-3.0-or-later
// The guard of the real board, with a library, a machine and a device of the test's own: which machines may have their
// registers mapped, what is printed, and which program has the board.
#include <bcm2835.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>

#include "lock/board_lock.h"

namespace {

struct {
  std::string names;   // of the machine
  std::string device;  // the file in place of the SPI device; empty: none
  uid_t user = 0;
  int result = 1;  // of the library
  bool spi_is_mapped = true;
  int inits = 0;
  int closes = 0;
} machine;

// A machine file and a device of the test's own, other files as they are.
std::FILE* open_stream(std::FILE* (*real)(const char*, const char*), const char* path, const char* mode) {
  if (std::strcmp(path, "/proc/device-tree/compatible") != 0) return real(path, mode);
  return machine.names.empty() ? nullptr : fmemopen(machine.names.data(), machine.names.size(), mode);
}
int open_file(int (*real)(const char*, int, mode_t), const char* path, int flags, mode_t mode) {
  return real(std::strcmp(path, "/dev/spidev0.0") == 0 ? machine.device.c_str() : path, flags, mode);
}

}  // namespace

// The bcm2835 library, and the system's calls that the guard makes.
volatile uint32_t* bcm2835_spi0 = nullptr;
int bcm2835_init() {
  ++machine.inits;
  bcm2835_spi0 = machine.spi_is_mapped ? nullptr : static_cast<uint32_t*>(MAP_FAILED);
  return machine.result;
}
int bcm2835_close() { return ++machine.closes; }

// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl50-cpp)
extern "C" {
std::FILE* __real_fopen(const char* path, const char* mode);
std::FILE* __real_fopen64(const char* path, const char* mode);
int __real_open(const char* path, int flags, mode_t mode);
int __real_open64(const char* path, int flags, mode_t mode);
std::FILE* __wrap_fopen(const char* path, const char* mode) { return open_stream(__real_fopen, path, mode); }
std::FILE* __wrap_fopen64(const char* path, const char* mode) { return open_stream(__real_fopen64, path, mode); }
int __wrap_open(const char* path, int flags, mode_t mode) { return open_file(__real_open, path, flags, mode); }
int __wrap_open64(const char* path, int flags, mode_t mode) { return open_file(__real_open64, path, flags, mode); }
uid_t __wrap_geteuid() { return machine.user; }

// The guard, as the linker calls it from other files.
int __wrap_bcm2835_init();
int __wrap_bcm2835_close();
}

namespace {

class Guard : public testing::Test {
 protected:
  Guard() { machine = {.names = names("raspberrypi,some-model", "brcm,bcm2711"), .device = {}}; }
  ~Guard() override { __wrap_bcm2835_close(); }

  // The device tree ends each name with a zero byte.
  static std::string names(const std::string& board, const std::string& chip) { return board + '\0' + chip + '\0'; }

  // What bcm2835_init returns and prints.
  static int init(std::string* printed) {
    testing::internal::CaptureStderr();
    const int result = __wrap_bcm2835_init();
    *printed = testing::internal::GetCapturedStderr();
    return result;
  }
};

TEST_F(Guard, LetsEachRaspberryPiToFourThroughWithTheLibrarysResult) {
  std::string printed;
  for (const std::string chip : {"bcm2708", "bcm2709", "bcm2710", "bcm2711", "bcm2835", "bcm2836", "bcm2837"}) {
    for (const int result : {1, 0, 7}) {
      machine = {.names = names("raspberrypi,some-model", "brcm," + chip), .device = {}, .result = result};
      EXPECT_EQ(init(&printed), result) << chip;
      EXPECT_EQ(machine.inits, 1);
      EXPECT_EQ(printed, "");
    }
  }
}

TEST_F(Guard, TurnsOtherMachinesAwayWithOneLine) {
  const struct {
    std::string names;
    const char* reason;
  } cases[] = {
      {names("raspberrypi,5-model-b", "brcm,bcm2712"),
       "names a Raspberry Pi 5, which the bcm2835 library does not know; use kelvo-spidev, in a program of your own "
       "si468x::spidev"},
      {names("pine64,rock64", "rockchip,rk3328"),
       "does not name a Raspberry Pi Zero to 4; use kelvo-sim, in a program of your own si468x::simulator"},
      {"",
       "cannot be read: not a Raspberry Pi, or a container that hides it; use kelvo-sim, in a program of your own "
       "si468x::simulator"},
  };
  std::string printed;
  for (const auto& c : cases) {
    machine.names = c.names;
    EXPECT_EQ(init(&printed), 0);
    EXPECT_EQ(printed,
              std::string(program_invocation_short_name) + ": /proc/device-tree/compatible " + c.reason + "\n");
    EXPECT_EQ(init(&printed), 0);
    EXPECT_EQ(printed, "");  // once
  }
  EXPECT_EQ(machine.inits, 0);
}

TEST_F(Guard, PrintsWhereOnlyRootHasTheRegisters) {
  const std::string line = std::string(program_invocation_short_name) +
                           ": the registers of SPI0 are mapped for root only; use sudo, or without it kelvo-spidev, "
                           "in a program of your own si468x::spidev\n";
  const struct {
    uid_t user;
    int result;
    bool spi_is_mapped;
    bool is_printed;
  } cases[] = {{1000, 0, true, true}, {0, 0, true, false}, {1000, 1, true, false}, {1000, 1, false, true}};
  std::string printed;
  for (const auto& c : cases) {
    machine.names = "";  // another line in between: a line is not repeated
    EXPECT_EQ(init(&printed), 0);
    machine.names = names("raspberrypi,some-model", "brcm,bcm2711");
    machine.user = c.user;
    machine.result = c.result;
    machine.spi_is_mapped = c.spi_is_mapped;
    EXPECT_EQ(init(&printed), c.result);
    EXPECT_EQ(printed, c.is_printed ? line : "");
  }
}

TEST_F(Guard, HoldsTheBoardFromInitToClose) {
  machine.device = testing::TempDir() + "guard_test." + std::to_string(getpid());
  const int other = open(machine.device.c_str(), O_RDONLY | O_CREAT | O_CLOEXEC, 0600);
  lock::set_wait_limit(std::chrono::milliseconds(0));
  std::string printed;
  ASSERT_EQ(flock(other, LOCK_EX | LOCK_NB), 0);
  EXPECT_EQ(init(&printed), 0);
  EXPECT_EQ(machine.inits, 0);
  EXPECT_TRUE(lock::board_user());
  EXPECT_EQ(printed, "");
  ASSERT_EQ(flock(other, LOCK_UN), 0);

  for (int i = 0; i < 2; ++i) {  // also a second init without a close
    EXPECT_EQ(init(&printed), 1);
    EXPECT_EQ(flock(other, LOCK_EX | LOCK_NB), -1);
  }
  EXPECT_EQ(__wrap_bcm2835_close(), 1);
  EXPECT_EQ(flock(other, LOCK_EX | LOCK_NB), 0);
  ASSERT_EQ(flock(other, LOCK_UN), 0);

  machine.result = 0;
  EXPECT_EQ(init(&printed), 0);
  EXPECT_FALSE(lock::board_user());
  EXPECT_EQ(flock(other, LOCK_EX | LOCK_NB), 0);
  close(other);
  unlink(machine.device.c_str());
}

// NOLINTEND(bugprone-reserved-identifier,cert-dcl50-cpp)

}  // namespace
