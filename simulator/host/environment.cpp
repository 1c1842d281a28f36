// SPDX-License-Identifier: GPL-3.0-or-later
// The board that the environment's variables describe.
#include "simulator/host/environment.h"

#include <sys/stat.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <optional>
#include <string>

#include "messages/messages.h"
#include "simulator/board/board_file.h"
#include "simulator/board/board_trace.h"
#include "simulator/host/state_keeper.h"
#include "simulator/host/variables.h"
#include "simulator/json/text_file.h"
#include "trace/trace_file.h"

namespace sim {

namespace {

constexpr int exit_hang = 3;

// The broadcast and the faults that the variables choose.
Board_file chosen_files() {
  for (const std::string& name : unknown_variables())
    messages::print("warning: " + name + " is not a variable of the simulated board");
  try {
    const std::string broadcast = variable("KELVO_SIM_BROADCAST");
    Board_file chosen =
        broadcast.empty() ? Board_file{.air = default_broadcast()} : parse_board_file(read_text(broadcast), broadcast);
    if (const std::string faults = variable("KELVO_SIM_FAULTS"); !faults.empty())
      parse_fault_file(read_text(faults), faults, chosen.faults);
    return chosen;
  } catch (const File_error& error) {
    messages::refuse(error.what());
  }
}

void warn_of(const std::string& what, const std::vector<std::string>& faults) {
  std::string all;
  for (const std::string& fault : faults) all += (all.empty() ? "" : "; ") + fault;
  if (!all.empty()) messages::print("warning: " + what + ": " + all);
}

constexpr size_t all_bytes = std::numeric_limits<size_t>::max();

// How many bytes of a transaction the trace shows; nothing: its default.
std::optional<size_t> trace_bytes() {
  const std::string text = variable("KELVO_SIM_TRACE_BYTES");
  if (text.empty()) return std::nullopt;
  if (text == "all") return all_bytes;
  size_t bytes = 0;
  const char* const end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, bytes);
  if (error != std::errc() || rest != end) messages::refuse("KELVO_SIM_TRACE_BYTES is neither a number nor \"all\"");
  return bytes;
}

// The default path of the state file. Its directories are created for the user alone; a home that does not exist is not
// created.
std::string default_state_path() {
  std::filesystem::path directory = variable("XDG_STATE_HOME");
  const std::filesystem::path home = variable("HOME");
  if (directory.empty() && home.empty()) {
    messages::print("the board's state is not kept: none of KELVO_SIM_STATE, XDG_STATE_HOME and HOME is set");
    return {};
  }
  const bool may_create = !directory.empty() || std::filesystem::is_directory(home);
  if (directory.empty()) directory = home / ".local" / "state";
  directory /= "kelvo";
  std::filesystem::path parent;
  for (const std::filesystem::path& name : directory)  // failures show when the file is opened
    if (may_create) static_cast<void>(mkdir((parent /= name).c_str(), S_IRWXU));
  return directory / "board.json";
}

// Empty: nowhere.
std::string state_path() {
  std::string path = variable("KELVO_SIM_STATE");
  if (path.empty()) path = default_state_path();
  std::error_code missing;  // one of the files
  if (!std::filesystem::is_regular_file(path, missing) ||
      !std::filesystem::equivalent(path, variable("KELVO_SIM_TRACE"), missing))
    return path;
  messages::print(path + ": the board's state is not kept: the trace is written to this file");
  return {};
}

bool open_trace(trace::File& file) {
  const std::string path = variable("KELVO_SIM_TRACE");
  if (path.empty()) return false;
  const std::optional<std::string> reason = file.open(path);
  if (reason) messages::print(path + ": the trace cannot be written: " + *reason);
  return !reason;
}

// The board of the program, and its messages on standard error.
class Environment : public Observer {
 public:
  explicit Environment(Board_file files) : board_(std::move(files.air), files.settings) {
    board_.use_faults(std::move(files.faults));
    board_.set_recording(false);
    const std::string realtime = variable("KELVO_SIM_REALTIME");
    realtime_ = realtime.empty() ? sleeps_by_default : realtime == "1";
    board_.set_realtime(realtime_);
    if (has_trace_) board_.add_observer(trace_.emplace(trace_file_, most_traced_));
    board_.add_observer(*this);
  }

  Board& board() { return board_; }

  bool open() {
    std::optional<Board_state> state;
    if (!keeper_.open(state)) return false;
    if (state) {
      state->on_air_ms += static_cast<uint64_t>(std::chrono::floor<std::chrono::milliseconds>(closed_for()).count());
      board_.restore(*state);
    }
    open_ = true;
    return true;
  }

  void close() {
    if (open_) keeper_.save(board_.state());
    open_ = false;
    closed_at_ = board_.now();
    really_closed_at_ = std::chrono::steady_clock::now();
    keeper_.close();
  }

  // The state first: nobody may be left to read the messages.
  void finish() {
    close();
    if (trace_) trace_->write_totals(board_.now(), board_.totals(), board_.faults());
    warn_of("never triggered", board_.faults().never_triggered());
    warn_of("overridden by another fault", board_.faults().overridden());
  }

  void event(Time /*now*/, std::string_view kind, const std::string& what) override {
    if (kind == event::mistake || kind == event::hang) messages::print("board: " + what);
    if (kind == event::hang) std::exit(exit_hang);
  }

  // A program may be killed at any time; the chip goes on anyway.
  void persistent_change(Time /*now*/) override { keeper_.save(board_.state()); }

 private:
  // Time on the air since the link was closed: the program's waits; in real time also what it does without the board.
  Time closed_for() const {
    const Time waited = board_.now() - closed_at_;
    if (!realtime_ || !really_closed_at_) return waited;
    return std::max<Time>(waited, std::chrono::steady_clock::now() - *really_closed_at_);
  }

  std::optional<size_t> most_traced_ = trace_bytes();
  trace::File trace_file_;
  bool has_trace_ = open_trace(trace_file_);
  State_keeper keeper_{state_path()};
  std::optional<Board_trace> trace_;
  Board board_;
  bool open_ = false;
  bool realtime_ = false;
  Time closed_at_{};
  std::optional<std::chrono::steady_clock::time_point> really_closed_at_;
};

// Never destroyed: a program may end in the middle of a call to the board.
Environment* environment = nullptr;

Board* chosen_board = nullptr;

Environment& of_program() {
  if (environment == nullptr) {
    messages::fill_standard_streams();
    environment = new Environment(chosen_files());
    std::atexit([] { environment->finish(); });
  }
  return *environment;
}

}  // namespace

bool sleeps_by_default = false;

void use_board(Board* board) { chosen_board = board; }

Board& current_board() { return chosen_board != nullptr ? *chosen_board : of_program().board(); }

bool open_board() { return chosen_board != nullptr || of_program().open(); }

void close_board() {
  if (chosen_board == nullptr) of_program().close();
}

}  // namespace sim
