// SPDX-License-Identifier: GPL-3.0-or-later
// The comparison as a page and as a picture. Sessions have whole files, scripts/browser-test has them in a browser.
#include <gtest/gtest.h>

#include <regex>
#include <sstream>

#include "survey/output/page.h"
#include "survey/output/picture.h"

namespace {

using namespace survey;
using namespace std::string_literals;

std::string written(void (*write)(std::ostream&, const std::vector<Scan>&), const std::vector<Scan>& scans) {
  std::ostringstream out;
  write(out, scans);
  return out.str();
}

Entry ensemble(unsigned index, uint32_t frequency, int rssi, int snr, const std::string& label) {
  Service service{.id = 17333, .programme_type = 10, .label = label, .components = {{.id = 12}}};
  return {index, frequency, rssi, snr, 100, true, {service}, Time{2026, 3, 7, 9, 5, 0}};
}

Scan scan(const std::string& city, std::vector<Entry> entries) {
  Scan result{.file = "a.json", .location = {}, .entries = std::move(entries)};
  result.location.city = city;
  return result;
}

// A strong ensemble at both places, one that is too weak at the second, where its services came through; a signal that
// is not DAB where the first did not scan. In 12C the first place has a service more than the second, without a
// programme type.
std::vector<Scan> two_places() {
  Entry longer = ensemble(33, 227360, 30, 7, "Nova");
  longer.services.insert(longer.services.begin(), Service{.id = 1, .label = "Solo", .components = {{.id = 9}}});
  Entry weak{1, 176640, -3, 4, 20, true, ensemble(1, 0, 0, 0, "Aurora").services};
  Entry other{3, 180064, 90, 2, 0, false};
  return {scan("Roof", {ensemble(1, 176640, 40, 21, "Aurora"), {2, 178352, 5, 0, 0, false}, longer}),
          scan("Cellar", {weak, {2, 178352, 6, 0, 0, false}, other, ensemble(33, 227360, 20, 8, "Nova")})};
}

/// The text of a page without its elements.
std::string page_text(const std::vector<Scan>& scans) {
  std::string text = written(write_page, scans);
  text = std::regex_replace(text.substr(text.find("</head>")), std::regex("<[^>]*>"), "|");
  text = std::regex_replace(text, std::regex("[|\n]*\n[|\n]*"), "\n");
  return std::regex_replace(text, std::regex("[|]+"), "|");
}

TEST(SurveyPage, ReadsAsTextInTheOrderOfBlocksAndPlaces) {
  EXPECT_EQ(page_text(two_places()), R"(
DAB reception at 2 places
Signal strength in dBµV, quality of reception and number of services of each block
1 Roof|2026-03-07 09:05 UTC|2 ensembles, 3 services|best for 1 block|0|40|80|dBµV|services
2 Cellar|2026-03-07 09:05 UTC|1 ensemble, 2 services|best for 1 block|0|40|80|dBµV|services
5B| |176.640
40 dBµV, received well, 1 service, best place|40|1
-3 dBµV, too weak to decode, 1 service|-3|1
5D |180.064
not scanned
90 dBµV, a signal that is not DAB|90
12C| |227.360
30 dBµV, received poorly, 2 services|30|2
20 dBµV, received fairly, 1 service, best place|20|1
No signal: 5C.
no signal
a signal, not DAB
too weak to decode
received, SNR below 8 dB
SNR 8 to 15 dB
SNR 16 dB and more
the place where the block is received best
Stations
5B |176.640 MHz, index 1, best at place 1: 40 dBµV, SNR 21 dB, FIC quality 100
Aurora| |Pop music · at 1, 2|kelvo-spidev -f 1 -e 17333 -c 12 -p
12C |227.360 MHz, index 33, best at place 2: 20 dBµV, SNR 8 dB, FIC quality 100
Solo| |at 1|kelvo-spidev -f 33 -e 1 -c 9 -p
Nova| |Pop music · at 1, 2|kelvo-spidev -f 33 -e 17333 -c 12 -p
)");
}

TEST(SurveyPage, OnePlaceHasNoOtherToCompareWith) {
  const std::string text = page_text({scan("Roof", {ensemble(1, 176640, 40, 21, "Aurora")})});
  EXPECT_EQ(text.substr(0, text.find("no signal")), R"(
DAB reception at Roof
Signal strength in dBµV, quality of reception and number of services of each block
Roof|2026-03-07 09:05 UTC|1 ensemble, 1 service|0|40|80|dBµV|services
5B| |176.640
40 dBµV, received well, 1 service|40|1
)");
  EXPECT_EQ(text.substr(text.find("SNR 16")), R"(SNR 16 dB and more
Stations
5B |176.640 MHz, index 1: 40 dBµV, SNR 21 dB, FIC quality 100
Aurora| |Pop music|kelvo-spidev -f 1 -e 17333 -c 12 -p
)");
}

TEST(SurveyPage, ABlockReceivedNowhereHasNoBestPlace) {
  Scan weak = two_places()[1];
  weak.entries.resize(1);
  const std::string text = page_text({weak, weak});
  EXPECT_NE(text.find("index 1: -3 dBµV"), text.npos);
  EXPECT_EQ(text.find("best place"), text.npos);
}

TEST(SurveyPicture, BarsHaveTheColourOfReceptionAndTheLengthOfStrength) {
  const std::string picture = written(write_picture, two_places());
  const std::regex bar(R"re(class="bar (\w+)"[^>]*><rect[^>]*><rect class="level" width="(\w+%))re");
  std::string bars;
  for (std::sregex_iterator found(picture.begin(), picture.end(), bar), end; found != end; ++found)
    bars += (*found)[1].str() + " " + (*found)[2].str() + "\n";
  EXPECT_EQ(bars,
            "good 50%\nweak 0%\nother 100%\npoor 38%\nfair 25%\n"
            "none 100%\nother 100%\nweak 100%\npoor 100%\nfair 100%\ngood 100%\n");
}

TEST(SurveyMarkup, WhateverAFileSaysStaysText) {
  const struct {
    std::string text, markup;
  } rows[] = {
      {"</title><script>a&b", "&lt;/title&gt;&lt;script&gt;a&amp;b"},
      {"\"onload='x'", "&quot;onload=&#39;x&#39;"},
      {"a\0\x07\n\x1B[31m\x7F\u0085\u2028"s, "a\uFFFD\uFFFD\uFFFD\uFFFD[31m\uFFFD\uFFFD\uFFFD"},
      {"\u202E\u2066a\u202C\u2069", "\uFFFD\uFFFDa\uFFFD\uFFFD"},
      {"\uFFFE\uFDD0\U0010FFFF\xFF\xC3", "\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD"},
      {"Süd\u2013Étoile", "Süd\u2013Étoile"},
  };
  for (const auto& write : {write_page, write_picture}) {
    const auto with = [&](const std::string& text) {
      return written(write, {scan(text, {ensemble(33, 227360, 40, 21, text)})});
    };
    for (const auto& row : rows) {
      SCOPED_TRACE(row.markup);
      std::string result = with(row.text);
      for (size_t at = 0; (at = result.find(row.markup, at)) != std::string::npos;)
        result.replace(at, row.markup.size(), "Plain");
      EXPECT_EQ(result, with("Plain"));
    }
  }
}

TEST(SurveyPicture, LongNamesAreCutBetweenCharacters) {
  std::string name;
  for (int i = 0; i < 60; ++i) name += "ü";
  const std::string picture = written(write_picture, {scan(name, {})});
  EXPECT_NE(picture.find(">" + name.substr(0, 58) + "…</text>"), std::string::npos);
}

}  // namespace
