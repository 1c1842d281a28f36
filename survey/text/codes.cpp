// SPDX-License-Identifier: GPL-3.0-or-later
// Tables of names.
#include "survey/text/codes.h"

#include <algorithm>

namespace survey {

namespace {

struct Block {
  uint32_t frequency;  // kHz
  std::string_view name;
};

struct Country {
  uint16_t code;  // extended country code and, in the low four bits, country id
  std::string_view name;
};

// clang-format off
constexpr Block blocks[] = {
    {174928, "5A"}, {176640, "5B"}, {178352, "5C"}, {180064, "5D"}, {181936, "6A"}, {183648, "6B"}, {185360, "6C"},
    {187072, "6D"}, {188928, "7A"}, {190640, "7B"}, {192352, "7C"}, {194064, "7D"}, {195936, "8A"}, {197648, "8B"},
    {199360, "8C"}, {201072, "8D"}, {202928, "9A"}, {204640, "9B"}, {206352, "9C"}, {208064, "9D"}, {209936, "10A"},
    {210096, "10N"}, {211648, "10B"}, {213360, "10C"}, {215072, "10D"}, {216928, "11A"}, {217088, "11N"},
    {218640, "11B"}, {220352, "11C"}, {222064, "11D"}, {223936, "12A"}, {224096, "12N"}, {225648, "12B"},
    {227360, "12C"}, {229072, "12D"}, {230784, "13A"}, {232496, "13B"}, {234208, "13C"}, {235776, "13D"},
    {237488, "13E"}, {239200, "13F"},
};

constexpr std::string_view programme_types[] = {
    "None", "News", "Current affairs", "Information", "Sport", "Education", "Drama", "Arts", "Science", "Talk",
    "Pop music", "Rock music", "Easy listening", "Light classical", "Classical music", "Other music", "Weather",
    "Finance", "Children's", "Factual", "Religion", "Phone in", "Travel", "Leisure", "Jazz and blues",
    "Country music", "National music", "Oldies music", "Folk music", "Documentary",
};

// Ascending. A code that several countries share is left out.
constexpr Country countries[] = {
    {0xA01, "US"}, {0xA02, "US"}, {0xA03, "US"}, {0xA04, "US"}, {0xA05, "US"}, {0xA06, "US"}, {0xA07, "US"},
    {0xA08, "US"}, {0xA09, "US"}, {0xA0A, "US"}, {0xA0B, "US"}, {0xA0D, "US"}, {0xA0E, "US"}, {0xA1B, "CA"},
    {0xA1C, "CA"}, {0xA1D, "CA"}, {0xA1E, "CA"}, {0xA1F, "GL"}, {0xA21, "AI"}, {0xA22, "AG"}, {0xA23, "EC"},
    {0xA24, "FK"}, {0xA25, "BB"}, {0xA26, "BZ"}, {0xA27, "KY"}, {0xA28, "CR"}, {0xA29, "CU"}, {0xA2A, "AR"},
    {0xA2B, "BR"}, {0xA2C, "BM"}, {0xA2D, "AN"}, {0xA2E, "GP"}, {0xA2F, "BS"}, {0xA31, "BO"}, {0xA32, "CO"},
    {0xA33, "JM"}, {0xA34, "MQ"}, {0xA36, "PY"}, {0xA37, "NI"}, {0xA39, "PA"}, {0xA3A, "DM"}, {0xA3B, "DO"},
    {0xA3C, "CL"}, {0xA3D, "GD"}, {0xA3E, "TC"}, {0xA3F, "GY"}, {0xA41, "GT"}, {0xA42, "HN"}, {0xA43, "AW"},
    {0xA45, "MS"}, {0xA46, "TT"}, {0xA47, "PE"}, {0xA48, "SR"}, {0xA49, "UY"}, {0xA4A, "KN"}, {0xA4B, "LC"},
    {0xA4C, "SV"}, {0xA4D, "HT"}, {0xA4E, "VE"}, {0xA5B, "MX"}, {0xA5C, "VC"}, {0xA5D, "MX"}, {0xA5E, "MX"},
    {0xA63, "BR"}, {0xA6C, "BR"}, {0xA6D, "BR"}, {0xA6F, "PM"}, {0xD01, "CM"}, {0xD02, "CF"}, {0xD03, "DJ"},
    {0xD04, "MG"}, {0xD05, "ML"}, {0xD06, "AO"}, {0xD07, "GQ"}, {0xD08, "GA"}, {0xD09, "GN"}, {0xD0A, "ZA"},
    {0xD0B, "BF"}, {0xD0C, "CG"}, {0xD0D, "TG"}, {0xD0E, "BJ"}, {0xD0F, "MW"}, {0xD11, "NA"}, {0xD12, "LR"},
    {0xD13, "GH"}, {0xD14, "MR"}, {0xD15, "ST"}, {0xD16, "CV"}, {0xD17, "SN"}, {0xD18, "GM"}, {0xD19, "BI"},
    {0xD1A, "AC"}, {0xD1B, "BW"}, {0xD1C, "KM"}, {0xD1D, "TZ"}, {0xD1E, "ET"}, {0xD1F, "NG"}, {0xD21, "SL"},
    {0xD22, "ZW"}, {0xD23, "MZ"}, {0xD24, "UG"}, {0xD25, "SZ"}, {0xD26, "KE"}, {0xD27, "SO"}, {0xD28, "NE"},
    {0xD29, "TD"}, {0xD2A, "GW"}, {0xD2B, "CD"}, {0xD2C, "CI"}, {0xD2D, "TZ"}, {0xD2E, "ZM"}, {0xD33, "EH"},
    {0xD35, "RW"}, {0xD36, "LS"}, {0xD38, "SC"}, {0xD3A, "MU"}, {0xD3C, "SD"}, {0xE01, "DE"}, {0xE02, "DZ"},
    {0xE03, "AD"}, {0xE04, "IL"}, {0xE05, "IT"}, {0xE06, "BE"}, {0xE07, "RU"}, {0xE08, "PS"}, {0xE09, "AL"},
    {0xE0A, "AT"}, {0xE0B, "HU"}, {0xE0C, "MT"}, {0xE0D, "DE"}, {0xE0F, "EG"}, {0xE11, "GR"}, {0xE12, "CY"},
    {0xE13, "SM"}, {0xE14, "CH"}, {0xE15, "JO"}, {0xE16, "FI"}, {0xE17, "LU"}, {0xE18, "BG"}, {0xE1A, "GI"},
    {0xE1B, "IQ"}, {0xE1C, "GB"}, {0xE1D, "LY"}, {0xE1E, "RO"}, {0xE1F, "FR"}, {0xE21, "MA"}, {0xE22, "CZ"},
    {0xE23, "PL"}, {0xE24, "VA"}, {0xE25, "SK"}, {0xE26, "SY"}, {0xE27, "TN"}, {0xE29, "LI"}, {0xE2A, "IS"},
    {0xE2B, "MC"}, {0xE2C, "LT"}, {0xE2D, "RS"}, {0xE2F, "NO"}, {0xE31, "ME"}, {0xE32, "IE"}, {0xE33, "TR"},
    {0xE35, "TJ"}, {0xE38, "NL"}, {0xE39, "LV"}, {0xE3A, "LB"}, {0xE3B, "AZ"}, {0xE3C, "HR"}, {0xE3D, "KZ"},
    {0xE3E, "SE"}, {0xE3F, "BY"}, {0xE41, "MD"}, {0xE42, "EE"}, {0xE43, "MK"}, {0xE46, "UA"}, {0xE47, "XK"},
    {0xE48, "PT"}, {0xE49, "SI"}, {0xE4A, "AM"}, {0xE4B, "UZ"}, {0xE4C, "GE"}, {0xE4E, "TM"}, {0xE4F, "BA"},
    {0xE53, "KG"}, {0xF01, "AU"}, {0xF02, "AU"}, {0xF03, "AU"}, {0xF04, "AU"}, {0xF05, "AU"}, {0xF06, "AU"},
    {0xF07, "AU"}, {0xF08, "AU"}, {0xF09, "SA"}, {0xF0A, "AF"}, {0xF0B, "MM"}, {0xF0C, "CN"}, {0xF0D, "KP"},
    {0xF0E, "BH"}, {0xF0F, "MY"}, {0xF11, "KI"}, {0xF12, "BT"}, {0xF13, "BD"}, {0xF14, "PK"}, {0xF15, "FJ"},
    {0xF16, "OM"}, {0xF17, "NR"}, {0xF18, "IR"}, {0xF19, "NZ"}, {0xF1A, "SB"}, {0xF1B, "BN"}, {0xF1C, "LK"},
    {0xF1D, "TW"}, {0xF1E, "KR"}, {0xF1F, "HK"}, {0xF21, "KW"}, {0xF22, "QA"}, {0xF23, "KH"}, {0xF24, "WS"},
    {0xF25, "IN"}, {0xF26, "MO"}, {0xF27, "VN"}, {0xF28, "PH"}, {0xF29, "JP"}, {0xF2A, "SG"}, {0xF2B, "MV"},
    {0xF2C, "ID"}, {0xF2D, "AE"}, {0xF2E, "NP"}, {0xF2F, "VU"}, {0xF31, "LA"}, {0xF32, "TH"}, {0xF33, "TO"},
    {0xF39, "PG"}, {0xF3B, "YE"}, {0xF3E, "FM"}, {0xF3F, "MN"},
};
// clang-format on

static_assert(std::ranges::is_sorted(countries, {}, &Country::code));

}  // namespace

std::string_view block_name(uint32_t frequency) {
  const auto* const block = std::ranges::find(blocks, frequency, &Block::frequency);
  return block == std::end(blocks) ? std::string_view() : block->name;
}

std::string megahertz(uint32_t frequency) {
  const std::string thousandths = std::to_string(1000 + frequency % 1000);
  return std::to_string(frequency / 1000) + "." + thousandths.substr(1);
}

std::string block_title(uint32_t frequency) {
  const std::string_view name = block_name(frequency);
  return name.empty() ? megahertz(frequency) : std::string(name);
}

uint32_t block_frequency(unsigned index) { return index < std::size(blocks) ? blocks[index].frequency : 0; }

std::string_view programme_type_name(unsigned type) {
  return type < std::size(programme_types) ? programme_types[type] : std::string_view();
}

std::string_view country_name(uint32_t code) {
  const auto* const found = std::ranges::lower_bound(countries, code, {}, &Country::code);
  return found == std::end(countries) || found->code != code ? std::string_view() : found->name;
}

}  // namespace survey
