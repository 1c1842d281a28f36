// SPDX-License-Identifier: GPL-3.0-or-later
// One exchange with the chip: bytes on the wire, the wait for clear-to-send, errors in the status.
#include "tests/support.h"

namespace {

class Exchange : public Tuned_to_33 {
 protected:
  // DAB_GET_TIME as an example of a command with a reply.
  int16_t get_time(uint16_t reply_length = 12) {
    Byte_string cmd{0xBC, 0x01};
    return Si468x_send_cmd(cmd.data(), reply.data(), 2, reply_length);
  }
  Byte_string reply = Byte_string(16, 0xEE);
};

TEST_F(Exchange, LateClearToSendIsAwaitedWithGrowingPauses) {
  board.fault({.command = "DAB_GET_TIME", .cts_low_reads = 2});
  EXPECT_EQ(get_time(), 0);
  EXPECT_EQ(board.sent(), (Frames{{0xBC, 0x01}, zeros(7), zeros(7), zeros(7), zeros(12)}));
  EXPECT_EQ(board.waits(), (Waits{50us, 1050us}));
}

TEST_F(Exchange, SilentChipIsGivenUpAfterFiftyPollsEachWithItsPause) {
  board.fault({.command = "DAB_GET_TIME", .cts_never = true});
  EXPECT_EQ(get_time(), -3);
  EXPECT_EQ(Si468x_ErrorCode, 160U);
  EXPECT_EQ(board.sent().size(), 51U);
  EXPECT_EQ(board.waits(), growing(50us, 1000us, 50));
}

TEST_F(Exchange, StatusErrorsHaveAnOrder) {
  const struct {
    uint8_t status0, status3;
    int16_t result;
  } cases[] = {
      {0x40, 0x0F, -2},  // ERR_CMD before all others
      {0x00, 0x0F, -1},  // ERRNR after all others
      {0x31, 0x10, 0},   // interrupts and a DSP overrun are no errors
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << std::hex << "STATUS0 |= " << int{c.status0} << " STATUS3 |= " << int{c.status3});
    start_over();
    board.fault({.command = "DAB_GET_TIME", .status_bits = {c.status0, 0, 0, c.status3}});
    EXPECT_EQ(get_time(), c.result);
    EXPECT_EQ(Si468x_ErrorCode, c.result == 0 ? 0U : 260U);
    EXPECT_EQ(board.sent().size(), c.result == 0 ? 3U : 2U);  // a bad status stops before the reply is read
  }
}

TEST_F(Exchange, EachStatusBitAloneIsItsErrorOrPasses) {
  for (unsigned bit = 0; bit < 32; ++bit) {
    SCOPED_TRACE(testing::Message() << "STATUS" << bit / 8 << " bit " << bit % 8);
    const int16_t result = bit == 6 || bit == 24 ? -2 : bit >= 25 && bit <= 27 ? -1 : 0;
    std::array<uint8_t, 4> status{0x80, 0, 0, 0};
    status[bit / 8] = static_cast<uint8_t>(status[bit / 8] | 1U << bit % 8);
    const auto expect = [&](uint32_t read, uint32_t code, const std::function<int16_t()>& operation) {
      start_over();
      board.fault({.command = "RD_REPLY", .occurrence = read, .status = status});
      EXPECT_EQ(operation(), result);
      EXPECT_EQ(Si468x_ErrorCode, result == 0 ? 0 : code);
    };
    expect(1, 260, [&] { return get_time(); });
    expect(2, 560, [&] { return get_time(); });  // the status of the reply itself
    expect(1, 114, [&] { return Si468x_rd_reply(reply.data()); });
  }
}

TEST_F(Exchange, ReplyWithoutABufferFailsAfterTheCommandWasCarriedOut) {
  Byte_string cmd{0xBC, 0x01};
  EXPECT_EQ(Si468x_send_cmd(cmd.data(), nullptr, 2, 12), -6);
  EXPECT_EQ(Si468x_ErrorCode, 360U);
  EXPECT_EQ(board.sent(), (Frames{{0xBC, 0x01}, zeros(7)}));
  Byte_string again{0xBC, 0x01};
  EXPECT_EQ(Si468x_send_cmd(again.data(), nullptr, 2, 0), 0);
}

TEST_F(Exchange, ReplyShorterThanTheStatusIsReadAndNotJudged) {
  EXPECT_EQ(get_time(3), 0);
  EXPECT_EQ(board.sent().back(), zeros(3));
}

TEST_F(Exchange, CommandsAndReadsCanBeMadeSingly) {
  Byte_string cmd{0xBC, 0x01};
  EXPECT_EQ(Si468x_send_cmd_simple(cmd.data(), 2), 0);
  EXPECT_EQ(Si468x_read_reply(reply.data(), 9), 0);
  EXPECT_EQ(Si468x_rd_reply(reply.data()), 0);
  EXPECT_EQ(board.sent(), (Frames{{0xBC, 0x01}, zeros(9), zeros(7)}));
}

TEST_F(Exchange, HexPrintTakesItsHeadingAsText) {
  const Byte_string bytes{0, 0x0F, 0xF0};
  EXPECT_EQ(output_of([&] { Si468x_hex_print(bytes.data(), 3, "%s: "); }), "%s: 00 0f f0 \n");
}

TEST_F(Exchange, EveryOperationHasACodeForItsRefusedCommand) {
  Si468x_chip_info info{.image = 77, .part_number = 77, .revision_major = 77};
  Si468x_DAB_digrad_status status{.rssi = 77};
  Si468x_DAB_event_status events{.service_list_version = 77};
  Si468x_time time{.year = 77};
  const struct {
    const char* command;
    uint32_t code;
    std::function<int16_t()> operation;
  } cases[] = {
      {"GET_PART_INFO", 21, [&] { return info.get_part_info(); }},
      {"GET_SYS_STATE", 12, [&] { return info.get_sys_state(); }},
      {"GET_FUNC_INFO", 13, [&] { return info.get_func_info(); }},
      {"DAB_SET_FREQ_LIST", 20, [] { return Si468x_DAB_set_freq_list(); }},
      {"DAB_TUNE_FREQ", 21, [] { return Si468x_DAB_tune_freq(33); }},
      {"START_DIGITAL_SERVICE", 32, [] { return Si468x_start_digital_service(0, 17333, 12); }},
      {"STOP_DIGITAL_SERVICE", 33, [] { return Si468x_stop_digital_service(0, 17333, 12); }},
      {"DAB_DIGRAD_STATUS", 22, [&] { return status.get_new_status(); }},
      {"DAB_GET_EVENT_STATUS", 24, [&] { return events.get_new_status(); }},
      {"DAB_GET_TIME", 35, [&] { return time.get_ensembletime(); }},
      {"FM_SEEK_START", 60, [] { return Si468x_tune_next_station(); }},
      {"FM_RSQ_STATUS", 61, [] { return Si468x_FM_rsq_status{}.get_status(); }},
      {"FM_RSQ_STATUS", 61, [] { return Si468x_FM_rsq_status{}.get_new_status(); }},
      {"FM_RDS_STATUS", 62, [] { return Si468x_FM_rds_status{}.get_status(); }},
  };
  for (const auto& c : cases) {
    board.fault({.command = c.command, .status_bits = {0x40}});
    EXPECT_EQ(output_of([&] { EXPECT_EQ(c.operation(), -2) << c.command; }), "");
    EXPECT_EQ(Si468x_ErrorCode, c.code) << c.command;
  }
  // A failed read leaves the record unchanged.
  EXPECT_EQ(info.image + info.part_number + info.revision_major, 3 * 77);
  EXPECT_EQ(status.rssi + events.service_list_version + time.year, 3 * 77);
}

}  // namespace
