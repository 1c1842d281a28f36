// SPDX-License-Identifier: GPL-3.0-or-later
// Samples as JSON lines on standard output.
#pragma once

#include "live/sample.h"
#include "watch/options.h"

/// Writes `sample`, then those that follow. @return the program's exit status
int write_lines(const Options& options, live::Sampler& sampler, live::Sample sample);
