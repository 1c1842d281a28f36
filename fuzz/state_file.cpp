// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/board/state_file.h"

#include "fuzz/fuzz.h"

// A state that can be read is written and read back unchanged; so is the state of a board that starts from it.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static sim::Board board;
  const auto state = parsed(sim::parse_state, {data, size});
  if (!state) return 0;
  const std::string text = sim::format_state(*state);
  require(sim::format_state(sim::parse_state(text, "written")) == text, "what is written reads back the same");
  board.restore(*state);
  const std::string kept = sim::format_state(board.state());
  board.restore(sim::parse_state(kept, "kept"));
  require(sim::format_state(board.state()) == kept, "a board that is restored from its own state has the same state");
  return 0;
}
