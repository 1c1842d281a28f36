// SPDX-License-Identifier: GPL-3.0-or-later
// Linked into programs that people watch: simulated time takes real time unless KELVO_SIM_REALTIME says otherwise.
#include "simulator/host/environment.h"

[[maybe_unused]] static const bool sleeps = (sim::sleeps_by_default = true);
