// SPDX-License-Identifier: GPL-3.0-or-later
// Every bit of every reply: the field that it belongs to, and that it changes no other. The expected texts are in
// tests/expected/records; the reports are those of the records themselves where they have one.
#include <algorithm>
#include <sstream>

#include "tests/support.h"

namespace {

constexpr size_t no_text = 1000;

struct Record {
  const char* name;
  const char* command;
  Byte_string before;                   // reply bytes from 4 on that stay as they are
  Byte_string base;                     // those behind them, of which every bit is inverted in turn
  std::function<std::string()> report;  // reads a new record; its result and all of its fields, a line each
  size_t text_at = no_text;             // 16 bytes from here in `base` are text and stay as they are, too
};

using Lines = std::vector<std::string>;

// Lines with single blanks, without the quotes and commas of JSON.
Lines plain_lines(const std::string& report) {
  Lines lines;
  std::istringstream all(report);
  for (std::string line; std::getline(all, line);) {
    std::erase_if(line, [](char c) { return c == '"' || c == ','; });
    line.erase(std::unique(line.begin(), line.end(), [](char a, char b) { return a == ' ' && b == ' '; }), line.end());
    lines.push_back(line);
  }
  return lines;
}

// Where `base` begins in the reply, as the chip counts: data begins at byte 4, behind the status.
size_t first_byte(const Record& record) {
  return record.command == std::string("RD_REPLY") ? 0 : 4 + record.before.size();
}

// The lines of `report` that are not in `base`.
std::string changes(const Lines& base, const std::string& report) {
  std::string text;
  for (const std::string& line : plain_lines(report))
    if (std::find(base.begin(), base.end(), line) == base.end()) text += (text.empty() ? "" : ", ") + line;
  return text.empty() ? "-" : text;
}

class Records : public Tuned_to_33 {
 protected:
  std::string report(const Record& record, const Byte_string& bytes) {
    board.clear_faults();
    sim::Fault fault{.command = record.command};
    if (first_byte(record) == 0)
      fault.status = {bytes[0], bytes[1], bytes[2], bytes[3]};
    else
      fault.reply = record.before + bytes;
    board.fault(fault);
    return record.report();
  }

  // A refused read, then a line for each byte: what its bits 0 to 7 change.
  std::string text_of(const Record& record) {
    board.clear_faults();
    board.fault({.command = record.command, .status_bits = {0x40}});
    std::string text = "Refused\n" + record.report() + "\n";
    const auto is_text = [&](size_t at) { return at >= record.text_at && at < record.text_at + 16; };
    const Lines base = plain_lines(report(record, record.base));
    for (size_t at = 0; at < record.base.size(); ++at) {
      if (is_text(at)) continue;
      text += "Byte " + std::to_string(first_byte(record) + at) + ":";
      std::string label;  // written once for bits of the same field
      for (unsigned bit = 0; bit < 8; ++bit) {
        Byte_string bytes = record.base;
        bytes[at] = static_cast<uint8_t>(bytes[at] ^ (1U << bit));
        const std::string change = changes(base, report(record, bytes));
        const size_t value = change.rfind(' ') + 1;
        text += (bit == 0 ? " " : " | ") + (label == change.substr(0, value) ? change.substr(value) : change);
        label = change.substr(0, value);
      }
      text += "\n";
    }
    return text;
  }

  void expect_texts(const std::vector<Record>& records) {
    for (const Record& record : records) {
      const std::string text = text_of(record);
      if (text == expected("records/" + std::string(record.name) + ".txt")) continue;
      const std::string file = testing::TempDir() + record.name + ".txt";
      write_file(file, text);
      ADD_FAILURE() << record.name << ": compare with " << file;
    }
  }
};

std::string with_result(int16_t result, const std::string& report) {
  return "result " + std::to_string(result) + "\n" + report;
}

// The report of a new record of type `Status` after `get`.
template <typename Status>
std::function<std::string()> printed(int16_t (Status::*get)()) {
  return [get] {
    Status record;
    const int16_t result = (record.*get)();
    return with_result(result, output_of([&] { record.print_data(); }));
  };
}

std::string json(const auto& record, auto... number) {
  std::stringstream ss;
  EXPECT_EQ(record.json_print_data(ss, number...), 0);
  return ss.str();
}

std::string up_to(const std::string& text, const char* end) { return text.substr(0, text.find(end)); }

std::string time_report() {
  Si468x_time time;
  const int16_t result = time.get_ensembletime();
  return with_result(result, output_of([&] { time.print_data(); }) + json(time));
}

std::string packet_report() {
  static std::array<uint8_t, 25 + 65535> buffer;
  Si468x_digital_service_data packet;
  const int16_t result = packet.get_new_data(buffer.data(), buffer.size());
  return with_result(result, up_to(output_of([&] { packet.print_data(); }), "Data: "));
}

std::string component_info_report() {
  std::array<uint8_t, 256> buffer{};
  Si468x_DAB_component_info info;
  info.label.fill('.');
  info.ua_data = buffer.data();
  const int16_t result = info.get_info(17333, 12);
  return with_result(result, up_to(output_of([&] { info.print_info(); }), "User"));
}

// The first service of a list, and its first component.
std::string service_report() {
  std::array<uint8_t, 4096> buffer{};
  Si468x_digital_service_list list;
  Si468x_service_data service;
  static_cast<void>(list.get_new_list(buffer.data()));
  const int16_t result = service.get_service(&list, 0);
  return with_result(result, up_to(json(service, uint16_t{0}), "\"Label"));
}

std::string component_report() {
  std::array<uint8_t, 4096> buffer{};
  Si468x_digital_service_list list;
  Si468x_service_data service;
  Si468x_DAB_component component;
  static_cast<void>(list.get_new_list(buffer.data()));
  static_cast<void>(service.get_service(&list, 0));
  const int16_t result = component.get_component(&service, 0);
  return with_result(result, json(component, uint16_t{0}));
}

std::string rsq_report() {
  Si468x_FM_rsq_status rsq;
  int16_t result = 0;
  EXPECT_EQ(output_of([&] { result = rsq.get_new_status(); }), "");
  std::ostringstream text;
  const auto& [snrh, snrl, rssih, rssil, limit, hd, hd_filtered, railed, valid, khz10, offset, rssi, snr, multipath,
               cap, level, level_filtered] = rsq;
  text << "interrupts: snr high " << +snrh << "\nsnr low " << +snrl << "\nrssi high " << +rssih << "\nrssi low "
       << +rssil << "\nband limit " << +limit << "\nHD " << +hd << "\nHD filtered " << +hd_filtered << "\nAFC railed "
       << +railed << "\nvalid " << +valid << "\n10 kHz " << khz10 << "\noffset " << +offset << "\nRSSI " << +rssi
       << "\nSNR " << +snr << "\nmultipath " << +multipath << "\nantenna cap " << cap << "\nHD level " << +level
       << "\nHD level filtered " << +level_filtered << "\n";
  return with_result(result, text.str());
}

// A list of one service with room for 15 components.
Byte_string list_header(size_t entries) { return Byte_string{static_cast<uint8_t>(6 + entries), 0, 0, 0, 1, 0, 0, 0}; }

TEST_F(Records, OfDabHaveEachBitInItsField) {
  const Byte_string list = list_header(24 + 60);
  const Byte_string audio_service = list + Byte_string{0, 0, 0, 0, 0, 1} + zeros(18);
  Byte_string component_info = zeros(24);
  std::fill_n(component_info.begin() + 4, 16, uint8_t{'x'});
  expect_texts({
      {"chip_status", "RD_REPLY", {}, zeros(4), printed(&Si468x_chip_info::get_status)},
      {"chip_part", "GET_PART_INFO", {}, zeros(19), printed(&Si468x_chip_info::get_part_info)},
      {"chip_image", "GET_SYS_STATE", {}, zeros(2), printed(&Si468x_chip_info::get_sys_state)},
      {"chip_revision", "GET_FUNC_INFO", {}, zeros(8), printed(&Si468x_chip_info::get_func_info)},
      {"digrad_status", "DAB_DIGRAD_STATUS", {}, zeros(19), printed(&Si468x_DAB_digrad_status::get_new_status)},
      {"event_status", "DAB_GET_EVENT_STATUS", {}, zeros(4), printed(&Si468x_DAB_event_status::get_new_status)},
      {"time", "DAB_GET_TIME", {}, zeros(7), time_report},
      {"packet", "GET_DIGITAL_SERVICE_DATA", {}, zeros(20), packet_report},
      {"component_info", "DAB_GET_COMPONENT_INFO", {}, component_info, component_info_report, 4},
      {"service_audio", "GET_DIGITAL_SERVICE_LIST", list, zeros(8), service_report},
      {"service_data", "GET_DIGITAL_SERVICE_LIST", list, {0, 0, 0, 0, 1, 0, 0, 0}, service_report},
      {"component_stream_audio", "GET_DIGITAL_SERVICE_LIST", audio_service, zeros(4), component_report},
      {"component_fidc", "GET_DIGITAL_SERVICE_LIST", audio_service, {0, 0x80, 0, 0}, component_report},
      {"component_packet_data", "GET_DIGITAL_SERVICE_LIST", audio_service, {0, 0xC0, 0, 0}, component_report},
  });
}

class Fm_records : public Records {
 protected:
  Fm_records() { board.restore({.chip = {.mode = sim::Mode::fm}, .pins = board.state().pins}); }
};

TEST_F(Fm_records, HaveEachBitInItsField) {
  expect_texts({{"fm_quality", "FM_RSQ_STATUS", {}, zeros(18), rsq_report}});
}

TEST_F(Records, RevisionWithoutVersionControlKeepsItsValues) {
  board.fault({.command = "GET_FUNC_INFO", .reply = Byte_string{5, 6, 7, 0xB0, 1, 2, 3, 4}});
  Si468x_chip_info info{.build_location = 1, .svn_id = 77};
  EXPECT_EQ(info.get_func_info(), 0);
  EXPECT_EQ(info.no_svn_info, 1);
  EXPECT_EQ(info.build_location, 1);
  EXPECT_EQ(info.svn_id, 77U);
}

TEST_F(Records, TimeReturnsTheLengthOfItsLineAndCanBeCleared) {
  Si468x_time time{.year = 2016, .month = 3, .day = 7, .hour = 9, .minute = 5, .second = 48};
  EXPECT_EQ(output_of([&] { EXPECT_EQ(time.print_data(), 17); }), "2016-3-7T9:5:48Z\n");
  time.clean();
  EXPECT_EQ(output_of([&] { EXPECT_EQ(time.print_data(), 13); }), "0-0-0T0:0:0Z\n");
}

}  // namespace
