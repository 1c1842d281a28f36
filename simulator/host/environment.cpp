// SPDX-License-Identifier: GPL-3.0-or-later
// The board that the environment's variables describe.
#include "simulator/host/environment.h"

#include <charconv>
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

void warn_of_unknown_variables() {
  for (const std::string& name : unknown_variables())
    messages::print("warning: " + name + " is not a variable of the simulated board");
}

// The broadcast and the faults that the variables choose.
Board_file chosen_files() {
  warn_of_unknown_variables();
  try {
    const std::string broadcast = variable("KELVO_SIM_BROADCAST");
    Board_file chosen =
        broadcast.empty() ? Board_file{.air = default_broadcast()} : parse_board_file(read_text(broadcast), broadcast);
    if (const std::string faults = variable("KELVO_SIM_FAULTS"); !faults.empty())
      for (const Fault& fault : parse_fault_file(read_text(faults), faults)) chosen.faults.push_back(fault);
    return chosen;
  } catch (const File_error& error) {
    messages::refuse(error.what());
  }
}

constexpr size_t all_bytes = std::numeric_limits<size_t>::max();

// How many bytes of a transaction the trace shows; nothing: as it does by itself.
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

// Where the state is kept; empty: nowhere.
std::string state_path() {
  if (std::string path = variable("KELVO_SIM_STATE"); !path.empty()) return path;
  std::filesystem::path directory = variable("XDG_STATE_HOME");
  if (directory.empty()) {
    const std::string home = variable("HOME");
    if (home.empty()) {
      messages::print("the board's state is not kept: none of KELVO_SIM_STATE, XDG_STATE_HOME and HOME is set");
      return {};
    }
    directory = std::filesystem::path(home) / ".local" / "state";
  }
  directory /= "kelvo";
  std::error_code ignored;  // a directory that cannot be made shows when the file is locked
  std::filesystem::create_directories(directory, ignored);
  return (directory / "board.json").string();
}

// The board of the program, and its messages on standard error.
class Environment : public Observer {
 public:
  explicit Environment(Board_file files)
      : board_(std::move(files.air), files.settings), keeper_(state_path(), messages::print) {
    const std::optional<size_t> most_traced = trace_bytes();
    for (const Fault& fault : files.faults) board_.fault(fault);
    board_.set_recording(false);
    board_.set_realtime(variable("KELVO_SIM_REALTIME") == "1");
    board_.restore(keeper_.load());
    open_trace(most_traced);
    board_.add_observer(*this);
  }

  Board& board() { return board_; }

  void finish() {
    const std::vector<std::string> never_triggered = board_.never_triggered();
    if (trace_) trace_->write_totals(board_.now(), board_.totals(), never_triggered);
    std::string faults;
    for (const std::string& fault : never_triggered) faults += (faults.empty() ? "" : "; ") + fault;
    if (!faults.empty()) messages::print("warning: never triggered: " + faults);
    keeper_.save(board_.state());
    keeper_.release();
  }

  void event(Time /*now*/, std::string_view kind, const std::string& what) override {
    if (kind == event::mistake || kind == event::hang) messages::print("board: " + what);
    if (kind == event::hang) std::exit(exit_hang);
  }

  // A program may be killed at any time; the chip goes on anyway.
  void persistent_change(Time /*now*/) override { keeper_.save(board_.state()); }

 private:
  void open_trace(std::optional<size_t> most) {
    const std::string path = variable("KELVO_SIM_TRACE");
    if (path.empty()) return;
    if (const std::optional<std::string> reason = trace_file_.open(path))
      return messages::print(path + ": the trace cannot be written: " + *reason);
    board_.add_observer(trace_.emplace(trace_file_, most));
  }

  trace::File trace_file_;
  std::optional<Board_trace> trace_;
  Board board_;
  State_keeper keeper_;
};

// Never destroyed: a program may end in the middle of a call to the board.
Environment* environment = nullptr;

Board* chosen_board = nullptr;

Board& environment_board() {
  if (environment == nullptr) {
    environment = new Environment(chosen_files());
    std::atexit([] { environment->finish(); });
  }
  return environment->board();
}

}  // namespace

void use_board(Board* board) { chosen_board = board; }

Board& current_board() { return chosen_board != nullptr ? *chosen_board : environment_board(); }

}  // namespace sim
