// SPDX-License-Identifier: GPL-3.0-or-later
// A program that opens and closes the board again and again, with other programs between.
#include <bcm2835.h>
#include <sys/file.h>
#include <unistd.h>

#include <filesystem>

#include "lock/board_lock.h"
#include "si468x/spi/spi_link.h"
#include "tests/support.h"

namespace {

class Kept_board : public testing::Test {
 protected:
  Kept_board() { setenv("KELVO_SIM_STATE", path.c_str(), 1); }
  ~Kept_board() override {
    lock::set_wait_limit(std::nullopt);
    std::filesystem::remove(path);
  }

  // A lock as another program has it; null when that cannot be had.
  std::shared_ptr<std::FILE> lock() const {
    std::shared_ptr<std::FILE> file(std::fopen(path.c_str(), "r"), [](std::FILE* open) { std::fclose(open); });
    return flock(fileno(file.get()), LOCK_EX | LOCK_NB) == 0 ? file : nullptr;
  }
  static int volume() {
    std::array<uint16_t, 2> property{0x0300, 0};
    EXPECT_EQ(Si468x_get_property(property.data()), 0);
    return property[1];
  }
  const std::string path = testing::TempDir() + "board.json." + std::to_string(getpid());
};

TEST_F(Kept_board, EachOpeningContinuesWhereAnotherProgramEnded) {
  for (const int other : {5, 9}) {
    write_file(path, R"({"mode": "dab", "properties": {"768": )" + std::to_string(other) + "}}");
    ASSERT_EQ(Si468x_bus_init(), 0);
    EXPECT_EQ(lock(), nullptr);
    EXPECT_EQ(volume(), other);
    const std::array<uint16_t, 2> louder{0x0300, static_cast<uint16_t>(other + 1)};
    EXPECT_EQ(Si468x_set_property(louder.data()), 0);
    EXPECT_EQ(lock(), nullptr);  // nor on the file that replaced the first
    Si468x_SPI_shutdown();
    EXPECT_NE(lock(), nullptr);
    EXPECT_NE(read_file(path).find("\"768\": " + std::to_string(other + 1)), std::string::npos);
  }
}

TEST_F(Kept_board, OpeningEndsWhenTheTimeToWaitIsOver) {
  write_file(path, "");
  std::shared_ptr<std::FILE> other = lock();
  lock::set_wait_limit(30ms);
  EXPECT_EQ(bcm2835_init(), 0);
  EXPECT_TRUE(lock::board_user());
  other.reset();
  EXPECT_EQ(bcm2835_init(), 1);
  bcm2835_close();
}

TEST_F(Kept_board, WithoutAFileTheChipGoesOnInTheSameProgram) {
  testing::GTEST_FLAG(death_test_style) = "threadsafe";  // a program of its own: the variables are read once
  setenv("KELVO_SIM_STATE", "/dev/null", 1);
  const auto open_twice = [] {
    sim::current_board().restore({.chip = {.mode = sim::Mode::dab}});
    for (int opening = 0; opening < 2; ++opening) {
      if (Si468x_bus_init() != 0 || volume() != 63) std::exit(1);
      Si468x_SPI_shutdown();
    }
    std::exit(0);
  };
  EXPECT_EXIT(open_twice(), testing::ExitedWithCode(0), "");
}

}  // namespace
