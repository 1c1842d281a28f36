// SPDX-License-Identifier: GPL-3.0-or-later
// The received signal on the full screen of a terminal.
#pragma once

#include "live/sample.h"
#include "watch/options.h"

/// Shows `sample`, then those that follow, until the user ends it or for `options.count` samples. The terminal is then
/// as it was before. A signal that ends the program does so after that.
void run_screen(const Options& options, live::Sampler& sampler, const live::Sample& sample);
