// SPDX-License-Identifier: GPL-3.0-or-later
// Power-up, image download and boot, step by step.
#include "firmware/firmware.h"

#include <unistd.h>

#include <array>

#include "tests/support.h"

namespace {

// A frame that loads `count` bytes of an image from `offset`.
Byte_string load_frame(const uint8_t* image, size_t offset, size_t count) {
  return Byte_string{0x04, 0x00, 0x00, 0x00} + Byte_string(image + offset, image + offset + count);
}

class Fresh_from_reset : public Board_test {
 protected:
  Fresh_from_reset() : Board_test({.mode = sim::Mode::waiting}) {}
};

TEST_F(Fresh_from_reset, PowerUpWantsTheBootloaderAndNothingElse) {
  for (const uint8_t status3 : Byte_string{0x00, 0x40, 0xC0, 0x90}) {
    SCOPED_TRACE(int{status3});
    board.clear_faults();
    board.fault({.command = "POWER_UP", .status = {{0x80, 0, 0, status3}}});
    EXPECT_EQ(Si468x_power_up(), -5);
    EXPECT_EQ(Si468x_ErrorCode, 104U);
  }
  board.clear_faults();
  board.fault({.command = "POWER_UP", .cts_never = true});
  EXPECT_EQ(Si468x_power_up(), -3);
  EXPECT_EQ(Si468x_ErrorCode, 4U);
}

TEST_F(Powered_up, BootWantsTheApplicationAndNothingElse) {
  EXPECT_EQ(Si468x_boot(), -2);  // no image loaded
  EXPECT_EQ(Si468x_ErrorCode, 10U);
  EXPECT_EQ(board.sent(), (Frames{{0x07, 0x00}, zeros(7)}));
  for (const uint8_t status3 : Byte_string{0x80, 0xD0}) {
    board.clear_faults();
    board.fault({.command = "BOOT", .status = {{0x80, 0, 0, status3}}});
    EXPECT_EQ(Si468x_boot(), -4);
    EXPECT_EQ(Si468x_ErrorCode, 110U);
  }
}

TEST_F(Powered_up, ImageIsCutIntoChunksOf4092Bytes) {
  const uint8_t* const image = fw_dab_radio_5_0_5bin;
  const struct {
    uint32_t size;
    Frames frames;
  } cases[] = {
      {1, {load_frame(image, 0, 1), zeros(7)}},
      {4092, {load_frame(image, 0, 4092), zeros(7)}},
      {4093, {load_frame(image, 0, 4092), zeros(7), load_frame(image, 4092, 1), zeros(7)}},
      {8184, {load_frame(image, 0, 4092), zeros(7), load_frame(image, 4092, 4092), zeros(7)}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.size);
    EXPECT_EQ(Si468x_load_init(), 0);
    board.clear_record();
    EXPECT_EQ(Si468x_load_firmware_static(image, c.size), 0);
    EXPECT_EQ(board.sent(), c.frames);
    EXPECT_EQ(board.waits(), Waits{});
  }
}

TEST_F(Powered_up, EmptyImageSendsNothing) {
  EXPECT_EQ(Si468x_load_firmware_static(fw_rom00_patch016bin, 0), -6);
  EXPECT_EQ(Si468x_ErrorCode, 8U);
  EXPECT_EQ(board.sent(), Frames{});
}

TEST_F(Powered_up, ChunkOutcomes) {
  const struct {
    sim::Fault fault;
    int16_t result;
    uint32_t code;
    Waits waits;
  } cases[] = {
      {{.command = "HOST_LOAD", .cts_low_reads = 3}, 0, 0, growing(50us, 100us, 3)},
      {{.command = "HOST_LOAD", .cts_never = true}, -3, 160, growing(50us, 100us, 50)},
      {{.command = "HOST_LOAD", .status_bits = {0x40, 0, 0, 0x0E}}, -2, 260, {}},
      {{.command = "HOST_LOAD", .status_bits = {0, 0, 0, 0x04}}, -1, 260, {}},
      {{.command = "HOST_LOAD", .status_bits = {0, 0, 0, 0x01}}, -2, 260, {}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Si468x_load_init(), 0);
    start_over();
    board.fault(c.fault);
    Byte_string chunk(100, 0x5C);
    EXPECT_EQ(Si468x_load_firmware_datapackage(chunk.data(), 100), c.result);
    EXPECT_EQ(Si468x_ErrorCode, c.code);
    EXPECT_EQ(board.waits(), c.waits);
    EXPECT_EQ(Si468x_load_init(), 0);
    EXPECT_EQ(Si468x_load_firmware_static(fw_rom00_patch016bin, 10), c.result);
    EXPECT_EQ(Si468x_ErrorCode, c.result == 0 ? 0U : 108U);
  }
}

class Image_file : public Powered_up {
 protected:
  Image_file() {
    EXPECT_EQ(Si468x_load_init(), 0);
    board.clear_record();
  }
  ~Image_file() override { std::remove(path.c_str()); }
  const std::string path = testing::TempDir() + "kelvo-image-" + std::to_string(getpid());
};

TEST_F(Image_file, IsDownloadedAsTheSameImageInMemory) {
  write_file(path, std::string(fw_rom00_patch016bin, fw_rom00_patch016bin + sizeof fw_rom00_patch016bin));
  EXPECT_EQ(Si468x_load_firmware(path.c_str()), 0);
  EXPECT_EQ(board.sent(), (Frames{load_frame(fw_rom00_patch016bin, 0, 4092), zeros(7),
                                  load_frame(fw_rom00_patch016bin, 4092, 1704), zeros(7)}));
  write_file(path, std::string(1, '\x5C'));
  board.clear_record();
  EXPECT_EQ(Si468x_load_firmware(path.c_str()), 0);
  EXPECT_EQ(board.sent(), (Frames{{0x04, 0x00, 0x00, 0x00, 0x5C}, zeros(7)}));
}

TEST_F(Image_file, EachFailureHasItsCode) {
  EXPECT_EQ(Si468x_load_firmware(path.c_str()), -6);
  EXPECT_EQ(Si468x_ErrorCode, 7U);
  write_file(path, "");
  EXPECT_EQ(Si468x_load_firmware(path.c_str()), -6);
  EXPECT_EQ(Si468x_ErrorCode, 107U);
  EXPECT_EQ(Si468x_load_firmware(testing::TempDir().c_str()),
            -6);  // a folder can be opened and has a size, but cannot be read
  EXPECT_TRUE(Si468x_ErrorCode == 1007 || Si468x_ErrorCode == 107) << Si468x_ErrorCode;
  std::array<int, 2> ends{};
  ASSERT_EQ(pipe(ends.data()), 0);  // has no end to seek to
  EXPECT_EQ(Si468x_load_firmware(("/dev/fd/" + std::to_string(ends[0])).c_str()), -6);
  EXPECT_EQ(Si468x_ErrorCode, 107U);
  for (const int end : ends) close(end);
  EXPECT_EQ(board.sent(), Frames{});
  write_file(path, std::string(5000, 'x'));
  board.fault({.command = "HOST_LOAD", .occurrence = 2, .cts_never = true});
  EXPECT_EQ(Si468x_load_firmware(path.c_str()), -3);
  EXPECT_EQ(Si468x_ErrorCode, 207U);
}

// Truncates the file after the first chunk was sent.
class Shrink_after_first_chunk : public sim::Observer {
 public:
  explicit Shrink_after_first_chunk(std::string path) : path_(std::move(path)) {}
  void transaction(const trace::Transaction& done) override {
    if (done.command == "HOST_LOAD") write_file(path_, "short");
  }

 private:
  std::string path_;
};

TEST_F(Image_file, ThatShrinksWhileItIsReadFailsWithItsChunk) {
  write_file(path, std::string(20000, 'x'));
  Shrink_after_first_chunk shrink(path);
  board.add_observer(shrink);
  EXPECT_EQ(Si468x_load_firmware(path.c_str()), -6);
  board.remove_observer(shrink);
  EXPECT_EQ(Si468x_ErrorCode, 1107U);
  EXPECT_EQ(board.sent().size(), 2U);
}

TEST_F(Powered_up, FlashLoadIsOneTransactionWithoutAWait) {
  EXPECT_EQ(Si468x_load_firmware_flash(0x00A1B2C3), 0);
  EXPECT_EQ(board.sent(), Frames({{0x05, 0, 0, 0, 0xC3, 0xB2, 0xA1, 0x00, 0, 0, 0, 0}}));
}

}  // namespace
