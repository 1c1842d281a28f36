// SPDX-License-Identifier: GPL-3.0-or-later
#include <bcm2835.h>

#include "si468x/spi/split_transfer.h"
#include "tests/support.h"

namespace {

class Switched_on : public testing::Test {
 protected:
  Switched_on() { sim::use_board(&board); }
  ~Switched_on() override { sim::use_board(nullptr); }
  sim::Board board;
};

TEST_F(Switched_on, SetUpIsOfTheBoardAndAByteTakes1024Nanoseconds) {
  EXPECT_EQ(Si468x_bus_init(), 0);
  EXPECT_EQ(board.pin_function(23), unsigned{BCM2835_GPIO_FSEL_OUTP});
  EXPECT_EQ(board.pin_pull(7), unsigned{BCM2835_GPIO_PUD_UP});
  Byte_string bytes = zeros(1000);
  EXPECT_EQ(Si468x_SPI_RW_data(bytes.data(), 1000), 0);
  EXPECT_EQ(board.now(), 1024us);  // 8 bits at 250 MHz / 32
  EXPECT_EQ(board.mistakes(), std::vector<std::string>{});
}

TEST_F(Switched_on, WithoutSpiInTheSystemNoPinIsTouched) {
  board.settings().spi_enabled = false;
  EXPECT_EQ(Si468x_bus_init(), -6);
  EXPECT_EQ(Si468x_ErrorCode, 1U);
  EXPECT_EQ(board.pin_function(23), unsigned{BCM2835_GPIO_FSEL_INPT});
}

TEST_F(Switched_on, PowerDownReleasesTheRegisters) {
  EXPECT_EQ(Si468x_bus_init(), 0);
  Si468x_power_down();
  EXPECT_EQ(Si468x_bus_enable(), -6);
  EXPECT_EQ(Si468x_ErrorCode, 3U);
}

using Link = Dab_running;

TEST_F(Link, SplitTransferPutsTheSameOnTheWireAsOneCall) {
  Byte_string whole{0xB2, 0x00, 0x11, 0x22, 0x33, 0x44, 0x55};
  Byte_string head(whole.begin(), whole.begin() + 4);
  Byte_string tail(whole.begin() + 4, whole.end());
  const Byte_string sent = whole;

  EXPECT_EQ(Si468x_SPI_RW_data(whole.data(), 7), 0);
  Si468x_SPI_CS_low();
  EXPECT_TRUE(board.chip_select_active());
  EXPECT_EQ(Si468x_SPI_RW_data_noCS(head.data(), 4), 0);
  EXPECT_TRUE(board.chip_select_active());
  EXPECT_EQ(Si468x_SPI_RW_data_noCS(tail.data(), 3), 0);
  Si468x_SPI_CS_high();
  EXPECT_FALSE(board.chip_select_active());
  EXPECT_EQ(board.sent(), (Frames{sent, sent}));
}

TEST_F(Link, OpeningATransactionDiscardsWhatTheFifosHeld) {
  bcm2835_peri_write(bcm2835_spi0 + BCM2835_SPI0_FIFO / 4, 0xEE);  // a leftover, written with no transfer active
  Byte_string read = zeros(7);
  Si468x_SPI_CS_low();
  Si468x_SPI_RW_data_noCS(read.data(), 7);
  Si468x_SPI_CS_high();
  EXPECT_EQ(board.sent(), Frames{zeros(7)});
  EXPECT_EQ(read[4], 0xC0);
  EXPECT_EQ(board.mistakes().size(), 1U);  // the board noticed that it was never sent
  board.clear_record();
}

TEST_F(Link, TransfersLongerThanTheFifosComeBackWholeAndInPlace) {
  board.fault({.command = "RD_REPLY", .occurrence = 1, .reply = Byte_string(300, 0xA7)});
  Byte_string read = zeros(300);
  EXPECT_EQ(Si468x_SPI_RW_data(read.data(), 300), 0);
  EXPECT_EQ(board.received(), Frames{read});
  EXPECT_EQ(Byte_string(read.begin() + 5, read.end()), Byte_string(295, 0xA7));
}

TEST_F(Link, SplitTransferReadsBytesThatShowLateInTheFifo) {
  board.fault({.command = "RD_REPLY", .reply = Byte_string(300, 0xA7)});
  board.set_receive_delay(5);
  for (const uint16_t length : std::array<uint16_t, 3>{6, 22, 300}) {
    Byte_string read = zeros(length);
    Si468x_SPI_CS_low();
    EXPECT_EQ(Si468x_SPI_RW_data_noCS(read.data(), length), 0);
    Si468x_SPI_CS_high();
    EXPECT_EQ(read.back(), 0xA7);
    EXPECT_EQ(board.received().back(), read);
  }
}

TEST_F(Link, SplitTransferWaitsForDone) {
  board.fault({.transaction = 1, .bus = sim::Bus_fault::never_done});
  Byte_string bytes = zeros(2);
  Si468x_SPI_CS_low();
  EXPECT_THROW(Si468x_SPI_RW_data_noCS(bytes.data(), 2), sim::Hang);
  Si468x_SPI_CS_high();
}

}  // namespace
