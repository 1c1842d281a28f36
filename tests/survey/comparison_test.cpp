// SPDX-License-Identifier: GPL-3.0-or-later
// Scans compared: places, stations, and the search by name.
#include <gtest/gtest.h>

#include "survey/file/search.h"
#include "survey/text/codes.h"

namespace {

using namespace survey;

Entry received(unsigned index, int rssi, int snr, unsigned fic_quality, std::vector<Service> services = {}) {
  return {.index = index,
          .frequency = block_frequency(index),
          .rssi = rssi,
          .snr = snr,
          .fic_quality = fic_quality,
          .valid = fic_quality != 0,
          .services = std::move(services)};
}

const Service audio{
    .id = 17333, .programme_type = 10, .label = "Éins", .components = {{.id = 9, .transport = 3}, {.id = 12}}};
const Service other{.id = 17346, .label = "Eins plus", .components = {{.id = 14}}};
const Service data{.id = 0xE1C00000, .data = true, .label = "éins", .components = {{.id = 5, .transport = 3}}};
const Scan roof{.file = "roof.json", .entries = {received(33, 52, 16, 90, {audio, data}), received(34, 9, 3, 29)}};
const Scan cellar{
    .file = "c",
    .location = {.street_no = "3", .street = "Hill", .city = "Ulm"},
    .entries = {received(33, 60, 15, 100, {other, audio}), received(2, 20, 0, 0), received(34, 8, 3, 29)}};

// Each block with the reception at each place, the best places, and by what the best leads.
std::string summary(const std::vector<Scan>& scans) {
  std::string text;
  for (const Row& row : rows(scans)) {
    text += std::string(block_name(row.frequency)) + ':';
    for (size_t i = 0; i < row.cells.size(); ++i)
      text += row.cells[i] == nullptr ? "-" : std::to_string(int(row.reception_at(i)));
    for (const size_t best : row.best) text += " best " + std::to_string(best);
    text += lead(row).empty() ? "; " : ", " + lead(row) + "; ";
  }
  return text;
}

TEST(SurveyComparison, ComparesPlaces) {
  EXPECT_EQ(summary({roof}), "12C:6; 12D:3; ");
  EXPECT_EQ(summary({roof, cellar}), "5C:-2; 12C:65 best 0, +1 dB; 12D:33; ");
  EXPECT_EQ(summary({Scan{}, roof, cellar, roof, Scan{}}), "5C:--2--; 12C:-656- best 1 best 3; 12D:-333-; ");

  const std::vector<Scan> five = {Scan{}, roof, cellar, roof, Scan{}};
  const std::vector<Station> all = stations(five);
  ASSERT_EQ(all.size(), 3);
  EXPECT_EQ(all[0].received, (std::vector<size_t>{1, 2, 3}));
  EXPECT_EQ(all[0].best, (std::vector<size_t>{1, 3}));
  EXPECT_EQ(all[2].service->id, 17346);
  EXPECT_EQ(all[2].best, (std::vector<size_t>{2}));
  EXPECT_EQ(country(roof.entries[0]), "GB");
  EXPECT_EQ(country(cellar.entries[0]), "");
  EXPECT_EQ(programme_type_name(24), "Jazz and blues");
  EXPECT_EQ(programme_type_name(29), "Documentary");
  EXPECT_EQ(programme_type_name(30), "");
  EXPECT_EQ(place_name(cellar), "Hill 3, Ulm");
  EXPECT_EQ(place_name(roof), "roof.json");
}

TEST(SurveyComparison, TheBetterPlaceIsByReceptionThenFicQualityThenSnrThenStrength) {
  Entry unmeasured = received(33, 0, 0, 0);
  unmeasured.measured = false;
  const struct {
    Entry entry;
    std::string lead;  // over the one before
  } ascending[] = {
      {unmeasured, ""},
      {received(33, 19, 99, 0), ""},
      {received(33, 20, 0, 0), ""},
      {received(33, 90, 16, 29), ""},
      {received(33, 90, 7, 100), "only here"},
      {received(33, 90, 15, 98), "+8 dB"},
      {received(33, 20, 8, 99), "FIC +1"},
      {received(33, 19, 9, 99), "+1 dB"},
      {received(33, 20, 9, 99), "signal +1"},
      {received(33, 9, 16, 30), "+7 dB"},
  };
  for (size_t i = 1; i < std::size(ascending); ++i) {
    const Entry& worse = ascending[i - 1].entry;
    const Entry& entry = ascending[i].entry;
    EXPECT_TRUE(better(entry, worse) && !better(worse, entry)) << i;
    const std::vector<Scan> scans = {{.entries = {entry}}, {.entries = {worse}}};
    EXPECT_EQ(lead(rows(scans)[0]), ascending[i].lead) << i;
    EXPECT_EQ(rows(scans)[0].best.size(), ascending[i].lead.empty() ? 0 : 1) << i;
  }
  const Scan best{.entries = {ascending[9].entry}};
  EXPECT_EQ(summary({best, best}), "12C:66 best 0 best 1, equal; ");
  EXPECT_EQ(summary({{.entries = {unmeasured}}, best}), "12C:06 best 1, only here; ");
}

TEST(SurveyComparison, StationsOfOnePlaceAlone) {
  const auto names = [](const std::vector<Scan>& scans) {
    std::string text;
    for (const auto& services : received_alone(stations(scans), scans.size())) {
      for (const Service* service : services) text += service->label + ", ";
      text += "; ";
    }
    return text;
  };
  EXPECT_EQ(names({roof, cellar}), "éins, ; Eins plus, ; ");
  EXPECT_EQ(names({roof}), "; ");
  EXPECT_EQ(names({roof, roof, Scan{}}), "; ; ; ");
  // In another block it is the same service.
  const Scan twice{.entries = {received(5, 30, 9, 90, {audio, other}), received(6, 30, 9, 90, {other})}};
  EXPECT_EQ(names({roof, twice}), "éins, ; Eins plus, ; ");
}

TEST(SurveySearch, FindsStationsByName) {
  const auto found = [](std::string_view name, const std::vector<Scan>& scans) {
    std::string text;
    for (const Station& station : stations_called(name, stations(scans)))
      text += std::string(block_name(station.entry->frequency)) + " " + station.service->label + "; ";
    return text;
  };
  const std::vector<Scan> two = {roof, cellar};
  EXPECT_EQ(found("éINS", two), "12C Éins; ");
  EXPECT_EQ(found("ins", two), "12C Éins; 12C Eins plus; ");
  EXPECT_EQ(found("eins ", two), "12C Eins plus; ");
  EXPECT_EQ(found("17346", two), "12C Eins plus; ");
  EXPECT_EQ(found("zwei", two), "");

  // One service in three blocks, the best of which kelvo cannot tune to; and another of the same name.
  const Service slash{.id = 17400, .label = "9/Eins", .components = {{.id = 8}}};
  Service twin = audio;
  twin.id = 17401;
  const std::vector<Scan> wide = {{.entries = {received(0, 50, 20, 100, {audio}), received(5, 30, 9, 90, {audio}),
                                               received(6, 31, 9, 90, {audio, slash}), received(7, 9, 9, 40, {twin})}}};
  EXPECT_EQ(found("éins", {{.entries = {wide[0].entries.begin(), wide[0].entries.end() - 1}}}), "6C Éins; ");
  EXPECT_EQ(found("éins", wide), "6C Éins; 6D Éins; ");
  EXPECT_EQ(found("6b/éins", wide), "6B Éins; ");
  EXPECT_EQ(found("6D/17401", wide), "6D Éins; ");
  EXPECT_EQ(found("9/EINS", wide), "6C 9/Eins; ");
  EXPECT_EQ(found("6B/zwei", wide), "");
}

TEST(SurveySearch, PlaysThePrimaryAudioComponent) {
  using Components = std::vector<Component>;
  const struct {
    unsigned index;
    uint32_t service;
    Components components;
    std::string options, reason;
  } rows[] = {
      {33, 17333, {{.id = 40}, {.id = 41, .primary = true}}, "-f 33 -e 17333 -c 41 -p", ""},
      {33, 17333, {{.id = 9, .transport = 3, .primary = true}, {.id = 12}, {.id = 13}}, "-f 33 -e 17333 -c 12 -p", ""},
      {33, 17333, {{.id = 9, .transport = 3, .primary = true}}, "", "it has no audio component"},
      {33, 17333, {}, "", "it has no audio component"},
      {0, 17333, {{.id = 12}}, "", "kelvo cannot tune to index 0"},
      {33, 0, {{.id = 12}}, "", "kelvo takes no id 0"},
      {33, 17333, {{.id = 0}}, "", "kelvo takes no id 0"},
  };
  for (const auto& row : rows) {
    const Service service{.id = row.service, .components = row.components};
    EXPECT_EQ(play_options({.index = row.index}, service), row.options);
    EXPECT_EQ(unplayable({.index = row.index}, service), row.reason);
  }
  EXPECT_EQ(play_options({.index = 33}, data) + unplayable({.index = 33}, data), "");
}

}  // namespace
