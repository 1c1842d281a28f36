// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/sweep/in_process.h"

#include <sys/mman.h>
#include <unistd.h>

#include <csetjmp>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <new>
#include <sstream>
#include <vector>

#include "simulator/board/board.h"

int kelvo_main(int argc, char** argv);  // the program's main, which the build renames

namespace {

// A call of exit in the program jumps back here. No destructor is skipped: between kelvo_main and that call no function
// has an object with one.
std::jmp_buf after_run;
bool running = false;
int exit_status = 0;

uint64_t allocations = 0;
uint64_t allocations_allowed = UINT64_MAX;

int call(std::vector<char*>& argv) {
  running = true;
  if (setjmp(after_run) == 0) exit_status = kelvo_main(static_cast<int>(argv.size()) - 1, argv.data());
  running = false;
  return exit_status;
}

std::string take_output() {
  std::fflush(stdout);
  std::string output(static_cast<size_t>(lseek(STDOUT_FILENO, 0, SEEK_CUR)), '\0');
  if (pread(STDOUT_FILENO, output.data(), output.size(), 0) != static_cast<ssize_t>(output.size())) std::abort();
  if (lseek(STDOUT_FILENO, 0, SEEK_SET) != 0 || ftruncate(STDOUT_FILENO, 0) != 0) std::abort();
  return output;
}

}  // namespace

extern "C" {

[[noreturn]] void __real_exit(int status);

[[noreturn]] void __wrap_exit(int status) {
  if (!running) __real_exit(status);
  exit_status = status;
  std::longjmp(after_run, 1);
}

}  // extern "C"

// Not inlined: g++ 14 takes a free() that it sees in the place of a delete for a mistake.
[[gnu::noinline]] void* operator new(size_t size) {
  void* const memory = ++allocations > allocations_allowed ? nullptr : std::malloc(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, size_t /*size*/) noexcept { std::free(memory); }

void take_standard_streams(const std::string& answers) {
  const int input = memfd_create("answers", 0);
  const int output = memfd_create("output", 0);
  if (write(input, answers.data(), answers.size()) != static_cast<ssize_t>(answers.size())) std::abort();
  if (dup2(input, STDIN_FILENO) < 0 || dup2(output, STDOUT_FILENO) < 0) std::abort();
}

Ended run_kelvo(const std::string& options, uint64_t last_allocation) {
  std::rewind(stdin);
  std::cin.clear();
  std::istringstream stream("kelvo " + options);
  std::vector<std::string> words;
  for (std::string word; stream >> word;) words.push_back(word);
  std::vector<char*> argv;
  for (std::string& word : words) argv.push_back(word.data());
  argv.push_back(nullptr);

  Ended ended{};
  std::FILE* const terminal = stderr;
  stderr = stdout;
  allocations = 0;
  if (last_allocation != 0) allocations_allowed = last_allocation;
  try {
    ended.status = call(argv);
  } catch (const sim::Hang& hang) {
    running = false;
    ended.hang = hang.what();
  }
  allocations_allowed = UINT64_MAX;
  ended.allocations = allocations;
  stderr = terminal;
  ended.output = take_output();
  return ended;
}
