// SPDX-License-Identifier: GPL-3.0-or-later
// The service list: read in two steps, decoded, written as JSON; malformed lists.
#include <sstream>

#include "frontend/reports.h"
#include "tests/support.h"

namespace {

Byte_string label(std::string text) {
  text.resize(16, ' ');
  return {text.begin(), text.end()};
}

Byte_string little_endian(size_t value, int count) {
  Byte_string bytes;
  for (int i = 0; i < count; ++i) bytes.push_back(static_cast<uint8_t>(value >> 8 * i));
  return bytes;
}

// The fixed part of an entry: service id, bytes 4 to 6, label.
Byte_string service(uint32_t id, uint8_t flags, uint8_t components, const std::string& text) {
  return little_endian(id, 4) + Byte_string{flags, components, 0, 0xEE} + label(text);
}

// A reply from SIZE on; SIZE is `excess` too large.
Byte_string list_reply(uint16_t version, uint8_t services, const Byte_string& entries, size_t excess = 0) {
  return little_endian(entries.size() + 6 + excess, 2) + little_endian(version, 2) +
         Byte_string{services, 0xE1, 0xE2, 0xE3} + entries;
}

class Service_list : public Tuned_to_33 {
 protected:
  void reply(const Byte_string& bytes) {
    board.clear_faults();
    board.fault({.command = "GET_DIGITAL_SERVICE_LIST", .reply = bytes});
  }
  // Reads a list into a buffer of just the bytes that come.
  int16_t read(const Byte_string& bytes) {
    reply(bytes);
    const size_t size = bytes[0] + 256U * bytes[1];
    buffer = fenced(size + 7);
    return list.get_new_list(buffer.get());
  }
  template <typename... Arguments>
  static std::string json(const auto& record, Arguments... arguments) {
    std::stringstream ss;
    EXPECT_EQ(record.json_print_data(ss, arguments...), 0);
    return ss.str();
  }
  Fenced buffer;
  Si468x_digital_service_list list;
};

const Byte_string station_a = service(17333, 10 << 1, 1, "Station A") + Byte_string{12, 0x00, 63 << 2, 1};
const Byte_string data_b = service(3771802437, 1, 0, "Data B");

TEST_F(Service_list, LengthDecidesWhetherAndHowMuchIsRead) {
  const struct {
    uint16_t size;
    int16_t result;
    uint32_t code;
  } cases[] = {{5, -4, 326}, {0, -4, 326}, {6, 0, 0}, {4089, 0, 0}, {4090, -4, 126}, {65535, -4, 126}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.size);
    list = {.version = 9, .num_services = 8, .size = 7, .data = nullptr};
    start_over();
    EXPECT_EQ(read({static_cast<uint8_t>(c.size), static_cast<uint8_t>(c.size >> 8), 0x34, 0x12, 5}), c.result);
    EXPECT_EQ(Si468x_ErrorCode, c.code);
    if (c.result == 0) {
      EXPECT_EQ(list.version, 0x1234);
      EXPECT_EQ(list.num_services, 5);
      EXPECT_EQ(list.size, c.size - 6);
      EXPECT_EQ(list.data, buffer.get() + 13);
      EXPECT_EQ(board.sent().back(), zeros(c.size + 7U));
    } else {
      EXPECT_EQ(list.version, 9);
      EXPECT_EQ(board.sent().size(), 3U);
    }
  }
}

TEST_F(Service_list, SecondReadGoesByTheLengthOfTheFirst) {
  board.fault({.command = "GET_DIGITAL_SERVICE_LIST", .occurrence = 1, .reply = list_reply(3, 1, station_a)});
  board.fault({.command = "GET_DIGITAL_SERVICE_LIST", .occurrence = 2, .reply = list_reply(4, 9, station_a, 4000)});
  buffer = fenced(41);
  EXPECT_EQ(list.get_new_list(buffer.get()), 0);
  EXPECT_EQ(list.size, 28);
  EXPECT_EQ(list.version, 4);

  board.fault({.command = "GET_DIGITAL_SERVICE_LIST", .occurrence = 2, .status_bits = {0, 0, 0, 2}});
  EXPECT_EQ(list.get_new_list(buffer.get()), -1);
  EXPECT_EQ(Si468x_ErrorCode, 226U);
  EXPECT_EQ(list.version, 4);
  board.fault({.command = "GET_DIGITAL_SERVICE_LIST", .occurrence = 1, .cts_never = true});
  EXPECT_EQ(list.get_new_list(buffer.get()), -3);
  EXPECT_EQ(Si468x_ErrorCode, 26U);
  list.clean();
  EXPECT_EQ(list.data, nullptr);
  EXPECT_EQ(list.version + list.num_services + list.size, 0);
}

TEST_F(Service_list, EveryBitOfAServiceAndItsComponents) {
  const Byte_string components{0x6A, 0x7F, 0x01, 0xFE, 0x6A, 0x80, 0x02, 0x01, 0x34, 0xD2, 0xA9, 0x00};
  Byte_string entry = service(0xFFFF9ABC, 0xFE & ~(1 << 1), 0xD3, "\"\\\xE9\x01 quoted");
  entry[6] = 0xF9;
  entry[11] = 0;  // a zero does not end the label
  ASSERT_EQ(read(list_reply(1, 1, entry + components)), 0);
  Si468x_service_data decoded;
  decoded.ECC = 77;
  ASSERT_EQ(decoded.get_service(&list, 0), 0);
  EXPECT_EQ(decoded.ECC, 77);  // an audio service has none
  std::string text = json(decoded, uint16_t{4});
  std::replace(text.begin(), text.end(), '\0', '\x01');
  EXPECT_EQ(text,
            "{\n\"ServiceNo\": 4,\n\"ServId\": 4294941372,\n\"AudioOrDataFlag\": 0,\n\"ServRef\": 2748,\n"
            "\"CountryID\": 9,\n\"ProgramType\": 30,\n\"LinkingInfo\": 1,\n\"NumberComponents\": 3,\n\"CAId\": 5,\n"
            "\"local\": 1,\n\"SICharset\": 9,\n\"Label\": \"\"\\\xE9\x01 quoted     \",\n\"ComponentList\": [\n"
            "{\n\"ComponentNo\": 0,\n\"comp_ID\": 32618,\n\"TMID\": 1,\n\"SubChId\": 42,\n\"CA_flag\": 1,\n\"ps\": 0,\n"
            "\"ASCTyDSCTy\": 0,\n\"muA_info_valid\": 0\n},"
            "{\n\"ComponentNo\": 1,\n\"comp_ID\": 32874,\n\"TMID\": 2,\n\"FIDCId\": 42,\n\"CA_flag\": 0,\n\"ps\": 1,\n"
            "\"ASCTyDSCTy\": 0,\n\"muA_info_valid\": 1\n},"
            "{\n\"ComponentNo\": 2,\n\"comp_ID\": 53812,\n\"TMID\": 3,\n\"SCId\": 564,\n\"DGFlag\": 1,\n"
            "\"CA_flag\": 1,\n\"ps\": 0,\n\"ASCTyDSCTy\": 42,\n\"muA_info_valid\": 0\n}]\n}");
  Si468x_DAB_component component;
  EXPECT_EQ(component.get_component(&decoded, 3), -6);
  EXPECT_EQ(component.comp_ID + component.SubChId + component.TMID + component.FIDCId + component.SCId +
                component.DGFlag + component.CA_flag + component.ps + component.ASCTyDSCTy + component.muA_info_valid,
            0U);  // as it was when new
  EXPECT_EQ(Si468x_ErrorCode, 28U);
}

// 4083 bytes of entries: 48 services of 15 components, one of `last` and, with 6 of those, 3 bytes that hold nothing.
Byte_string full_list(uint8_t last) {
  Byte_string entries;
  for (uint32_t id = 1; id <= 48; ++id) entries = entries + service(id, 0, 15, "full") + Byte_string(60, 0x11);
  return list_reply(1, 50, entries + service(49, 0, last, "last") + Byte_string(23, 0x22) + Byte_string(4, 0x3F));
}

TEST_F(Service_list, OfFullLengthIsDecodedToItsLastByte) {
  Si468x_service_data last;
  Si468x_DAB_component component;
  ASSERT_EQ(read(full_list(6)), 0);
  ASSERT_EQ(list.size, 4083);
  EXPECT_EQ(last.get_service(&list, 48), 0);
  EXPECT_EQ(last.components_size, 27);
  EXPECT_EQ(component.get_component(&last, 5), 0);
  EXPECT_EQ(component.comp_ID, 0x2222U);
  EXPECT_EQ(component.muA_info_valid, 1);  // its last byte
  EXPECT_EQ(component.get_component(&last, 6), -6);
  EXPECT_EQ(last.get_service(&list, 49), -4);
  EXPECT_EQ(Si468x_ErrorCode, 327U);
  EXPECT_NE(json(list).find("\"ComponentNo\": 14"), std::string::npos);

  ASSERT_EQ(read(full_list(7)), 0);  // one byte of the last component is missing
  EXPECT_EQ(last.get_service(&list, 48), -4);
  EXPECT_EQ(Si468x_ErrorCode, 427U);
  last.NumberComponents = 7;
  EXPECT_EQ(component.get_component(&last, 6), -6);
  EXPECT_EQ(Si468x_ErrorCode, 28U);
}

TEST_F(Service_list, ServiceThatCannotBeLocatedSaysWhy) {
  const Byte_string three = service(1, 0, 3, "three") + Byte_string(12, 1);
  const struct {
    Byte_string entries;
    uint8_t index;
    int16_t result;
    uint32_t code;
  } cases[] = {
      {station_a, 9, -6, 27},            // beyond the count
      {Byte_string(23, 0), 1, -4, 127},  // not one header
      {Byte_string(23, 0), 0, -4, 327},
      {Byte_string(three.begin(), three.end() - 1), 1, -4, 227},  // components of the first cut off
      {station_a, 1, -4, 327},                                    // ends where the second would begin
      {station_a + Byte_string(23, 0), 1, -4, 327},
      {station_a + Byte_string(23, 0), 2, -4, 127},  // the same, on the way to another
      {station_a + Byte_string(three.begin(), three.end() - 1), 2, -4, 227},
      {station_a + Byte_string(three.begin(), three.end() - 1), 1, -4, 427},  // its own components cut off
      {station_a + three, 1, 0, 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << "index " << int{c.index} << ", code " << c.code);
    ASSERT_EQ(read(list_reply(1, 9, c.entries)), 0);
    Si468x_ErrorCode = 0;
    Si468x_service_data decoded;
    EXPECT_EQ(decoded.get_service(&list, c.index), c.result);
    EXPECT_EQ(Si468x_ErrorCode, c.code);
    EXPECT_EQ(decoded.components != nullptr, c.result == 0);
    EXPECT_EQ(decoded.NumberComponents, c.code == 427 || c.result == 0 ? 3 : 0);
  }
}

TEST_F(Service_list, JsonKeepsTheCountsWhateverTheChipClaims) {
  // The list claims three services: the second's components run past the end, the third is missing; three bytes are
  // left.
  ASSERT_EQ(read(list_reply(1, 3, station_a + service(0x2222, 0, 15, "cut off") + Byte_string(3, 0xFF))), 0);
  const std::string text = json(list);
  const auto count = [&](const std::string& part) {
    size_t n = 0;
    for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++n;
    return n;
  };
  EXPECT_EQ(count("\"ServiceNo\": "), 3U);
  EXPECT_EQ(count("\"ServId\": 8738"), 2U);  // the third repeats the last that was decoded
  EXPECT_EQ(count("\"ComponentNo\": "), 31U);
  // From the first service's position there are 28 bytes of list: seven components, the first of them its own.
  EXPECT_EQ(count("\"comp_ID\": 12,"), 3U);
  EXPECT_EQ(count("\"comp_ID\": 8738,"), 2U);

  ASSERT_EQ(read(list_reply(1, 2, {})), 0);  // before any service: zeros, a label of blanks, no components
  const std::string blank = json(list);
  EXPECT_NE(blank.find("\"ServiceNo\": 1,\n\"ServId\": 0,"), std::string::npos);
  EXPECT_NE(blank.find("\"Label\": \"                \",\n\"ComponentList\": [\n]"), std::string::npos);
  ASSERT_EQ(read(list_reply(1, 1, service(5, 0, 2, "no position"))), 0);  // no position yet: nothing may be read
  EXPECT_NE(json(list).find("\"ComponentNo\": 1,\n\"comp_ID\": 0,"), std::string::npos);
}

}  // namespace
