// SPDX-License-Identifier: GPL-3.0-or-later
// Shared by the fuzzers: a chip that replies with the fuzzer's bytes, and functions to check the results.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "si468x/si468x.h"
#include "simulator/host/environment.h"
#include "simulator/json/text_file.h"

using Input = std::span<const uint8_t>;
/// Memory of exact size, so that the sanitizer detects each access beyond it.
using Block = std::vector<uint8_t>;

/// Ends the run if `what` is false.
inline void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

/// A record with no field at its default, so that an unchanged record differs from a cleared one.
template <typename Record>
Record used() {
  std::array<uint8_t, sizeof(Record)> bytes{};
  bytes.fill(0xA5);
  return std::bit_cast<Record>(bytes);
}

/// Whether the record is unchanged since `used` made it.
template <typename Record>
bool untouched(const Record& record) {
  using Bytes = std::array<uint8_t, sizeof(Record)>;
  return std::bit_cast<Bytes>(record) == std::bit_cast<Bytes>(used<Record>());
}

/// Makes this the board that the driver talks to, with its chip in this state. Reports are discarded.
inline bool start(sim::Board& board, const sim::Chip_state& state) {
  sim::use_board(&board);
  board.set_recording(false);
  board.restore({.chip = state});
  return Si468x_bus_init() == 0 && std::freopen("/dev/null", "w", stdout) != nullptr;
}

/// Lets the chip accept every command and reply with bytes of the input: byte 0 is the number of a read (1 the next, 0
/// every one), whose status is bytes 1 to 4; all others have a good one. Each reply from its byte 4 on is the rest.
/// @return that rest, nothing when the input is too short
inline std::optional<Input> answer(Input input) {
  static sim::Board board({}, {.chip = {.always_ready = true}});
  static const bool started = start(board, {.mode = sim::Mode::dab});
  constexpr size_t status_end = 5;
  require(started, "the SPI link starts");
  if (input.size() < status_end) return {};
  const Input reply = input.subspan(status_end);
  board.clear_faults();
  board.clear_record();
  const std::array<uint8_t, 4> good{0x80, 0, 0, 0xC0}, chosen{input[1], input[2], input[3], input[4]};
  const bool every_read = input[0] == 0;
  board.fault({.command = "RD_REPLY", .status = every_read ? chosen : good, .reply = {{reply.begin(), reply.end()}}});
  if (!every_read) board.fault({.command = "RD_REPLY", .occurrence = input[0], .status = chosen});
  return reply;
}

/// The result of `parse` for the input; nothing if it fails, which it may only do with one line that names the file.
template <typename Parse>
auto parsed(Parse parse, Input input) -> std::optional<decltype(parse({}, {}))> {
  try {
    return parse({reinterpret_cast<const char*>(input.data()), input.size()}, "input.json");
  } catch (const sim::File_error& error) {
    const std::string_view line = error.what();
    require(line.starts_with("input.json: ") && line.find_first_of("\r\n") == line.npos, "an error is one line");
    return {};
  }
}
