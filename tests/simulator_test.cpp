// SPDX-License-Identifier: GPL-3.0-or-later
// The simulated board as a product: its files, its memory between runs, its trace, its strictness.
#include <bcm2835.h>

#include <filesystem>

#include "si468x/spi/split_transfer.h"
#include "tests/support.h"

namespace {

using Simulator_files = Runs;

TEST_F(Simulator_files, BadBroadcastFileGetsOneLineAndExitStatus2) {
  const struct {
    const char* text;
    const char* complaint;
  } cases[] = {
      {"{", "kelvo-sim: air.json: "},
      {"[]", "kelvo-sim: air.json: "},
      {R"({"ensembels": []})", "unknown key \"ensembels\""},
      {R"({"ensembles": [{"index": 41, "signal": {}}]})", "/ensembles/0/index"},
      {R"({"ensembles": [{"index": 1, "signal": {"rssi": 1.5}}]})", "/ensembles/0/signal/rssi"},
      {R"({"ensembles": [{"index": 1, "signal": {}}, {"index": 1, "signal": {}}]})", "/ensembles/1"},
      {R"({"time": {"year": 2026, "month": 13, "day": 1}})", "/time/month"},
      {R"({"faults": [{"command": "NO_SUCH"}]})", "/faults/0"},
      {R"({"fm": {"stations": [{"khz": 87501, "signal": {}}]}})", "/fm/stations/0/khz"},
      {R"({"ensembles": [{"index": 1, "signal": {}, "lists": [{"version": 1, "services": [
           {"id": 1, "label": "seventeen letters"}]}]}]})",
       "/services/0/label"},
  };
  for (const auto& c : cases) {
    write_file(path("air.json"), c.text);
    const Outcome run = kelvo_sim("-b D", "KELVO_SIM_BROADCAST=air.json");
    EXPECT_EQ(run.status, 2) << c.text;
    const std::string line = run.after_banner();
    EXPECT_NE(line.find(c.complaint), std::string::npos) << line;
    EXPECT_EQ(line.find('\n'), line.size() - 1) << line;
  }
  EXPECT_EQ(kelvo_sim("-b D", "KELVO_SIM_BROADCAST=none.json").status, 2);
  EXPECT_FALSE(std::filesystem::exists(path("state.json")));
}

TEST_F(Simulator_files, DamagedStateIsSaidAndTheChipStartsInReset) {
  for (const char* const text : {"", "{", "[1]", "\xFF\xFE", R"({"mode": "dab"})", R"({"mode": 99})", "null"}) {
    write_file(path("state.json"), text);
    const Outcome run = kelvo_sim("-i");
    EXPECT_EQ(run.status, 0);
    EXPECT_NE(run.after_banner().find("kelvo-sim: state.json"), std::string::npos) << text << run.output;
    EXPECT_NE(run.after_banner().find("not booted up"), std::string::npos);
  }
  std::filesystem::create_directory(path("taken"));
  const Outcome run = run_shell("KELVO_SIM_STATE=taken '" KELVO_SIM_PATH "'", directory);
  EXPECT_EQ(run.status, 0);
  EXPECT_NE(run.output.find("kelvo-sim: taken"), std::string::npos) << run.output;
}

TEST_F(Simulator_files, StateFollowsTheUsersDirectories) {
  run_shell("env -u KELVO_SIM_STATE XDG_STATE_HOME=" + path("x") + " '" KELVO_SIM_PATH "' -b D", directory);
  EXPECT_TRUE(std::filesystem::exists(path("x/kelvo/board.json")));
  run_shell("env -u KELVO_SIM_STATE -u XDG_STATE_HOME HOME=" + path("h") + " '" KELVO_SIM_PATH "' -b D", directory);
  EXPECT_TRUE(std::filesystem::exists(path("h/.local/state/kelvo/board.json")));
}

TEST_F(Simulator_files, StateOutlivesABroadcastThatNoLongerFits) {
  kelvo_sim("-b D -f 33 -p -e 17333 -c 12");
  write_file(path("air.json"), R"({"frequencies": [174928]})");
  const Outcome run = kelvo_sim("-d -g -t", "KELVO_SIM_BROADCAST=air.json");
  EXPECT_EQ(run.status, 0);
  EXPECT_NE(run.output.find("Ensemble acquired:                          0\n"), std::string::npos) << run.output;
}

TEST_F(Simulator_files, TraceHasOneLinePerEventAndTotals) {
  kelvo_sim("-b D", "KELVO_SIM_TRACE=trace");
  EXPECT_EQ(run_shell("grep -c 'spi HOST_LOAD .* > 04 00 00 00 ' trace", directory).output, "130\n");
  const char* const sums = "awk '$2 == \"spi\" {n += $4} $3 == \"bytes\" {print (n == $4)}' trace";
  EXPECT_EQ(run_shell(sums, directory).output, "1\n");
}

TEST_F(Simulator_files, HangIsStoppedAndReported) {
  write_file(path("air.json"), R"({"faults": [{"transaction": 3, "bus": "never_done"}]})");
  const Outcome run = kelvo_sim("-b D", "KELVO_SIM_BROADCAST=air.json");
  EXPECT_EQ(run.status, 3);
  EXPECT_NE(run.output.find("kelvo-sim: board: "), std::string::npos) << run.output;
}

class Strict_board : public Tuned_to_33 {
 protected:
  void TearDown() override {}  // mistakes are what these tests are about
  void refused(Byte_string command) {
    const size_t before = board.refusals().size();
    const auto length = static_cast<uint16_t>(command.size());
    EXPECT_EQ(Si468x_send_cmd(command.data(), nullptr, length, 0), -2);
    EXPECT_EQ(board.refusals().size(), before + 1);
  }
};

TEST_F(Strict_board, ChipRefusesWhatItsStateForbids) {
  refused({0x77, 0});                                       // no such command
  refused({0x07, 0});                                       // of the bootloader
  refused({0x32, 0x09});                                    // of the FM application
  refused({0x80});                                          // too short
  refused({0xB0, 0, 200, 0, 0, 0});                         // no such frequency
  refused({0x13, 0, 0x00, 0x03, 64, 0});                    // volume out of range
  refused({0x81, 1, 0, 0, 0xB5, 0x43, 0, 0, 12, 0, 0, 0});  // an audio service as a data service
}

TEST_F(Strict_board, CommandBeforeClearToSendIsDropped) {
  board.air().always_ready = false;
  Byte_string first{0xB2, 0};
  Byte_string second{0xBC, 1};
  Si468x_send_cmd_simple(first.data(), 2);
  Si468x_send_cmd_simple(second.data(), 2);
  board.wait(10ms);
  std::array<uint8_t, 7> status{};
  EXPECT_EQ(Si468x_rd_reply(status.data()), -1);
  EXPECT_EQ(status[4] & 0x0E, 0x04);
}

TEST_F(Strict_board, SetUpMistakesAreCaughtAndReachNoChip) {
  std::array<uint8_t, 7> status{};
  const auto mistakes_after = [&](const std::function<void()>& mistake) {
    board.clear_record();
    status.fill(0);
    mistake();
    static_cast<void>(Si468x_SPI_RW_data(status.data(), 7));
    EXPECT_EQ(status[4], 0x00);
    Si468x_bus_enable();
    return board.mistakes().size();
  };
  EXPECT_GT(mistakes_after([] { Si468x_bus_disable(); }), 0U);
  EXPECT_GT(mistakes_after([] { bcm2835_spi_setDataMode(BCM2835_SPI_MODE3); }), 0U);
  EXPECT_GT(mistakes_after([] { bcm2835_spi_setBitOrder(BCM2835_SPI_BIT_ORDER_LSBFIRST); }), 0U);
  EXPECT_GT(mistakes_after([] { bcm2835_spi_chipSelect(BCM2835_SPI_CS1); }), 0U);
  board.clear_record();
  Si468x_SPI_CS_low();
  Si468x_SPI_CS_low();
  EXPECT_GT(board.mistakes().size(), 0U);
  Si468x_SPI_CS_high();
}

TEST_F(Fm_running, SeekKnowsTheBandsLimits) {
  board.air().fm_stations.clear();
  board.air().fm_stations.push_back({.khz = 90000, .signal = {.valid = true}});
  const auto seek = [&](uint8_t how) {
    Byte_string command{0x31, 0, how, 0, 0, 0};
    EXPECT_EQ(Si468x_send_cmd(command.data(), nullptr, 6, 0), 0);
    board.wait(5s);
    return board.state().fm;
  };
  EXPECT_EQ(seek(0x02).khz, 90000U);     // up
  EXPECT_EQ(seek(0x03).khz, 90000U);     // up and round
  const sim::Fm_state end = seek(0x02);  // up to the end
  EXPECT_EQ(end.khz, 108000U);
  EXPECT_TRUE(end.band_limit);
}

}  // namespace
