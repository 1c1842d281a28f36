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

// A strong ensemble at the first place that is too weak at the second, where its services came through; a signal beyond
// the scale that is not DAB where the first has no entry. In 12C the first place has a service more than the second,
// without a programme type, and encrypted. 5C has no signal, 6A was not measured at the first place.
std::vector<Scan> two_places() {
  Entry longer = ensemble(33, 227360, 30, 7, "Nova");
  longer.services.insert(longer.services.begin(),
                         Service{.id = 1, .encrypted = true, .label = "Solo", .components = {{.id = 9}}});
  Entry weak{1, 176640, -3, 4, 20, true, ensemble(1, 0, 0, 0, "Aurora").services};
  Entry other{3, 180064, 81, 2, 0, false};
  Entry unmeasured{.index = 4, .frequency = 181936, .measured = false};
  return {scan("Roof", {ensemble(1, 176640, 40, 21, "Aurora"), {2, 178352, 5, 0, 0, false}, unmeasured, longer}),
          scan("Cellar", {weak,
                          {2, 178352, 6, 0, 0, false},
                          other,
                          {4, 181936, 6, 0, 0, false},
                          ensemble(33, 227360, 20, 8, "Nova")})};
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
Signal strength in dBµV, SNR in dB and number of services of each block
1|Roof|2026-03-07 09:05 UTC|03-07 09:05|2 ensembles, 3 services|best for 1 block
2|Cellar|2026-03-07 09:05 UTC|03-07 09:05|1 ensemble, 2 services|best for 1 block
0|40|80|dBµV|SNR|services
0|40|80|dBµV|SNR|services
5B| |176.640
40 dBµV, SNR 21 dB, received well, 1 service, best place, only here|40|21|1|only here
-3 dBµV, SNR 4 dB, too weak to decode, 1 service|-3|4|1
5D |180.064
not measured|not measured
81 dBµV, a signal that is not DAB|81
12C| |227.360
30 dBµV, SNR 7 dB, received poorly, 2 services|30|7|2
20 dBµV, SNR 8 dB, received fairly, 1 service, best place, +1 dB|20|8|1|+1 dB
no signal: below 20 dBµV
a signal that is not DAB: 20 dBµV and more
too weak to decode: FIC quality below 30
received poorly: SNR below 8 dB
received fairly: SNR 8 to 15 dB
received well: SNR 16 dB and more
the place that receives the block best, and how much more SNR it has (dB)
No signal: |5C|.
Not measured: |6A at 1|.
Only at place 1: |Solo|.
Stations
5B |176.640 MHz, index 1, best at place 1: 40 dBµV, SNR 21 dB, FIC quality 100
Aurora| |Pop music · at 1, 2|kelvo-spidev -f 1 -e 17333 -c 12 -p
12C |227.360 MHz, index 33, best at place 2: 20 dBµV, SNR 8 dB, FIC quality 100
Solo| |encrypted · at 1|kelvo-spidev -f 33 -e 1 -c 9 -p
Nova| |Pop music · at 1, 2|kelvo-spidev -f 33 -e 17333 -c 12 -p
)");
}

TEST(SurveyPage, OnePlaceHasNoOtherToCompareWith) {
  const std::string text = page_text({scan("Roof", {ensemble(1, 176640, 40, 21, "Aurora")})});
  EXPECT_EQ(text.substr(0, text.find("no signal")), R"(
DAB reception at Roof
Signal strength in dBµV, SNR in dB and number of services of each block
2026-03-07 09:05 UTC|03-07 09:05|1 ensemble, 1 service
0|40|80|dBµV|SNR|services
5B| |176.640
40 dBµV, SNR 21 dB, received well, 1 service|40|21|1
)");
  EXPECT_EQ(text.substr(text.find("received well: ")), R"(received well: SNR 16 dB and more
Stations
5B |176.640 MHz, index 1: 40 dBµV, SNR 21 dB, FIC quality 100
Aurora| |Pop music|kelvo-spidev -f 1 -e 17333 -c 12 -p
)");
}

// What a page has on this place, from its number to the number of ensembles.
std::string heading(const std::string& text, int place) {
  const size_t begin = text.find("\n" + std::to_string(place) + "|") + 1;
  return text.substr(begin, text.find("ensemble", begin) - begin);
}

TEST(SurveyPage, PlacesOfOneAddressAreToldApart) {
  std::vector<Scan> scans = {scan("Ulm", {}), scan("Ulm", {}), scan("Ulm", {})};
  scans[1].file = "b.json";
  for (Scan& scan : scans) scan.location.street = "Hill";
  scans[2].location.floor = "cellar";
  std::string text = page_text(scans);
  EXPECT_EQ(heading(text, 1), "1|Hill, Ulm|a.json|0 ");
  EXPECT_EQ(heading(text, 2), "2|Hill, Ulm|b.json|0 ");
  EXPECT_EQ(heading(text, 3), "3|Hill, cellar, Ulm|cellar|0 ");
  const std::string picture = written(write_picture, scans);
  EXPECT_NE(picture.find(">Hill, Ulm</text>\n<text x=\"0\" y=\"106\" class=\"muted\">b.json</text>"), picture.npos);
  // Many columns are narrow.
  scans.push_back(scans[0]);
  scans.push_back(scan("Ulm", two_places()[0].entries));
  scans[4].location.floor = "loft";
  text = page_text(scans);
  EXPECT_EQ(heading(text, 3), "3|Hill, cellar|0 ");
  EXPECT_EQ(heading(text, 5), "5|loft|03-07 09:05|2 ");
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
  const std::regex bar(
      R"re(class="bar (\w+)"[^>]*><rect[^>]*><rect class="level" width="(\w+%?)|class="(beyond|mark)")re");
  std::string bars;
  for (std::sregex_iterator found(picture.begin(), picture.end(), bar), end; found != end; ++found)
    bars += (*found)[1].str() + " " + (*found)[2].str() + (*found)[3].str() + "\n";
  EXPECT_EQ(bars,
            " mark\ngood 50%\nweak 2\nother 100%\n beyond\npoor 38%\n mark\nfair 25%\n"
            "none 100%\nother 100%\nweak 100%\npoor 100%\nfair 100%\ngood 100%\n mark\n");
}

TEST(SurveyMarkup, WhateverAFileSaysStaysText) {
  const struct {
    std::string text, markup;
  } rows[] = {
      {"</title><script>a&b", "&lt;/title&gt;&lt;script&gt;a&amp;b"},
      {"\"onload='x'", "&quot;onload=&#39;x&#39;"},
      {"a\0\x07\n\x1B[31m\x7F\u0085\u2028"s, "a\uFFFD\uFFFD\uFFFD\uFFFD[31m\uFFFD\uFFFD\uFFFD"},
      {"\u202E\u2066a\u202C\u2069", "\uFFFD\uFFFDa\uFFFD\uFFFD"},
      {"\uFFFE\uFDD0\uFDEF\U0010FFFF\xFF\xC3", "\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD"},
      {"\xC3\xC3\xBC", "\uFFFDü"},
      {"\uD7A3\uFDCF\uFDF0", "\uD7A3\uFDCF\uFDF0"},
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
  for (int i = 0; i < 80; ++i) name += "ü";
  const std::string picture = written(write_picture, {scan(name, {})});
  EXPECT_NE(picture.find(">" + name.substr(0, 120) + "…</text>"), std::string::npos);
}

}  // namespace
