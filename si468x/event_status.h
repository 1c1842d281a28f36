// SPDX-License-Identifier: GPL-3.0-or-later
// The event command, shared by the event report and the scan's wait for a stable list. Internal to the driver.
#pragma once

#include <cstdint>

#include "si468x/si468x.h"

/// DAB_GET_EVENT_STATUS with acknowledge into `events`, unchanged on failure. @return the command's result and code.
int16_t read_events(Si468x_DAB_event_status& events);
