// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/host/environment.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

#include "simulator/board/state_file.h"
#include "simulator/board/trace.h"
#include "simulator/broadcast/broadcast_file.h"

namespace sim {

namespace {

constexpr int exit_bad_broadcast = 2;
constexpr int exit_hang = 3;

// The program's own output comes first.
void complain(const std::string& what) {
  std::fflush(stdout);
  std::fprintf(stderr, "kelvo-sim: %s\n", what.c_str());
}

std::string variable(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

Broadcast chosen_broadcast() {
  const std::string path = variable("KELVO_SIM_BROADCAST");
  try {
    return path.empty() ? default_broadcast() : read_broadcast(path);
  } catch (const File_error& error) {
    complain(error.what());
    std::exit(exit_bad_broadcast);
  }
}

// Where the state is kept; empty: nowhere.
std::string state_path() {
  if (std::string path = variable("KELVO_SIM_STATE"); !path.empty()) return path;
  std::filesystem::path directory = variable("XDG_STATE_HOME");
  if (directory.empty()) {
    const std::string home = variable("HOME");
    if (home.empty()) {
      complain("the board's state is not kept: none of KELVO_SIM_STATE, XDG_STATE_HOME and HOME is set");
      return {};
    }
    directory = std::filesystem::path(home) / ".local" / "state";
  }
  directory /= "kelvo";
  std::error_code ignored;  // a directory that cannot be made shows when the state is written
  std::filesystem::create_directories(directory, ignored);
  return (directory / "board.json").string();
}

// The board of the program, with what the person in front of it hears of it.
class Environment : public Board_log {
 public:
  Environment() : board_(chosen_broadcast()), state_path_(state_path()) {
    board_.set_recording(false);
    board_.set_realtime(variable("KELVO_SIM_REALTIME") == "1");
    open_trace();
    load();
    board_.add_log(*this);
  }

  Board& board() { return board_; }

  void finish() {
    if (trace_) trace_->write_totals(board_.now(), board_.totals());
    if (trace_ && !trace_file_) complain(variable("KELVO_SIM_TRACE") + ": the trace could not be written");
    save();
  }

  void mistake(Time /*now*/, const std::string& what) override { complain("board: " + what); }

  void hang(Time /*now*/, const std::string& what) override {
    complain("board: " + what);
    std::exit(exit_hang);
  }

  // A program may be stopped from outside at any time; the chip goes on all the same.
  void lasting_change(Time /*now*/) override { save(); }

 private:
  void open_trace() {
    const std::string path = variable("KELVO_SIM_TRACE");
    if (path.empty()) return;
    trace_file_.open(path, std::ios::trunc);
    if (!trace_file_) {
      complain(path + ": the trace cannot be written");
      return;
    }
    board_.add_log(trace_.emplace(trace_file_));
  }

  void load() {
    if (state_path_.empty()) return;
    try {
      board_.restore(load_state(state_path_));
    } catch (const File_error& error) {
      complain(std::string(error.what()) + "; the chip starts in reset");
    }
  }

  void save() {
    if (state_path_.empty()) return;
    try {
      save_state(state_path_, board_.state());
    } catch (const File_error& error) {
      complain(error.what());
      state_path_.clear();  // said once
    }
  }

  std::ofstream trace_file_;
  std::optional<Trace> trace_;
  Board board_;
  std::string state_path_;
};

// Never destroyed: a program may end in the middle of a call to the board.
Environment* environment = nullptr;

Board* chosen_board = nullptr;

}  // namespace

Board& environment_board() {
  if (environment == nullptr) {
    environment = new Environment;
    std::atexit([] { environment->finish(); });
  }
  return environment->board();
}

void use_board(Board* board) { chosen_board = board; }

Board& current_board() { return chosen_board != nullptr ? *chosen_board : environment_board(); }

}  // namespace sim
