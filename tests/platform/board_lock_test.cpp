// SPDX-License-Identifier: GPL-3.0-or-later
// The lock of a board: who waits, for how long, and what is printed.
#include "lock/board_lock.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <memory>
#include <thread>

namespace {

using namespace std::chrono_literals;

// A program's open file; two of them in one process exclude each other as those of two processes do.
class Board_file {
 public:
  Board_file() : descriptor_(open(path().c_str(), O_RDONLY | O_CREAT | O_CLOEXEC, 0600)) {}
  ~Board_file() { close(descriptor_); }
  int acquire() const { return lock::acquire(descriptor_, "board"); }

  static std::string path() { return testing::TempDir() + "board_lock_test." + std::to_string(getpid()); }

 private:
  int descriptor_;
};

class Board_lock : public testing::Test {
 protected:
  ~Board_lock() override {
    lock::set_wait_limit(std::nullopt);
    unlink(Board_file::path().c_str());
  }
  // On some file systems the system does not show who holds a lock.
  static void expect_this_process(const std::string& found) {
    if (found == "another program") GTEST_SKIP() << "a file system that hides who holds a lock";
    std::string name;
    std::getline(std::ifstream("/proc/self/comm"), name);
    EXPECT_EQ(found, "process " + std::to_string(getpid()) + " (" + name + ")");
  }
};

TEST_F(Board_lock, FailsAfterTheLimitAndNamesTheHolder) {
  const auto first = std::make_unique<Board_file>();
  ASSERT_EQ(first->acquire(), 0);
  lock::set_wait_limit(50ms);
  testing::internal::CaptureStderr();
  const Board_file second;
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(second.acquire(), EWOULDBLOCK);
  EXPECT_GE(std::chrono::steady_clock::now() - start, 50ms);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  expect_this_process(lock::board_user().value_or("nobody"));
}

TEST_F(Board_lock, IsFreeWhenItsHolderIsGone) {
  auto first = std::make_unique<Board_file>();
  ASSERT_EQ(first->acquire(), 0);
  lock::set_wait_limit(0ms);
  const Board_file second;
  EXPECT_EQ(second.acquire(), EWOULDBLOCK);
  first.reset();
  lock::forget_user();
  EXPECT_FALSE(lock::board_user());
  EXPECT_EQ(second.acquire(), 0);
}

TEST_F(Board_lock, WithoutALimitWaitsAndPrintsALineAfterASecond) {
  auto first = std::make_unique<Board_file>();
  ASSERT_EQ(first->acquire(), 0);
  testing::internal::CaptureStderr();
  const auto start = std::chrono::steady_clock::now();
  std::thread holder([&] {
    std::this_thread::sleep_for(1200ms);
    first.reset();
  });
  const Board_file second;
  EXPECT_EQ(second.acquire(), 0);
  holder.join();
  EXPECT_GE(std::chrono::steady_clock::now() - start, 1200ms);
  const std::string line = testing::internal::GetCapturedStderr();
  const std::string end = "; waiting\n";
  const std::string begin = "kelvo-tests: board: in use by ";
  ASSERT_TRUE(line.starts_with(begin) && line.ends_with(end)) << line;
  expect_this_process(line.substr(begin.size(), line.size() - begin.size() - end.size()));
}

}  // namespace
