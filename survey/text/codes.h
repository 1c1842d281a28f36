// SPDX-License-Identifier: GPL-3.0-or-later
// Names for numbers of DAB: blocks, programme types, countries.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace survey {

/// Name of the Band III block at `frequency` kHz ("5A" to "13F"), empty if there is none.
std::string_view block_name(uint32_t frequency);

/// In MHz, "176.640".
std::string megahertz(uint32_t frequency);

/// The block's name; its frequency in MHz where it has none.
std::string block_title(uint32_t frequency);

/// kHz of the block at `index` of the chip's list as it is by default, 0 beyond it.
uint32_t block_frequency(unsigned index);

/// Name of a programme type of the international table, "None" for 0; empty for 30 and 31.
std::string_view programme_type_name(unsigned type);

/// ISO 3166-1 code of the country with this extended country code (bits 11-4) and country id (bits 3-0); empty if no
/// single country has it.
std::string_view country_name(uint32_t code);

}  // namespace survey
