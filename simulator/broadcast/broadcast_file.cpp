// SPDX-License-Identifier: GPL-3.0-or-later
// The reader of broadcast files.
#include "simulator/broadcast/broadcast_file.h"

#include <algorithm>
#include <chrono>

#include "simulator/broadcast/broadcast_services.h"

// The built-in file, embedded by the assembler.
extern "C" const char kelvo_default_broadcast[];
extern "C" const char kelvo_default_broadcast_end[];

namespace sim {

static void read_frequencies(const Json_reader& json, std::vector<uint32_t>& khz) {
  constexpr size_t most_frequencies = 255;
  khz.clear();
  for (const Json_reader& entry : json.elements(most_frequencies)) {
    khz.push_back(static_cast<uint32_t>(entry.whole_number(1, UINT32_MAX)));
    if (std::count(khz.begin(), khz.end(), khz.back()) > 1) entry.fail("this frequency is in the list twice");
  }
}

static void members(Json_members& json, Signal& signal) {
  json("rssi", signal.rssi);
  json("snr", signal.snr);
  json("fic_quality", signal.fic_quality, 0, 100);
  json("cnr", signal.cnr);
  json("fib_errors", signal.fib_errors);
  json("fft_offset", signal.fft_offset);
  json("antenna_cap", signal.antenna_cap);
  json("cu_level", signal.cu_level);
  json("fast_detect", signal.fast_detect);
  json("hardmute", signal.hardmute);
  json("fic_error", signal.fic_error);
  json("rssi_high", signal.rssi_high);
  json("rssi_low", signal.rssi_low);
}

// `quality` is the key of the third value.
static Fading read_fading(const Json_reader& json, std::string_view quality, uint8_t best) {
  constexpr size_t most_points = 1000;
  Fading fading;
  for (const Json_reader& entry : json.elements(most_points)) {
    entry.expect_keys({"at_s", "rssi", "snr", quality});
    fading.push_back({.at_s = static_cast<uint32_t>(entry.at("at_s").whole_number(0, 1'000'000)),
                      .rssi = static_cast<int8_t>(entry.at("rssi").whole_number(INT8_MIN, INT8_MAX)),
                      .snr = static_cast<int8_t>(entry.at("snr").whole_number(INT8_MIN, INT8_MAX)),
                      .quality = static_cast<uint8_t>(entry.at(quality).whole_number(0, best))});
    const size_t last = fading.size() - 1;
    if (last == 0 ? fading[0].at_s != 0 : fading[last].at_s <= fading[last - 1].at_s)
      entry.at("at_s").fail("the times begin at 0 and ascend");
  }
  if (fading.size() < 2) json.fail("a fading has two points or more");
  return fading;
}

// The name is for the reader of the file: the chip does not report it.
static void members(Json_members& json, Ensemble& ensemble) {
  json.need("index", ensemble.index);
  json("name", [](const Json_reader& name) { static_cast<void>(name.text()); });
  json.need("signal", ensemble.signal);
  json("fading", [&](const Json_reader& fading) { ensemble.fading = read_fading(fading, "fic_quality", 100); });
  json("valid", [&](const Json_reader& valid) { ensemble.acquired = ensemble.valid = valid.truth(); });
  json("acquired", ensemble.acquired);
  json("frequency_info", ensemble.frequency_info);
  json("reconfiguration", ensemble.reconfiguration);
  json("reconfiguration_warning", ensemble.reconfiguration_warning);
  json("announcement", ensemble.announcement);
  json("lists", [&](const Json_reader& lists) { ensemble.lists = read_service_lists(lists); });
}

static void read_ensembles(const Json_reader& json, Broadcast& air) {
  const auto check = [&](const Json_reader& entry, const Ensemble& ensemble) {
    entry.at("index").whole_number(0, static_cast<int64_t>(air.frequencies.size()) - 1);
    if (ensemble.acquired && !ensemble.valid) entry.fail("\"acquired\" needs \"valid\"");
    for (const Ensemble& other : air.ensembles)
      if (other.index == ensemble.index) entry.fail("there is an ensemble on this index already");
  };
  Json_members::read_list(json, air.frequencies.size(), air.ensembles, check);
}

static void members(Json_members& json, Date_time& time) {
  json.need("year", time.year, 1900, 9999);
  json.need("month", time.month, 1, 12);
  json.need("day", time.day, 1, 31);
  json("hour", time.hour, 0, 23);
  json("minute", time.minute, 0, 59);
  json("second", time.second, 0, 59);
}

static Date_time read_time(const Json_reader& json) {
  using namespace std::chrono;
  Date_time time;
  Json_members::read(json, time);
  if (!(year(time.year) / time.month / time.day).ok()) json.fail("there is no such day");
  return time;
}

static void members(Json_members& json, Fm_signal& signal) {
  json("rssi", signal.rssi);
  json("snr", signal.snr);
  json("multipath", signal.multipath);
  json("frequency_offset", signal.frequency_offset);
  json("antenna_cap", signal.antenna_cap);
  json("valid", signal.valid);
  json("afc_railed", signal.afc_railed);
  json("hd_detected", signal.hd_detected);
  json("hd_detected_filtered", signal.hd_detected_filtered);
  json("hd_level", signal.hd_level);
  json("hd_level_filtered", signal.hd_level_filtered);
  json("snr_high", signal.snr_high);
  json("snr_low", signal.snr_low);
  json("rssi_high", signal.rssi_high);
  json("rssi_low", signal.rssi_low);
}

static void members(Json_members& json, Rds& rds) {
  constexpr size_t most_alternatives = 2;
  constexpr size_t name_length = 8;
  json.need("pi", [&](const Json_reader& pi) { rds.pi = static_cast<uint16_t>(pi.identifier(UINT16_MAX)); });
  json("pty", rds.pty, 0, 31);
  json("tp", rds.tp);
  json("ta", rds.ta);
  json("music", rds.music);
  json.need("ps", [&](const Json_reader& name) { rds.ps = read_label(name, name_length); });
  json("af", rds.af, most_alternatives);
}

static void members(Json_members& json, Fm_station& station) {
  json.need("khz", station.khz, fm_band_bottom, fm_band_top);
  json.need("signal", station.signal);
  json("fading", [&](const Json_reader& fading) { station.fading = read_fading(fading, "multipath", UINT8_MAX); });
  json("rds", station.rds);
}

static void read_fm_stations(const Json_reader& json, std::vector<Fm_station>& stations) {
  constexpr uint32_t raster = 10;
  const auto check = [&](const Json_reader& entry, const Fm_station& station) {
    if (station.khz % raster != 0) entry.at("khz").fail("not a multiple of 10");
    for (const Fm_station& other : stations)
      if (other.khz == station.khz) entry.fail("there is a station on this frequency already");
  };
  Json_members::read_list(json, (fm_band_top - fm_band_bottom) / raster + 1, stations, check);
}

static void members(Json_members& json, Fm_band& fm) {
  json("noise", fm.noise);
  json("stations", [&](const Json_reader& stations) { read_fm_stations(stations, fm.stations); });
}

void members(Json_members& json, Broadcast& air) {
  json("frequencies", [&](const Json_reader& khz) { read_frequencies(khz, air.frequencies); });
  json("noise", air.noise);
  json("ensembles", [&](const Json_reader& ensembles) { read_ensembles(ensembles, air); });
  json("time", [&](const Json_reader& time) { air.time = read_time(time); });
  json("local_offset_minutes", air.local_offset_minutes, -720, 840);
  json("fm", air.fm);
}

static Broadcast read_default_broadcast() {
  const Json_file file = parse_json(
      // cppcheck-suppress comparePointers ; the assembler puts the end right behind the text
      {kelvo_default_broadcast, static_cast<size_t>(kelvo_default_broadcast_end - kelvo_default_broadcast)},
      "the built-in broadcast");
  Broadcast air;
  Json_members::read(Json_reader(file), air);
  return air;
}

const Broadcast& default_broadcast() {
  static const Broadcast air = read_default_broadcast();
  return air;
}

}  // namespace sim
