// SPDX-License-Identifier: GPL-3.0-or-later
// The reader of broadcast files.
#include "simulator/broadcast/broadcast_file.h"

#include <algorithm>
#include <chrono>

#include "simulator/broadcast/broadcast_services.h"
#include "simulator/json/json_members.h"

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

// The name is for the reader of the file: the chip does not report it.
static void members(Json_members& json, Ensemble& ensemble) {
  json.need("index", ensemble.index);
  json("name", [](const Json_reader& name) { static_cast<void>(name.text()); });
  json.need("signal", [&](const Json_reader& signal) { Json_members::read(signal, ensemble.signal); });
  json("valid", [&](const Json_reader& valid) { ensemble.acquired = ensemble.valid = valid.truth(); });
  json("acquired", ensemble.acquired);
  json("frequency_info", ensemble.frequency_info);
  json("reconfiguration", ensemble.reconfiguration);
  json("reconfiguration_warning", ensemble.reconfiguration_warning);
  json("announcement", ensemble.announcement);
  json("lists", [&](const Json_reader& lists) { ensemble.lists = read_service_lists(lists); });
}

static void read_ensembles(const Json_reader& json, Broadcast& air) {
  for (const Json_reader& entry : json.elements(air.frequencies.size())) {
    Ensemble ensemble;
    Json_members::read(entry, ensemble);
    entry.at("index").whole_number(0, static_cast<int64_t>(air.frequencies.size()) - 1);
    if (ensemble.acquired && !ensemble.valid) entry.fail("what is not valid cannot be acquired");
    for (const Ensemble& other : air.ensembles)
      if (other.index == ensemble.index) entry.fail("there is an ensemble on this index already");
    air.ensembles.push_back(std::move(ensemble));
  }
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
  json("af", [&](const Json_reader& codes) {
    for (const Json_reader& code : codes.elements(most_alternatives))
      rds.af.push_back(static_cast<uint8_t>(code.whole_number(0, UINT8_MAX)));
  });
}

static void members(Json_members& json, Fm_station& station) {
  json.need("khz", station.khz, fm_band_bottom, fm_band_top);
  json.need("signal", [&](const Json_reader& signal) { Json_members::read(signal, station.signal); });
  json("rds", [&](const Json_reader& rds) { Json_members::read(rds, station.rds.emplace()); });
}

static void read_fm_stations(const Json_reader& json, Broadcast& air) {
  constexpr uint32_t raster = 10;
  for (const Json_reader& entry : json.elements((fm_band_top - fm_band_bottom) / raster + 1)) {
    Fm_station station;
    Json_members::read(entry, station);
    if (station.khz % raster != 0) entry.at("khz").fail("not a multiple of 10");
    if (fm_station_on(air, station.khz) != nullptr) entry.fail("there is a station on this frequency already");
    air.fm_stations.push_back(std::move(station));
  }
}

// The groups "fm", "chip" and "board" of a broadcast's members.
struct Fm_group {
  Broadcast& air;
};
struct Chip_group {
  Broadcast& air;
};
struct Board_group {
  Broadcast& air;
};

static void members(Json_members& json, Fm_group& fm) {
  json("noise", [&](const Json_reader& noise) { Json_members::read(noise, fm.air.fm_noise); });
  json("stations", [&](const Json_reader& stations) { read_fm_stations(stations, fm.air); });
}

static void members(Json_members& json, Chip_group& chip) { json("always_ready", chip.air.always_ready); }

static void members(Json_members& json, Board_group& board) {
  json("spi_enabled", board.air.spi_enabled);
  json("registers", board.air.registers);
}

template <typename Group>
static Json_members::Read group(Broadcast& air) {
  return [&air](const Json_reader& json) {
    Group group{air};
    Json_members::read(json, group);
  };
}

static void members(Json_members& json, Broadcast& air) {
  json("frequencies", [&](const Json_reader& khz) { read_frequencies(khz, air.frequencies); });
  json("noise", [&](const Json_reader& noise) { Json_members::read(noise, air.noise); });
  json("ensembles", [&](const Json_reader& ensembles) { read_ensembles(ensembles, air); });
  json("time", [&](const Json_reader& time) { air.time = read_time(time); });
  json("local_offset_minutes", air.local_offset_minutes, -720, 840);
  json("fm", group<Fm_group>(air));
  json("chip", group<Chip_group>(air));
  json("board", group<Board_group>(air));
  json("faults", [](const Json_reader&) {});  // read with the board
}

Broadcast read_broadcast(const Json_reader& json) {
  Broadcast air;
  Json_members::read(json, air);
  return air;
}

Broadcast parse_broadcast(std::string_view text, const std::string& name) {
  const Json_file parsed = parse_json(text, name);
  return read_broadcast(Json_reader(parsed));
}

const Broadcast& default_broadcast() {
  static const Broadcast air = parse_broadcast(
      // cppcheck-suppress comparePointers ; the assembler puts the end right behind the text
      {kelvo_default_broadcast, static_cast<size_t>(kelvo_default_broadcast_end - kelvo_default_broadcast)},
      "the built-in broadcast");
  return air;
}

}  // namespace sim
