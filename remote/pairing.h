// SPDX-License-Identifier: GPL-3.0-or-later
// The link that pairs a phone.
#pragma once

#include <string>

#include "remote/options.h"

namespace remote {

/// Prints the link; to a terminal its QR code, too; and whether a phone can reach it.
void print_pairing(const Options& options, const std::string& key);

/// The same at the start of the program; into a log only the address, since a log has more readers.
void print_start(const Options& options, const std::string& key);

}  // namespace remote
