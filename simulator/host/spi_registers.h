// SPDX-License-Identifier: GPL-3.0-or-later
// SPI0 as a polling program drives it, on the current board.
#pragma once

#include <cstdint>

namespace sim {

/// Sets the bits of `mask` in the CS register to those of `value`.
void set_cs_bits(uint32_t value, uint32_t mask);

/// Chip select goes active, with both FIFOs empty.
void open_transaction();
/// Keeps both FIFOs moving until every byte has been sent and its answer received; the buffers may be the same.
void move_bytes(const uint8_t* sent, uint8_t* received, uint32_t length);
/// The controller's DONE flag.
bool transfer_done();
void close_transaction();

}  // namespace sim
