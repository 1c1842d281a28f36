// SPDX-License-Identifier: GPL-3.0-or-later
// The frequency list, tuning and its waits, the scan's tune-and-qualify step, starting and stopping services.
#include "frontend/tuning.h"

#include "tests/support.h"

namespace {

using Tuning = Dab_running;

TEST_F(Tuning, FrequencyTableIsBandIii) {
  board.air().frequencies = {1000};
  EXPECT_EQ(Si468x_DAB_set_freq_list(), 0);
  ASSERT_EQ(board.sent()[0].size(), 168U);
  EXPECT_EQ(Byte_string(board.sent()[0].begin(), board.sent()[0].begin() + 8),
            (Byte_string{0xB8, 41, 0, 0, 0x50, 0xAB, 0x02, 0x00}));  // 174928 kHz
  std::array<uint32_t, 50> frequencies{};
  uint8_t count = 0;
  EXPECT_EQ(Si468x_DAB_get_freq_list(frequencies.data(), &count, 50), 0);
  EXPECT_EQ(count, 41);
  EXPECT_EQ(std::vector<uint32_t>(frequencies.begin(), frequencies.begin() + 41), sim::band_iii_frequencies());
}

TEST_F(Tuning, FrequencyListIsReadAsLongAsTheChipSaysAndKeptAsFarAsThereIsRoom) {
  const struct {
    size_t listed;
    uint8_t capacity;
  } cases[] = {{0, 3}, {2, 3}, {3, 3}, {41, 3}, {255, 64}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.listed);
    board.air().frequencies.assign(c.listed, 0);
    for (size_t i = 0; i < c.listed; ++i) board.air().frequencies[i] = 0x01020304 + static_cast<uint32_t>(i);
    board.clear_record();
    const Fenced memory = fenced(Byte_string(4 * size_t{c.capacity}, 0x77));
    auto* const frequencies = reinterpret_cast<uint32_t*>(memory.get());
    uint8_t count = 99;
    EXPECT_EQ(Si468x_DAB_get_freq_list(frequencies, &count, c.capacity), 0);
    EXPECT_EQ(count, c.listed);
    EXPECT_EQ(board.sent(), (Frames{{0xB9, 0}, zeros(7), zeros(6), {0xB9, 0}, zeros(7), zeros(9 + 4 * c.listed)}));
    const size_t kept = std::min<size_t>(c.listed, c.capacity);
    for (size_t i = 0; i < kept; ++i) EXPECT_EQ(frequencies[i], 0x01020304 + i);
    for (size_t i = kept; i < c.capacity; ++i) EXPECT_EQ(frequencies[i], 0x77777777U);
  }
}

TEST_F(Tuning, FrequencyListFailures) {
  uint32_t frequency = 5;
  uint8_t count = 99;
  board.fault({.command = "DAB_GET_FREQ_LIST", .occurrence = 2, .status_bits = {0x40}});
  EXPECT_EQ(Si468x_DAB_get_freq_list(&frequency, &count, 1), -2);
  EXPECT_EQ(Si468x_ErrorCode, 119U);
  EXPECT_EQ(count, 41);
  EXPECT_EQ(frequency, 5U);
  board.fault({.command = "DAB_GET_FREQ_LIST", .occurrence = 1, .cts_never = true});
  EXPECT_EQ(Si468x_DAB_get_freq_list(&frequency, &count, 1), -3);
  EXPECT_EQ(Si468x_ErrorCode, 19U);
  EXPECT_EQ(count, 0);
}

// A tune or a seek that never completes returns what its last poll returned.
class Endless : public Tuning {
 protected:
  void expect_result_of_last_poll(const char* command, uint32_t code, const std::function<int16_t()>& operation) {
    const struct {
      std::array<uint8_t, 4> status_bits;
      int16_t result;
    } cases[] = {{{0x10}, 0}, {{0, 0, 0, 0x02}, -1}, {{0x40}, -2}};
    for (const auto& c : cases) {
      start_over();
      board.fault({.command = command, .stc_never = true});
      board.fault({.command = "RD_REPLY", .occurrence = 101, .status_bits = c.status_bits});
      EXPECT_EQ(operation(), c.result) << command;
      EXPECT_EQ(Si468x_ErrorCode, code);
      EXPECT_EQ(board.waits(), Waits(100, 100ms));
      EXPECT_EQ(board.sent().size(), 102U);
    }
  }
};

TEST_F(Endless, TuneReturnsTheResultOfItsLastPoll) {
  expect_result_of_last_poll("DAB_TUNE_FREQ", 121, [] { return Si468x_DAB_tune_freq(33); });
}

TEST_F(Endless, SeekReturnsTheResultOfItsLastPoll) {
  board.restore({.chip = {.mode = sim::Mode::fm}, .pins = board.state().pins});
  expect_result_of_last_poll("FM_SEEK_START", 160, [] { return Si468x_tune_next_station(); });
}

TEST_F(Tuning, SeekGoesInBothDirections) {
  board.restore({.chip = {.mode = sim::Mode::fm}, .pins = board.state().pins});
  for (const bool up : {true, false}) {
    board.clear_record();
    EXPECT_EQ(Si468x_FM_seek(up), 0);
    EXPECT_EQ(board.sent().front(), (Byte_string{0x31, 0x00, up ? uint8_t{0x03} : uint8_t{0x01}, 0x00, 0x00, 0x00}));
  }
}

TEST_F(Tuning, PollThatFailsRecordsItsCodeAndDoesNotEndTheWait) {
  board.fault({.command = "RD_REPLY", .occurrence = 2, .status_bits = {0x41}});  // complete, but with an error
  EXPECT_EQ(Si468x_DAB_tune_freq(33), 0);
  EXPECT_EQ(Si468x_ErrorCode, 114U);
  EXPECT_EQ(board.waits(), Waits(2, 100ms));

  EXPECT_EQ(Si468x_DAB_tune_freq(200), -2);  // beyond the chip's list
  EXPECT_EQ(Si468x_ErrorCode, 21U);
}

TEST_F(Tuned_to_33, ServicesStartAndStop) {
  output_of([] { EXPECT_EQ(play_station(17333, 99), -1); });
  EXPECT_EQ(play_station(17333, 12), 0);
  EXPECT_EQ(board.state().chip.dab.running.size(), 1U);
  EXPECT_EQ(Si468x_stop_digital_service(0, 17333, 12), 0);
  EXPECT_EQ(board.state().chip.dab.running.size(), 0U);
  EXPECT_EQ(Si468x_stop_digital_service(1, 0x89ABCDEF, 0x01234567), -2);
  EXPECT_EQ(Si468x_ErrorCode, 33U);
  EXPECT_EQ(board.sent()[board.sent().size() - 2],
            (Byte_string{0x82, 1, 0, 0, 0xEF, 0xCD, 0xAB, 0x89, 0x67, 0x45, 0x23, 0x01}));
}

TEST_F(Tuning, ScanStepFailuresNeverLookLikeAnUnstableList) {
  const struct {
    sim::Fault fault;
    int16_t result;
    uint32_t code;
  } cases[] = {
      {{.command = "DAB_TUNE_FREQ", .status_bits = {0, 0, 0, 0x02}}, -2, 65},
      {{.command = "DAB_TUNE_FREQ", .status_bits = {0x40}}, -2, 65},
      {{.command = "DAB_TUNE_FREQ", .cts_never = true}, -3, 65},
      {{.command = "DAB_DIGRAD_STATUS", .status_bits = {0, 0, 0, 0x02}}, -2, 165},
      {{.command = "DAB_DIGRAD_STATUS", .cts_never = true}, -3, 165},
      {{.command = "DAB_DIGRAD_STATUS", .reply = Byte_string{0, 0x04, 38, 14, 100}}, 0, 0},  // acquired, not valid
      {{.command = "DAB_GET_EVENT_STATUS", .status_bits = {0, 0, 0, 0x02}}, -2, 265},
      {{.command = "DAB_GET_EVENT_STATUS", .cts_never = true}, -3, 265},
      {{.command = "DAB_GET_EVENT_STATUS", .reply = Byte_string{0, 1, 0, 0}}, -1, 365},  // never announced as new
  };
  for (const auto& c : cases) {
    board.clear_faults();
    board.fault(c.fault);
    Si468x_ErrorCode = 0;
    Si468x_DAB_digrad_status status;
    EXPECT_EQ(Si468x_DAB_tune_freq_save(33, status), c.result) << c.code;
    EXPECT_EQ(Si468x_ErrorCode, c.code);
    EXPECT_EQ(status.valid, c.code >= 265 ? 1 : 0);
  }
}

}  // namespace
