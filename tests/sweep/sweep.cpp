// SPDX-License-Identifier: GPL-3.0-or-later
// The fault sweep: runs every command line once for each of its bus transactions and each fault, and judges the
// outcome.
//
//   kelvo-sweep long|short STRIDE SEED         every STRIDE-th run of the lines with hundreds of transactions, or few
//   kelvo-sweep repeat SEED LINE FAULT NUMBER  one run, with its output
#include <bcm2835.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "tests/support.h"
#include "tests/sweep/in_process.h"
#include "tests/sweep/texts.h"

namespace {

using Seconds = std::chrono::duration<double>;

#ifdef OVER_KERNEL
constexpr bool over_kernel = true;  // kelvo-spidev on the simulated kernel
#else
constexpr bool over_kernel = false;
#endif

struct Line {
  std::string name;
  const char* options;
  sim::Chip_state start{};
  bool is_long = false;       // hundreds of transactions
  bool shows_status = false;  // prints STATUS0, clear-to-send included
};

const sim::Chip_state dab{.mode = sim::Mode::dab, .dab = {.tuned_index = 33}};
const sim::Chip_state fm{.mode = sim::Mode::fm};
const Line lines[] = {
    {"boot-dab", "-b D", {}, true},
    {"boot-fm", "-b F", {}, true},
    {"receive", "-b D -f 33 -e 17333 -c 12 -p -l 50 -g", {}, true},
    {"tune", "-f 33", {.mode = sim::Mode::dab}},
    {"play", "-p -e 17333 -c 12", dab},
    {"volume", "-l 50", dab},
    {"output", "-o 1", dab},
    {"chip", "-i", dab, false, true},
    {"status", "-d", dab},
    {"status-json", "-d -j", dab},
    {"list", "-g", dab},
    {"events", "-n", dab},
    {"time", "-t", dab},
    {"time-json", "-t -j", dab},
    {"seek", "-x", fm},
    {"rds", "-r", fm, false, true},
    {"scan", "-u", dab, true},
    {"shutdown", "-k", dab},
};

constexpr const char* answers =
    "12a\nMain Street behind the old town hall\n4711\nSpringfield\nUtopia\nindoor, 2\n47.37\n8.54\n";
constexpr const char* scan_file = "ensemblescan_4711_Springfield.json";

struct Kind {
  std::string name;
  sim::Fault fault;
};

const Kind kinds[] = {
    {"no-clear-to-send", {.cts_never = true}},
    {"late-clear-to-send", {.cts_low_reads = 3}},
    {"command-refused", {.status_bits = {0x40}}},
    {"reply-dropped", {.status_bits = {0, 0, 0, 0x08}}},
    {"command-dropped", {.status_bits = {0, 0, 0, 0x04}}},
    {"arbiter-error", {.status_bits = {0, 0, 0, 0x02}}},
    {"chip-error", {.status_bits = {0, 0, 0, 0x01}}},
    {"zeros", {.bus = sim::Bus_fault::zeros}},
    {"ones", {.bus = sim::Bus_fault::ones}},
    {"flipped-bit", {.bus = sim::Bus_fault::flip_bit}},
    {"shifted", {.bus = sim::Bus_fault::shift}},
    {"reset", {.bus = sim::Bus_fault::reset_chip}},
    {"counts-zero", {.reply = Byte_string{}}},
    {"counts-highest", {.reply = Byte_string(4096, 0xFF)}},
    {"longest-list",
     {.reply = Byte_string{0xF9, 0x0F} + Byte_string(4094, 0xFF)}},  // the longest that the driver accepts
    {"never-done", {.bus = sim::Bus_fault::never_done}},
};
constexpr const char* out_of_memory = "out-of-memory";  // at an allocation instead of a transaction

// Watches the image download: after a chunk that failed for the host, no other chunk may follow. A chunk ends with the
// first poll that shows clear-to-send, or with the last poll; later reads belong to something else.
class Download_watch : public sim::Observer {
 public:
  bool went_on = false;
  void transaction(const trace::Transaction& done) override {
    constexpr unsigned polls = 50;
    if (done.command == "HOST_LOAD") {
      went_on = went_on || failed_;
      polled_ = 0;
    } else if (done.command == "RD_REPLY" && ++polled_ <= polls) {
      const bool ready = (done.received[1] & 0x80) != 0;
      failed_ = ready ? (done.received[1] & 0x40) != 0 || (done.received[4] & 0x0F) != 0 : polled_ == polls;
      if (ready) polled_ = polls;
    } else if (done.command != "RD_REPLY") {
      failed_ = false;
      polled_ = polls;
    }
  }

 private:
  bool failed_ = false;
  unsigned polled_ = 50;
};

class Sweep {
 public:
  Sweep(const Line& line, unsigned seed) : line_(line), seed_(seed) {
    air_.time = sim::Date_time{2026, 3, 7, 9, 5, 0};
    sim::Board board(air_, {.chip = {.always_ready = true}});
    if (const std::string why = run(board, nullptr); !why.empty()) report("no fault", 0, why);
    for (const auto& frame : board.sent()) lengths_.push_back(frame.size());
    for (const auto& [command, count] : board.totals().commands)
      if (command != "RD_REPLY") commands_ += count;
    healthy_span_ = board.now();
    healthy_output_ = output_;
  }

  size_t transactions() const { return lengths_.size(); }
  const std::string& output() const { return output_; }
  int failures() const { return failures_; }

  // One run in which every allocation after the first `number` fails. @return false: it did not need more
  bool try_memory(size_t number) {
    sim::Board board(air_, {.chip = {.always_ready = true}});
    board.set_recording(false);
    const Ended ended = run_on(board, number);
    const bool ran_out = ended.allocations > number;
    const std::string message = std::string(program_invocation_short_name) + ": out of memory\n";
    std::string why = ended.hang;
    if (ended.status != 0) why = "exit status " + std::to_string(ended.status);
    if (ran_out && output_.ends_with(message))
      output_.resize(output_.size() - message.size());
    else if (ran_out)
      why = "printed no message";
    if (why.empty()) why = wrong_in_texts();
    if (!why.empty()) report(out_of_memory, number, why);
    return ran_out;
  }

  // One run with one fault at transaction `number`, counted from 1.
  void try_fault(const Kind& kind, size_t number) {
    sim::Fault fault = kind.fault;
    fault.transaction = number;
    if (fault.bus == sim::Bus_fault::flip_bit)
      fault.bit = static_cast<uint32_t>(std::minstd_rand(seed_ + static_cast<unsigned>(number))() %
                                        (8 * lengths_.at(number - 1)));
    sim::Board board(air_, {.chip = {.always_ready = true}});
    board.set_recording(false);
    board.fault(fault);
    if (const std::string why = run(board, &fault); !why.empty()) report(kind.name, number, why);
  }

 private:
  Ended run_on(sim::Board& board, uint64_t last_allocation) {
    sim::Board_state start{.chip = line_.start};
    if (start.chip.mode != sim::Mode::reset) start.pins[23] = {.function = 1, .pull = 0, .level = true};
    board.restore(start);
    sim::use_board(&board);
    std::filesystem::remove(scan_file);
    Ended ended = run_kelvo(line_.options, last_allocation);
    if (over_kernel) bcm2835_close();  // as the end of a process does
    sim::use_board(nullptr);
    output_ = ended.output;
    return ended;
  }

  // Runs the line on `board`. @return what is wrong; empty: nothing
  std::string run(sim::Board& board, const sim::Fault* fault) {
    Download_watch watch;
    board.add_observer(watch);
    const Ended ended = run_on(board, 0);
    const bool may_be_unread = fault != nullptr && fault->reply && output_ == healthy_output_;
    if (!board.never_triggered().empty() && !may_be_unread) return "the fault was never triggered";
    if (over_kernel && fault != nullptr && fault->bus == sim::Bus_fault::never_done && !take_device_fault())
      return "did not report the device once";
    if (fault != nullptr && fault->bus == sim::Bus_fault::never_done && !over_kernel)
      return board.totals().transactions + 1 == fault->transaction && !ended.hang.empty()
                 ? ""
                 : "went on although the controller was never done";
    if (!ended.hang.empty()) return ended.hang;
    if (ended.status != 0) return "exit status " + std::to_string(ended.status);
    if (board.chip_select_active()) return "chip select is left low";
    if (board.mistakes() != allowed_mistakes()) return "a mistake: " + testing::PrintToString(board.mistakes());
    if (watch.went_on) return "the download went on after a failed chunk";
    if (fault != nullptr && board.now() > longest_span()) return "took " + std::to_string(board.now() / 1s) + " s";
    if (output_.ends_with("Thank you\n") && !std::filesystem::exists(scan_file)) return "no scan file";
    if (fault != nullptr && fault->cts_low_reads != 0 && !line_.shows_status && output_ != healthy_output_)
      return "other texts than without the fault";
    return wrong_in_texts();
  }

  // Removes the line about a failed transfer from the output. @return false: it is not there once
  bool take_device_fault() {
    constexpr std::string_view line = "kelvo-spidev-sweep: /dev/spidev0.0: Connection timed out\n";
    const size_t at = output_.find(line);
    if (at == std::string::npos) return false;
    output_.erase(at, line.size());
    return output_.find(line) == std::string::npos;
  }

  std::string wrong_in_texts() const {
    if (const std::string why = wrong_in_output(output_); !why.empty()) return why;
    return std::filesystem::exists(scan_file) ? wrong_in_scan_file(read_file(scan_file)) : "";
  }

  // After a failed download the link is down; the final check of the chip's state reads nothing. Through a kernel it
  // does not even reach the board.
  std::vector<std::string> allowed_mistakes() const {
    if (over_kernel || output_.find("not transmitted successfully") == std::string::npos) return {};
    return {"transfer before bcm2835_spi_begin"};
  }

  // One full wait (10 s for a tune or a list, 2 s in reset), and for each command, including the ten polls for an
  // ensemble, a clear-to-send that never comes (1.23 s).
  sim::Time longest_span() const { return healthy_span_ + 12s + (commands_ + 10) * 1250ms; }

  void report(const std::string& kind, size_t number, const std::string& why) {
    ++failures_;
    std::fprintf(stderr, "%s: %s at %zu: %s\n  again: kelvo-sweep repeat %u %s %s %zu\n", line_.name.c_str(),
                 kind.c_str(), number, why.c_str(), seed_, line_.name.c_str(), kind.c_str(), number);
  }

  const Line& line_;
  const unsigned seed_;
  sim::Broadcast air_ = sim::default_broadcast();
  std::vector<size_t> lengths_;
  uint64_t commands_ = 0;
  sim::Time healthy_span_{};
  std::string healthy_output_;
  std::string output_;
  int failures_ = 0;
};

// The runs of a line are numbered by transaction, then by fault; a stride that has no common factor with the number of
// faults still spreads every fault over the whole line.
int sweep_line(const Line& line, size_t stride, unsigned seed) {
  const auto start = std::chrono::steady_clock::now();
  Sweep sweep(line, seed);
  size_t runs = 0;
  for (size_t run = 0; run < sweep.transactions() * std::size(kinds); run += stride, ++runs)
    sweep.try_fault(kinds[run % std::size(kinds)], 1 + run / std::size(kinds));
  for (size_t allocations = 1; sweep.try_memory(allocations); allocations += stride) ++runs;
  const Seconds took = std::chrono::steady_clock::now() - start;
  std::fprintf(stderr, "%-12s %4zu transactions %6zu runs %4d failed %6.1f s\n", line.name.c_str(),
               sweep.transactions(), runs, sweep.failures(), took.count());
  return sweep.failures();
}

const auto& named(const auto& table, const std::string& name) {
  for (const auto& row : table)
    if (row.name == name) return row;
  std::fprintf(stderr, "kelvo-sweep: unknown name \"%s\"\n", name.c_str());
  std::exit(2);
}

unsigned number(const std::string& text) { return static_cast<unsigned>(std::strtoul(text.c_str(), nullptr, 10)); }

int repeat(const std::vector<std::string>& words) {
  Sweep sweep(named(lines, words[2]), number(words[1]));
  const size_t at = number(words[4]);
  const bool memory = words[3] == out_of_memory;
  if (at == 0 || (!memory && at > sweep.transactions())) {
    std::fprintf(stderr, "kelvo-sweep: numbers are from 1, of transactions to %zu\n", sweep.transactions());
    return 1;
  }
  if (memory)
    sweep.try_memory(at);
  else
    sweep.try_fault(named(kinds, words[3]), at);
  std::fputs(sweep.output().c_str(), stderr);
  return sweep.failures();
}

int sweep_lines(bool long_lines, size_t stride, unsigned seed) {
  std::fprintf(stderr, "stride %zu, seed %u\n", stride, seed);
  int failures = 0;
  for (const Line& line : lines)
    if (line.is_long == long_lines) failures += sweep_line(line, stride, seed);
  return failures;
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> words(argv + 1, argv + argc);
  const bool all = words.size() == 3 && (words[0] == "long" || words[0] == "short") && number(words[1]) != 0;
  if (!all && (words.size() != 5 || words[0] != "repeat")) {
    std::fputs("usage: kelvo-sweep long|short STRIDE SEED | kelvo-sweep repeat SEED LINE FAULT NUMBER\n", stderr);
    return 2;
  }
  std::string folder = std::filesystem::temp_directory_path() / "kelvo-sweep-XXXXXX";
  if (mkdtemp(folder.data()) == nullptr) return 1;
  std::filesystem::current_path(folder);
  take_standard_streams(answers);
  const int failures = all ? sweep_lines(words[0] == "long", number(words[1]), number(words[2])) : repeat(words);
  std::filesystem::remove_all(folder);
  return failures == 0 ? 0 : 1;
}
