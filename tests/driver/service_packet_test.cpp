// SPDX-License-Identifier: GPL-3.0-or-later
// Data packets: header and payload in one transaction.
#include "tests/support.h"

namespace {

// Reply bytes from 4 on.
Byte_string packet(uint8_t flags, uint8_t buffer_count, uint16_t byte_count, const Byte_string& payload) {
  const Byte_string counts{static_cast<uint8_t>(byte_count), static_cast<uint8_t>(byte_count >> 8), 4, 3, 6, 5};
  return Byte_string{flags, buffer_count} + bytes("51 9A EF CD AB 89 67 45 23 01 E0 E1") + counts + payload;
}

class Packet : public Tuned_to_33 {
 protected:
  int16_t get(const Byte_string& reply, uint32_t size = 4096) {
    start_over();
    board.fault({.command = "GET_DIGITAL_SERVICE_DATA", .reply = reply});
    buffer = fenced(size);
    data = {};
    return data.get_new_data(buffer.get(), size);
  }
  Fenced buffer;
  Si468x_digital_service_data data;
};

TEST_F(Packet, HeaderAndPayloadComeInOneTransaction) {
  EXPECT_EQ(get(packet(0x01, 2, 3, {0x48, 0x69, 0x01})), 0);
  EXPECT_EQ(board.sent(), (Frames{{0x84, 0x00}, zeros(28)}));
  EXPECT_EQ(board.waits(), Waits{10us});
  EXPECT_EQ(data.payload, buffer.get() + 25);
  EXPECT_EQ(output_of([&] { data.print_data(); }), expected("data_packet.txt"));
}

TEST_F(Packet, HeaderDecidesWhetherThereIsAPayload) {
  const struct {
    uint8_t flags, buffer_count;
    uint16_t byte_count;
    uint32_t size;
    int16_t result;
    uint32_t code;
    size_t read;
  } cases[] = {
      {0x01, 0, 9, 4096, 0, 0, 25},  // nothing queued, whatever the other fields claim
      {0x03, 0, 9, 4096, 0, 0, 25},         {0x02, 1, 9, 4096, -2, 134, 25},  // overflow before readiness
      {0x00, 1, 9, 4096, -3, 234, 25},      {0x01, 1, 0, 4096, 0, 0, 25},
      {0x01, 1, 1, 26, 0, 0, 26},     // just fits
      {0x01, 1, 2, 26, -4, 334, 25},  // one byte too many
      {0x01, 1, 65535, 65560, 0, 0, 65560}, {0x01, 1, 65535, 65559, -4, 334, 25},
      {0x01, 1, 1, 25, -4, 334, 25},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << "flags " << int{c.flags} << " count " << c.byte_count << " size " << c.size);
    EXPECT_EQ(get(packet(c.flags, c.buffer_count, c.byte_count, Byte_string(c.byte_count, 0x7E)), c.size), c.result);
    EXPECT_EQ(Si468x_ErrorCode, c.code);
    EXPECT_EQ(board.sent(), (Frames{{0x84, 0x00}, zeros(c.read)}));
    EXPECT_FALSE(board.chip_select_active());
    EXPECT_EQ(data.payload != nullptr, c.read > 25);
    EXPECT_EQ(data.byte_count, c.byte_count);
  }
}

TEST_F(Packet, PrintableBytesPrintAsCharacters) {
  EXPECT_EQ(get(packet(0x01, 1, 5, {0x1F, 0x20, 0x7E, 0x7F, 0xFF})), 0);
  EXPECT_TRUE(
      output_of([&] { data.print_data(); }).ends_with("Data:                                        1f  ~ 7f  ff \n"));
  EXPECT_EQ(get(packet(0x01, 0, 5, {})), 0);
  EXPECT_TRUE(output_of([&] {
                data.print_data();
              }).ends_with("object:    1286\nData:                                       \n"));
}

TEST_F(Packet, BusyChipIsTriedTenTimesInTransactionsOfTwoBytes) {
  board.fault({.command = "GET_DIGITAL_SERVICE_DATA", .cts_never = true});
  buffer = fenced(25);
  EXPECT_EQ(data.get_new_data(buffer.get(), 25), -3);
  EXPECT_EQ(Si468x_ErrorCode, 34U);
  Frames frames(11, zeros(2));
  frames[0] = {0x84, 0x00};
  EXPECT_EQ(board.sent(), frames);
  EXPECT_EQ(board.waits(), Waits(11, 10us));

  board.clear_record();
  EXPECT_EQ(data.get_new_data(buffer.get(), 24), -4);  // too small for a header
  EXPECT_EQ(Si468x_ErrorCode, 334U);
  EXPECT_EQ(board.sent(), Frames{});
}

}  // namespace
