// SPDX-License-Identifier: GPL-3.0-or-later
// All reads of the chip's replies. Internal to the driver.
#pragma once

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <span>

/// `width` bits of `value` from bit `low` up; low + width is at most 32.
constexpr uint32_t bits(uint32_t value, unsigned low, unsigned width) {
  return value >> low & (~uint32_t{0} >> (32 - width));
}

/// Little-endian reads and bit fields over bytes of a known length. Call `holds` before reading at an offset taken from
/// the chip.
class Bytes_view {
 public:
  explicit Bytes_view(std::span<const uint8_t> bytes) : bytes_(bytes) {}

  size_t size() const { return bytes_.size(); }
  bool holds(size_t position, size_t count) const { return position <= size() && count <= size() - position; }

  uint8_t u8(size_t k) const { return static_cast<uint8_t>(little_endian(k, 1)); }
  uint16_t u16(size_t k) const { return static_cast<uint16_t>(little_endian(k, 2)); }
  uint32_t u32(size_t k) const { return little_endian(k, 4); }
  /// Fills `to` from byte `k` on.
  void copy(size_t k, std::span<uint8_t> to) const {
    assert(holds(k, to.size()));
    std::copy_n(bytes_.data() + k, to.size(), to.data());
  }
  bool bit(size_t k, unsigned n) const { return bits(u8(k), n, 1) != 0; }

  /// `width` bits from bit `low` of byte `k` upwards, continued in the next bytes; low + width is at most 32.
  uint32_t field(size_t k, unsigned low, unsigned width) const {
    return bits(little_endian(k, (low + width + 7) / 8), low, width);
  }

 private:
  uint32_t little_endian(size_t k, size_t count) const {
    assert(holds(k, count));
    uint32_t value = 0;
    for (size_t i = 0; i < count; ++i) value |= uint32_t{bytes_[k + i]} << (8 * i);
    return value;
  }

  std::span<const uint8_t> bytes_;
};

/// A reply with the chip's numbering: byte 0 is STATUS0, data begins at byte 4. (The buffer begins with one meaningless
/// byte, received while the read opcode was sent.)
class Reply_view : public Bytes_view {
 public:
  explicit Reply_view(std::span<const uint8_t> buffer) : Bytes_view(buffer.subspan(1)) {}

  bool clear_to_send() const { return bit(0, 7); }
  bool seek_tune_complete() const { return bit(0, 0); }
  uint8_t status3() const { return u8(3); }

  /// The status check: 0 good; -2 command refused (ERR_CMD) or, last, non-recoverable error (ERRNR); -1 data dropped in
  /// a reply or a command, or an arbiter error (REPOFERR, CMDOFERR, ARBERR).
  int16_t status_result() const {
    if (bit(0, 6)) return -2;
    if ((status3() & 0x0E) != 0) return -1;
    if (bit(3, 0)) return -2;
    return 0;
  }
};
