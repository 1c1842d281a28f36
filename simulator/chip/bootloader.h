// SPDX-License-Identifier: GPL-3.0-or-later
// Which images have been downloaded since power-up.
#pragma once

#include <cstdint>

#include "simulator/chip/clock.h"

namespace sim {

struct Bootloader {
  /// The images that the chip can be given, by their exact lengths in bytes.
  static constexpr uint32_t rom_patch_size = 5796;
  static constexpr uint32_t dab_image_size = 521448;
  static constexpr uint32_t fm_image_size = 530180;

  /// What the chip needs after a download before the next command; a program that goes on earlier boots by luck alone.
  static constexpr Time patch_settles = std::chrono::milliseconds(50);
  static constexpr Time image_settles = std::chrono::milliseconds(100);

  bool loading = false;    ///< LOAD_INIT has opened a download
  uint32_t received = 0;   ///< bytes of the download under way
  uint32_t downloads = 0;  ///< opened so far
  uint32_t first = 0;      ///< bytes of the first download, which must be the patch
  Time last_chunk{};       ///< when it arrived
};

}  // namespace sim
