// SPDX-License-Identifier: GPL-3.0-or-later
// The check before the bcm2835 library's first step: is this machine a Raspberry Pi that the library knows?
#pragma once

#include <string_view>

/// Calls `init` where `machine`, the device tree's names for this machine (each ended by a zero byte; empty where they
/// cannot be read), includes a chip with the peripherals of the Raspberry Pi Zero to 4. Elsewhere prints one line on
/// standard error and calls nothing. @return what `init` returns, or 0.
int init_on_raspberry_pi(std::string_view machine, int (*init)());

/// The file that holds these names.
constexpr const char* machine_file = "/proc/device-tree/compatible";
