// SPDX-License-Identifier: GPL-3.0-or-later
// Faults that change nothing, and two faults for one transaction.
#include "tests/support.h"

namespace {

using Triggers = std::vector<std::string>;

class Faulty_board : public Tuned_to_33 {
 protected:
  void TearDown() override {}  // faults are not triggered
  // Sends the command and, unlike the driver, reads no reply.
  static void send(Byte_string command) {
    EXPECT_EQ(Si468x_send_cmd_simple(command.data(), static_cast<uint16_t>(command.size())), 0);
  }
  // STATUS0 is byte 1, the reply begins at byte 5.
  static std::array<uint8_t, 9> read() {
    std::array<uint8_t, 9> bytes{};
    EXPECT_EQ(Si468x_read_reply(bytes.data(), 9), 0);
    return bytes;
  }
  // Whether the fault, alone on the board, was triggered by what `act` does.
  bool triggers(const sim::Fault& fault, const std::function<void()>& act) {
    board.clear_faults();
    board.fault(fault);
    act();
    return board.never_triggered().empty();
  }
  const Byte_string get_time{0xBC, 1}, tune{0xB0, 0, 33, 0, 0, 0}, refused_tune{0xB0, 0, 200, 0, 0, 0};
};

TEST_F(Faulty_board, FaultOfAReplyNeedsAReadThatShowsIt) {
  const std::vector<sim::Fault> faults = {{.command = "0xBC", .cts_never = true},
                                          {.command = "0xBC", .cts_low_reads = 1},
                                          {.command = "0xBC", .status_bits = {0, 0, 0, 1}},
                                          {.command = "0xBC", .status = {{0x80, 0, 0, 0xC0}}},
                                          {.command = "0xBC", .reply = Byte_string{1}}};
  for (const sim::Fault& fault : faults) {
    EXPECT_TRUE(triggers(fault, [&] { send(get_time), read(); }));
    EXPECT_FALSE(triggers(fault, [&] { send(get_time), send(get_time); }));
    EXPECT_FALSE(triggers(fault, [&] {
      board.fault({.command = "RD_REPLY", .bus = sim::Bus_fault::ones});
      send(get_time), read();
    }));
  }
}

TEST_F(Faulty_board, FaultOfTheChipNeedsACommandThatItCarriesOut) {
  const sim::Fault endless{.command = "DAB_TUNE_FREQ", .stc_never = true};
  EXPECT_FALSE(triggers(endless, [&] { send(refused_tune); }));
  EXPECT_FALSE(triggers(endless, [&] {
    board.fault({.command = "DAB_TUNE_FREQ", .bus = sim::Bus_fault::reset_chip});
    send(tune);
  }));
  board.restore({.chip = {.mode = sim::Mode::dab}});
  EXPECT_TRUE(triggers(endless, [&] { send(tune); }));
  EXPECT_FALSE(triggers({.command = "0xB0", .occurrence = 2, .stc_never = true}, [&] {
    send(tune), send(refused_tune);
    board.wait(1s);
    EXPECT_EQ(read()[1] & 0x01, 0x01);  // the first tune is complete
  }));
  const sim::Fault lost{.command = "SET_PROPERTY", .property_not_kept = true};
  EXPECT_FALSE(triggers(lost, [] { send({0x13, 0, 0x00, 0x03, 64, 0}); }));
  EXPECT_TRUE(triggers(lost, [] { send({0x13, 0, 0x00, 0x03, 40, 0}); }));
}

TEST_F(Faulty_board, FlippedBitNeedsATransactionThatReachesIt) {
  for (const uint32_t bit : {0U, 15U, 16U}) {
    const sim::Fault flip{.transaction = 1, .bus = sim::Bus_fault::flip_bit, .bit = bit};
    EXPECT_EQ(triggers(flip, [&] { send(get_time); }), bit < 16);
  }
}

TEST_F(Faulty_board, OfTwoFaultsForOneTransactionTheOverriddenOneIsNamed) {
  const std::vector<sim::Fault> faults = {{.cts_never = true},
                                          {.cts_low_reads = 2},
                                          {.status = {{0x80, 0, 0, 0xC0}}},
                                          {.reply = Byte_string{1}},
                                          {.bus = sim::Bus_fault::ones}};
  for (sim::Fault fault : faults) {
    board.clear_faults();
    fault.command = "DAB_GET_TIME";
    board.fault(fault);
    EXPECT_THROW(board.fault(fault), std::invalid_argument);
    fault.command = "";
    fault.transaction = 1;
    board.fault(fault);
    send(get_time), read();
    EXPECT_EQ(board.never_triggered(), Triggers{});
    EXPECT_EQ(board.faults().overridden(),
              Triggers{fault.reply || fault.cts_never ? "transaction 1" : "DAB_GET_TIME, every one"});
  }
}

TEST_F(Faulty_board, BitsOfTwoFaultsAddUpUnlessAStatusFollows) {
  board.fault({.command = "DAB_GET_TIME", .status_bits = {0x01}});
  board.fault({.command = "RD_REPLY", .occurrence = 1, .status_bits = {0x02}});
  send(get_time);
  EXPECT_EQ(read()[1] & 0x03, 0x03);
  EXPECT_EQ(board.faults().overridden(), Triggers{});
  board.fault({.command = "RD_REPLY", .occurrence = 1, .status = {{0x80, 0, 0, 0xC0}}});
  EXPECT_EQ(read()[1] & 0x03, 0x00);
  EXPECT_EQ(board.faults().overridden(), Triggers{"DAB_GET_TIME, every one"});
}

}  // namespace
