// SPDX-License-Identifier: GPL-3.0-or-later
#include <nlohmann/json.hpp>
#include <sstream>

#include "fuzz/fuzz.h"
#include "survey/output/exports.h"
#include "survey/output/page.h"
#include "survey/output/picture.h"
#include "survey/output/table.h"

// A scan that is written as JSON and read again is unchanged, and no output has characters that control a terminal.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  survey::Scan_file file;
  try {
    file = survey::read_scans({reinterpret_cast<const char*>(data), size}, "input.json").front();
  } catch (const survey::File_error& error) {
    const std::string_view line = error.what();
    require(line.starts_with("input.json: line ") && line.find_first_of("\r\n") == line.npos, "an error is one line");
    return 0;
  }
  const std::string json = survey::json_line(file);
  require(nlohmann::json::accept(json), "the output is JSON");
  const survey::Scan again = survey::read_scans(json, "output.json").front().scan;
  require(again.location.street == file.scan.location.street, "answers stay");
  require(again.entries.size() == file.scan.entries.size(), "entries stay");
  for (size_t i = 0; i < again.entries.size(); ++i) {
    const auto& services = file.scan.entries[i].services;
    require(
        std::ranges::equal(again.entries[i].services, services, {}, &survey::Service::label, &survey::Service::label),
        "labels stay");
  }
  const std::vector<survey::Scan> scans = {file.scan, again};
  std::ostringstream text;
  text << json << survey::csv_lines(file.scan);
  survey::write_table(text, scans, {.width = 70});
  survey::write_stations(text, survey::stations(scans), scans, {.unicode = false});
  survey::write_page(text, scans);
  survey::write_picture(text, scans);
  require(std::ranges::none_of(text.str(), [](char c) { return (c >= 0 && c < ' ' && c != '\n') || c == 0x7F; }),
          "no control characters");
  return 0;
}
