// SPDX-License-Identifier: GPL-3.0-or-later
// Component information and its user applications.
#include "tests/support.h"

namespace {

const std::string label("Slides\0\xE9  \"   xyz", 16);

// Reply bytes from 4 on: the fixed fields, then the area.
Byte_string info_reply(uint8_t ua_count, uint8_t ua_length, const Byte_string& area) {
  return Byte_string{201, 0xEE, 0xC9, 0xC6} + Byte_string(label.begin(), label.end()) +
         Byte_string{0x21, 0xF0, ua_count, ua_length} + area;
}

class Component_info : public Tuned_to_33 {
 protected:
  int16_t get(const Byte_string& reply) {
    board.clear_faults();
    board.fault({.command = "DAB_GET_COMPONENT_INFO", .status = {{0x80, 0, 0, 0xC0}}, .reply = reply});
    info = {};
    info.ua_data = buffer.get();
    return info.get_info(0x89ABCDEF, 0x01234567);
  }
  // The area alone, in memory of just its size.
  int16_t entry(uint8_t ua_count, const Byte_string& area, uint8_t index) {
    const Fenced exact = fenced(area);
    info = {};
    info.ua_count = ua_count;
    info.ua_length = static_cast<uint8_t>(area.size());
    info.ua_data = exact.get();
    application = {};
    Si468x_ErrorCode = 0;
    const int16_t result = application.get_ua_data(&info, index);
    data = application.data == nullptr ? Byte_string{}
                                       : Byte_string(application.data, application.data + application.length);
    return result;
  }
  Fenced buffer = fenced(256);
  Byte_string data;
  Si468x_DAB_component_info info;
  Si468x_user_application_data application;
};

const Byte_string two_applications{0x01, 0x02, 0x03, 0xAA, 0xBB, 0xCC, 0x05, 0x00, 0x02, 0xDD, 0xEE, 0x00};

TEST_F(Component_info, IsReadTwiceAndPrinted) {
  EXPECT_EQ(get(info_reply(2, 12, two_applications)), 0);
  const Byte_string command{0xBB, 0, 0, 0, 0xEF, 0xCD, 0xAB, 0x89, 0x67, 0x45, 0x23, 0x01};
  EXPECT_EQ(board.sent(), (Frames{command, zeros(7), zeros(29), command, zeros(7), zeros(41)}));
  EXPECT_EQ(info.ua_data, buffer.get() + 29);
  EXPECT_EQ(output_of([&] { info.print_info(); }), expected("component_info.txt"));
}

TEST_F(Component_info, ReportEndsWhereTheApplicationsDo) {
  EXPECT_EQ(get(info_reply(0, 0, {})), 0);
  const std::string none = output_of([&] { info.print_info(); });
  EXPECT_TRUE(none.ends_with("Length user application data:               0\n\n")) << none;
  EXPECT_EQ(get(info_reply(3, 12, two_applications)), 0);
  const std::string cut = output_of([&] { info.print_info(); });
  EXPECT_TRUE(cut.ends_with("dd ee \n")) << cut;  // the third cannot be decoded
}

TEST_F(Component_info, OfFullLengthIsReadAndOneByteMoreRefused) {
  EXPECT_EQ(get(info_reply(1, 227, {})), 0);
  EXPECT_EQ(board.sent().back(), zeros(256));
  EXPECT_EQ(get(info_reply(1, 228, {})), -4);
  EXPECT_EQ(Si468x_ErrorCode, 23830U);
  EXPECT_EQ(info.ua_data, buffer.get());
  EXPECT_EQ(info.global_id, 201);
}

TEST_F(Component_info, EachRefusedReadHasItsCode) {
  info.ua_data = buffer.get();
  info.global_id = 7;
  EXPECT_EQ(info.get_info(1, 2), -2);  // no such component
  EXPECT_EQ(Si468x_ErrorCode, 30U);
  EXPECT_EQ(info.global_id, 7);
  board.fault({.command = "DAB_GET_COMPONENT_INFO", .occurrence = 2, .status_bits = {0, 0, 0, 1}});
  EXPECT_EQ(info.get_info(17333, 12), -2);
  EXPECT_EQ(Si468x_ErrorCode, 130U);
  EXPECT_EQ(info.ua_data, buffer.get());
}

TEST_F(Component_info, WithoutABufferNoPointerIsFollowed) {
  EXPECT_EQ(info.get_info(3779402283, 53925), -6);
  EXPECT_EQ(Si468x_ErrorCode, 130U);
  EXPECT_EQ(info.ua_count, 2);
  EXPECT_EQ(application.get_ua_data(&info, 0), -6);
  EXPECT_EQ(Si468x_ErrorCode, 131U);
}

TEST_F(Component_info, UserApplicationsAreFoundOrTheReasonIsGiven) {
  const struct {
    uint8_t count;
    Byte_string area;
    uint8_t index;
    uint32_t code;  // 0: found
    Byte_string data;
  } cases[] = {
      {2, two_applications, 0, 0, {0xAA, 0xBB, 0xCC}},
      {2, two_applications, 1, 0, {0xDD, 0xEE}},
      {2, two_applications, 2, 31, {}},
      {0, {}, 0, 31, {}},
      {1, {9, 0}, 0, 131, {}},
      {2, {9, 0}, 1, 131, {}},
      {1, {9, 0, 1, 7}, 0, 0, {7}},
      {1, {9, 0, 2, 7}, 0, 1131 + 900, {}},
      {2, {9, 0, 2, 7}, 1, 1031 + 900, {}},
      {2, {9, 0, 2, 7, 8, 1, 6, 0, 1, 5}, 1, 231, {}},  // pad of the first is not 0
      {1, {9, 0, 2, 7, 8, 1}, 0, 331, {}},
      {1, {9, 0, 2, 7, 8}, 0, 331, {}},  // no room for the pad
      {2, {9, 0, 2, 7, 8}, 1, 231, {}},
      {3, {9, 0, 1, 7, 6, 0}, 2, 131, {}},               // second has no length
      {3, {9, 0, 1, 7, 6, 0, 3, 1}, 2, 1031 + 600, {}},  // second does not fit, on the way to the third
      {2, {9, 0, 1, 7, 6, 0, 3, 1}, 1, 1131 + 600, {}},
      {2, {9, 0, 1, 7}, 1, 131, {}},
      {1, {9, 1, 0, 0}, 0, 0, {}},  // no data, but a pad
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << "code " << c.code << ", area of " << c.area.size());
    EXPECT_EQ(entry(c.count, c.area, c.index), c.code == 0 ? 0 : -6);
    EXPECT_EQ(Si468x_ErrorCode, c.code);
    EXPECT_EQ(data, c.data);
    EXPECT_EQ(application.length, c.code == 0 ? c.data.size() : c.code == 331 ? 2 : 0);
  }
}

}  // namespace
