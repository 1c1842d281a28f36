// SPDX-License-Identifier: GPL-3.0-or-later
// The simulated board: what it is strict about.
#include <bcm2835.h>

#include "si468x/spi/split_transfer.h"
#include "tests/support.h"

namespace {

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
    return board.state().chip.fm;
  };
  EXPECT_EQ(seek(0x02).khz, 90000U);     // up
  EXPECT_EQ(seek(0x03).khz, 90000U);     // up and round
  const sim::Fm_state end = seek(0x02);  // up to the end
  EXPECT_EQ(end.khz, 108000U);
  EXPECT_TRUE(end.band_limit);
}

}  // namespace
