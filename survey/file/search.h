// SPDX-License-Identifier: GPL-3.0-or-later
// Finds a station by its name, and the options of kelvo that play it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "survey/file/comparison.h"

namespace survey {

/// The options that play the service's main component: "-f 33 -e 17333 -c 12 -p".
/// Empty if nothing can play it: `kelvo` takes no index 0, no id 0 and no data service.
std::string play_options(const Entry& entry, const Service& service);

/// Why there are no such options, "kelvo cannot tune to index 0"; empty if there are, and for a data service.
std::string unplayable(const Entry& entry, const Service& service);

/// The audio stations that are called `name`, in upper or lower case, or have this service id; without any, those with
/// `name` in theirs. "6B/name" looks in one block. Of one service in several blocks, the best one that can be played.
std::vector<Station> stations_called(std::string_view name, const std::vector<Station>& stations);

}  // namespace survey
