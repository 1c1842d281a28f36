// SPDX-License-Identifier: GPL-3.0-or-later
// The guard of the real board: which machines may have their registers mapped.
#include "platform/registers/guard.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>

namespace {

int calls = 0;
int result = 0;

int init() {
  ++calls;
  return result;
}

// The device tree ends each name with a zero byte.
std::string machine(const std::string& board, const std::string& chip) { return board + '\0' + chip + '\0'; }

TEST(Guard, LetsEachRaspberryPiToFourThroughWithTheLibrarysResult) {
  const char* const chips[] = {"bcm2708", "bcm2709", "bcm2710", "bcm2711", "bcm2835", "bcm2836", "bcm2837"};
  for (const std::string chip : chips) {
    for (const int library_result : {1, 0, 7}) {
      SCOPED_TRACE(chip);
      calls = 0;
      result = library_result;
      EXPECT_EQ(init_on_raspberry_pi(machine("raspberrypi,some-model", "brcm," + chip), init), library_result);
      EXPECT_EQ(calls, 1);
    }
  }
}

TEST(Guard, TurnsOtherMachinesAwayWithOneLine) {
  const struct {
    std::string machine;
    const char* reason;
  } cases[] = {
      {machine("raspberrypi,5-model-b", "brcm,bcm2712"),
       "names a Raspberry Pi 5, which the bcm2835 library does not know; run kelvo-spidev, which needs no sudo"},
      {machine("pine64,rock64", "rockchip,rk3328"),
       "does not name a Raspberry Pi Zero to 4; to try without a board, run kelvo-sim"},
      {"", "cannot be read: not a Raspberry Pi, or a container that hides it; to try without a board, run kelvo-sim"},
  };
  calls = 0;
  result = 1;
  for (const auto& c : cases) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(init_on_raspberry_pi(c.machine, init), 0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              std::string(program_invocation_short_name) + ": /proc/device-tree/compatible " + c.reason + "\n");
  }
  EXPECT_EQ(calls, 0);
}

}  // namespace
