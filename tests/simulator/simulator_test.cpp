// SPDX-License-Identifier: GPL-3.0-or-later
// What the simulated board refuses.
#include <bcm2835.h>

#include "si468x/spi/split_transfer.h"
#include "tests/support.h"

namespace {

using Mistakes = std::vector<std::string>;

class Strict_board : public Tuned_to_33 {
 protected:
  void TearDown() override {}  // these tests make mistakes
  // The chip's reason for refusing the one command.
  std::string refusal(Byte_string command) {
    board.clear_record();
    const auto length = static_cast<uint16_t>(command.size());
    EXPECT_EQ(Si468x_send_cmd(command.data(), nullptr, length, 0), -2);
    return board.refusals().size() == 1 ? board.refusals()[0] : testing::PrintToString(board.refusals());
  }
};

TEST_F(Strict_board, ChipRefusesWhatItsStateForbids) {
  EXPECT_EQ(refusal({0x77, 0}), "unknown: the chip has no such command");
  EXPECT_EQ(refusal({0x07, 0}), "BOOT: not known in the chip's present state");
  EXPECT_EQ(refusal({0x32, 0x09}), "FM_RSQ_STATUS: not known in the chip's present state");
  EXPECT_EQ(refusal({0x80}), "GET_DIGITAL_SERVICE_LIST: wrong length: 1 bytes");
  EXPECT_EQ(refusal({0xB0, 0, 200, 0, 0, 0}), "DAB_TUNE_FREQ: the frequency list has no index 200");
  EXPECT_EQ(refusal({0x13, 0, 0x00, 0x03, 64, 0}), "SET_PROPERTY: property 768 does not take the value 64");
  EXPECT_EQ(refusal({0x81, 1, 0, 0, 0xB5, 0x43, 0, 0, 12, 0, 0, 0}),
            "START_DIGITAL_SERVICE: service type 1 does not fit the component");
}

TEST_F(Strict_board, CommandBeforeClearToSendIsDropped) {
  board.settings().chip.always_ready = false;
  Byte_string first{0xB2, 0};
  Byte_string second{0xBC, 1};
  EXPECT_EQ(Si468x_send_cmd_simple(first.data(), 2), 0);
  EXPECT_EQ(Si468x_send_cmd_simple(second.data(), 2), 0);
  board.wait(10ms);
  std::array<uint8_t, 7> status{};
  EXPECT_EQ(Si468x_rd_reply(status.data()), -1);
  EXPECT_EQ(status[4] & 0x0E, 0x04);
}

TEST_F(Strict_board, SetUpMistakesAreCaughtAndReachNoChip) {
  std::array<uint8_t, 7> status{};
  const auto mistake_after = [&](const std::function<void()>& set_up) {
    board.clear_record();
    status.fill(0);
    set_up();
    static_cast<void>(Si468x_SPI_RW_data(status.data(), 7));
    EXPECT_EQ(status[4], 0x00);
    EXPECT_EQ(Si468x_bus_enable(), 0);
    return board.mistakes();
  };
  EXPECT_EQ(mistake_after([] { Si468x_bus_disable(); }), Mistakes{"transfer before bcm2835_spi_begin"});
  EXPECT_EQ(mistake_after([] { bcm2835_spi_setDataMode(BCM2835_SPI_MODE3); }),
            Mistakes{"transfer in another SPI mode than 0"});
  EXPECT_EQ(mistake_after([] { bcm2835_spi_setBitOrder(BCM2835_SPI_BIT_ORDER_LSBFIRST); }),
            Mistakes{"transfer with the least significant bit first"});
  EXPECT_EQ(mistake_after([] { bcm2835_spi_chipSelect(BCM2835_SPI_CS1); }),
            Mistakes{"transfer with another chip select than 0"});
  board.clear_record();
  Si468x_SPI_CS_low();
  Si468x_SPI_CS_low();
  EXPECT_EQ(board.mistakes(), Mistakes{"transaction opened inside an open one"});
  Si468x_SPI_CS_high();
}

TEST_F(Powered_up, BootWithoutItsPausesIsAMistake) {
  const Byte_string patch(5796), image(521448);
  const auto download = [](const Byte_string& bytes) {
    EXPECT_EQ(Si468x_load_init(), 0);
    EXPECT_EQ(Si468x_load_firmware_static(bytes.data(), static_cast<uint32_t>(bytes.size())), 0);
  };
  download(patch);
  board.wait(49ms);
  download(image);
  board.wait(99ms);
  EXPECT_EQ(Si468x_boot(), 0);
  EXPECT_EQ(board.mistakes(), (Mistakes{"no pause of 50 ms after the download of the ROM patch",
                                        "no pause of 100 ms after the download of the application image"}));
  board.clear_record();
}

TEST_F(Fm_running, SeekKnowsTheBandsLimits) {
  board.air().fm.stations.clear();
  board.air().fm.stations.push_back({.khz = 90000, .signal = {.valid = true}});
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
