// SPDX-License-Identifier: GPL-3.0-or-later
// Shared by the tests: boards in the states from which tests start, byte strings, expected texts.
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "si468x/si468x.h"
#include "simulator/host/environment.h"

using Byte_string = std::vector<uint8_t>;
using sim::Frames;
using sim::Waits;
using namespace std::chrono_literals;

/// `count` zero bytes: a read as the host sends it.
inline Byte_string zeros(size_t count) { return Byte_string(count, 0); }

/// Bytes written as in "0A 1B".
Byte_string bytes(const std::string& hex);
Byte_string operator+(Byte_string a, const Byte_string& b);

/// The pauses of a wait: first, first + step, ...
Waits growing(std::chrono::microseconds first, std::chrono::microseconds step, int count);

/// Gives back pages of memory.
struct Unmap {
  uint8_t* pages = nullptr;
  size_t size = 0;
  void operator()(uint8_t* memory) const;
};
using Fenced = std::unique_ptr<uint8_t[], Unmap>;

/// `size` bytes of 0 with inaccessible memory behind them: an access beyond them ends the test, with no sanitizer too.
Fenced fenced(size_t size);
Fenced fenced(const Byte_string& bytes);

/// What `print` writes to standard output.
std::string output_of(const std::function<void()>& print);

/// A board with the default broadcast, always ready, with its SPI link up and an empty record. At the end of each test
/// it checks that there was no set-up mistake, no fault that was never triggered, no open transaction.
class Board_test : public testing::Test {
 protected:
  explicit Board_test(const sim::Chip_state& state = {});
  ~Board_test() override;
  void TearDown() override;
  void start_over();  ///< forgets faults, record and error code
  sim::Board board;
};

class Powered_up : public Board_test {
 protected:
  Powered_up() : Board_test({.mode = sim::Mode::bootloader}) {}
};
class Dab_running : public Board_test {
 protected:
  Dab_running() : Board_test({.mode = sim::Mode::dab}) {}
};
class Tuned_to_33 : public Board_test {
 protected:
  Tuned_to_33() : Board_test({.mode = sim::Mode::dab, .dab = {.tuned_index = 33}}) {}
};
class Fm_running : public Board_test {
 protected:
  Fm_running() : Board_test({.mode = sim::Mode::fm}) {}
};

/// The text of a file in tests/expected.
std::string expected(const std::string& name);
std::string read_file(const std::string& path);
void write_file(const std::string& path, const std::string& text);
