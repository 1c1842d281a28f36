// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <iterator>

Byte_string bytes(const std::string& hex) {
  Byte_string bytes;
  for (size_t at = 0; at < hex.size(); at += 3)
    bytes.push_back(static_cast<uint8_t>(std::stoul(hex.substr(at, 2), nullptr, 16)));
  return bytes;
}

Byte_string operator+(Byte_string a, const Byte_string& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

Waits growing(std::chrono::microseconds first, std::chrono::microseconds step, int count) {
  Waits waits;
  for (int i = 0; i < count; ++i) waits.push_back(first + i * step);
  return waits;
}

void Unmap::operator()(uint8_t* /*memory*/) const { munmap(pages, size); }

Fenced fenced(size_t size) {
  const auto page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
  const size_t open = (size + page - 1) / page * page;
  void* const pages = mmap(nullptr, open + page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (pages == MAP_FAILED) throw std::bad_alloc();
  auto* const first = static_cast<uint8_t*>(pages);
  mprotect(first + open, page, PROT_NONE);
  return {first + open - size, Unmap{first, open + page}};
}

Fenced fenced(const Byte_string& bytes) {
  Fenced memory = fenced(bytes.size());
  std::copy(bytes.begin(), bytes.end(), memory.get());
  return memory;
}

std::string output_of(const std::function<void()>& print) {
  testing::internal::CaptureStdout();
  print();
  return testing::internal::GetCapturedStdout();
}

Board_test::Board_test(const sim::Chip_state& state) {
  board.settings().chip.always_ready = true;
  sim::use_board(&board);
  sim::Board_state wired{.chip = state};
  wired.pins[23] = {.function = 1, .pull = 0, .level = state.mode != sim::Mode::reset};
  board.restore(wired);
  EXPECT_EQ(Si468x_bus_init(), 0);
  start_over();
}

Board_test::~Board_test() { sim::use_board(nullptr); }

void Board_test::start_over() {
  board.clear_faults();
  board.clear_record();
  Si468x_ErrorCode = 0;
}

void Board_test::TearDown() {
  EXPECT_EQ(board.mistakes(), std::vector<std::string>{});
  EXPECT_EQ(board.never_triggered(), std::vector<std::string>{});
  EXPECT_FALSE(board.chip_select_active());
}

std::string read_file(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::string expected(const std::string& name) { return read_file(SOURCE_DIR "/tests/expected/" + name); }

void write_file(const std::string& path, const std::string& text) { std::ofstream(path, std::ios::binary) << text; }
