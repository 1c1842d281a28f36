// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/broadcast/broadcast_file.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "simulator/broadcast/broadcast_services.h"

// The built-in file, embedded by the assembler.
extern "C" const char kelvo_default_broadcast[];
extern "C" const char kelvo_default_broadcast_end[];

namespace sim {

namespace {

std::vector<uint32_t> read_frequencies(const Json_reader& json) {
  constexpr size_t most_frequencies = 255;
  std::vector<uint32_t> khz;
  for (const Json_reader& entry : json.elements()) {
    khz.push_back(static_cast<uint32_t>(entry.whole_number(1, UINT32_MAX)));
    if (std::count(khz.begin(), khz.end(), khz.back()) > 1) entry.fail("this frequency is in the list twice");
  }
  if (khz.size() > most_frequencies) json.fail("more than 255 frequencies");
  return khz;
}

Signal read_signal(const Json_reader& json) {
  json.expect_keys({"rssi", "snr", "fic_quality", "cnr", "fib_errors", "fft_offset", "antenna_cap", "cu_level",
                    "fast_detect", "hardmute", "fic_error", "rssi_high", "rssi_low"});
  Signal signal;
  json.read("rssi", signal.rssi);
  json.read("snr", signal.snr);
  json.read("fic_quality", signal.fic_quality, 0, 100);
  json.read("cnr", signal.cnr);
  json.read("fib_errors", signal.fib_errors);
  json.read("fft_offset", signal.fft_offset);
  json.read("antenna_cap", signal.antenna_cap);
  json.read("cu_level", signal.cu_level);
  json.read("fast_detect", signal.fast_detect);
  json.read("hardmute", signal.hardmute);
  json.read("fic_error", signal.fic_error);
  json.read("rssi_high", signal.rssi_high);
  json.read("rssi_low", signal.rssi_low);
  return signal;
}

// "name" is for the reader of the file: the chip does not report it.
Ensemble read_ensemble(const Json_reader& json, size_t frequency_count) {
  json.expect_keys({"index", "name", "signal", "valid", "acquired", "frequency_info", "reconfiguration",
                    "reconfiguration_warning", "announcement", "lists"});
  if (frequency_count == 0) json.fail("there is no frequency for an ensemble");
  Ensemble ensemble;
  ensemble.index = static_cast<uint8_t>(json.at("index").whole_number(0, static_cast<int64_t>(frequency_count) - 1));
  if (json.has("name")) json.at("name").text();
  ensemble.signal = read_signal(json.at("signal"));
  json.read("valid", ensemble.valid);
  ensemble.acquired = ensemble.valid;
  json.read("acquired", ensemble.acquired);
  if (ensemble.acquired && !ensemble.valid) json.fail("what is not valid cannot be acquired");
  json.read("frequency_info", ensemble.frequency_info);
  json.read("reconfiguration", ensemble.reconfiguration);
  json.read("reconfiguration_warning", ensemble.reconfiguration_warning);
  json.read("announcement", ensemble.announcement);
  if (json.has("lists")) ensemble.lists = read_service_lists(json.at("lists"));
  return ensemble;
}

Date_time read_time(const Json_reader& json) {
  json.expect_keys({"year", "month", "day", "hour", "minute", "second"});
  Date_time time;
  time.year = static_cast<uint16_t>(json.at("year").whole_number(1900, 9999));
  time.month = static_cast<uint8_t>(json.at("month").whole_number(1, 12));
  time.day = static_cast<uint8_t>(json.at("day").whole_number(1, 31));
  json.read("hour", time.hour, 0, 23);
  json.read("minute", time.minute, 0, 59);
  json.read("second", time.second, 0, 59);
  return time;
}

Fm_signal read_fm_signal(const Json_reader& json) {
  json.expect_keys({"rssi", "snr", "multipath", "frequency_offset", "antenna_cap", "valid", "afc_railed", "hd_detected",
                    "hd_detected_filtered", "hd_level", "hd_level_filtered", "snr_high", "snr_low", "rssi_high",
                    "rssi_low"});
  Fm_signal signal;
  json.read("rssi", signal.rssi);
  json.read("snr", signal.snr);
  json.read("multipath", signal.multipath);
  json.read("frequency_offset", signal.frequency_offset);
  json.read("antenna_cap", signal.antenna_cap);
  json.read("valid", signal.valid);
  json.read("afc_railed", signal.afc_railed);
  json.read("hd_detected", signal.hd_detected);
  json.read("hd_detected_filtered", signal.hd_detected_filtered);
  json.read("hd_level", signal.hd_level);
  json.read("hd_level_filtered", signal.hd_level_filtered);
  json.read("snr_high", signal.snr_high);
  json.read("snr_low", signal.snr_low);
  json.read("rssi_high", signal.rssi_high);
  json.read("rssi_low", signal.rssi_low);
  return signal;
}

Rds read_rds(const Json_reader& json) {
  constexpr size_t most_alternatives = 2;
  json.expect_keys({"pi", "pty", "tp", "ta", "music", "ps", "af"});
  Rds rds;
  rds.pi = static_cast<uint16_t>(json.at("pi").whole_number(0, UINT16_MAX));
  json.read("pty", rds.pty, 0, 31);
  json.read("tp", rds.tp);
  json.read("ta", rds.ta);
  json.read("music", rds.music);
  rds.ps = read_label(json.at("ps"), 8);
  if (json.has("af"))
    for (const Json_reader& code : json.at("af").elements())
      rds.af.push_back(static_cast<uint8_t>(code.whole_number(0, 255)));
  if (rds.af.size() > most_alternatives) json.fail("more than 2 alternative frequency codes");
  return rds;
}

std::vector<Fm_station> read_fm_stations(const Json_reader& json) {
  std::vector<Fm_station> stations;
  for (const Json_reader& entry : json.elements()) {
    entry.expect_keys({"khz", "signal", "rds"});
    Fm_station station;
    station.khz = static_cast<uint32_t>(entry.at("khz").whole_number(fm_band_bottom, fm_band_top));
    if (station.khz % 10 != 0) entry.at("khz").fail("not a multiple of 10");
    for (const Fm_station& other : stations)
      if (other.khz == station.khz) entry.fail("there is a station on this frequency already");
    station.signal = read_fm_signal(entry.at("signal"));
    if (entry.has("rds")) station.rds = read_rds(entry.at("rds"));
    stations.push_back(std::move(station));
  }
  return stations;
}

}  // namespace

Broadcast read_broadcast(const Json_reader& json) {
  json.expect_keys(
      {"frequencies", "noise", "ensembles", "time", "local_offset_minutes", "fm", "chip", "board", "faults"});
  Broadcast air;
  if (json.has("frequencies")) air.frequencies = read_frequencies(json.at("frequencies"));
  if (json.has("noise")) air.noise = read_signal(json.at("noise"));
  if (json.has("ensembles")) {
    for (const Json_reader& entry : json.at("ensembles").elements()) {
      Ensemble ensemble = read_ensemble(entry, air.frequencies.size());
      for (const Ensemble& other : air.ensembles)
        if (other.index == ensemble.index) entry.fail("there is an ensemble on this index already");
      air.ensembles.push_back(std::move(ensemble));
    }
  }
  if (json.has("time")) air.time = read_time(json.at("time"));
  json.read("local_offset_minutes", air.local_offset_minutes, -720, 840);
  if (json.has("fm")) {
    const Json_reader fm = json.at("fm");
    fm.expect_keys({"noise", "stations"});
    if (fm.has("noise")) air.fm_noise = read_fm_signal(fm.at("noise"));
    if (fm.has("stations")) air.fm_stations = read_fm_stations(fm.at("stations"));
  }
  if (json.has("chip")) {
    json.at("chip").expect_keys({"always_ready"});
    json.at("chip").read("always_ready", air.always_ready);
  }
  if (json.has("board")) {
    json.at("board").expect_keys({"spi_enabled", "registers"});
    json.at("board").read("spi_enabled", air.spi_enabled);
    json.at("board").read("registers", air.registers);
  }
  return air;
}

Broadcast parse_broadcast(std::string_view text, const std::string& name) {
  const nlohmann::json parsed = parse_json(text, name);
  return read_broadcast(Json_reader(parsed, name));
}

const Broadcast& default_broadcast() {
  static const Broadcast air = parse_broadcast(
      // cppcheck-suppress comparePointers ; the assembler puts the end right behind the text
      {kelvo_default_broadcast, static_cast<size_t>(kelvo_default_broadcast_end - kelvo_default_broadcast)},
      "the built-in broadcast");
  return air;
}

}  // namespace sim
