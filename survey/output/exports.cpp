// SPDX-License-Identifier: GPL-3.0-or-later
// One pass over the records of a scan.
#include "survey/output/exports.h"

#include <algorithm>

#include "survey/file/parser.h"
#include "survey/text/codes.h"
#include "survey/text/text.h"

namespace survey {

namespace {

// Spreadsheets take a text for a formula if it begins with '=', or with one of the others and is no number. The last
// four are full-width forms of the first four.
bool is_formula(std::string_view text) {
  constexpr std::u32string_view beginnings = U"=+-@\uFF1D\uFF0B\uFF0D\uFF20";
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  if (text.empty()) return false;
  const bool number = text.front() != '=' && text.size() > 1 && text.find_first_not_of("0123456789.", 1) == text.npos;
  return beginnings.find(take_character(text)) != beginnings.npos && !number;
}

void append(std::string& csv, std::string_view text) {
  csv += is_formula(text) ? "\"'" : "\"";
  for (const char c : visible(text)) csv.append(c == '"' ? 2 : 1, c);
  csv += "\",";
}

void append(std::string& csv, int64_t number) { csv.append(std::to_string(number)) += ','; }

}  // namespace

std::string json_line(Scan_file file) {
  std::vector<Node>& entries = file.document.find("ensembleList")->children;
  for (size_t i = 0; i < entries.size(); ++i) {
    // In front of the labels, so that their reader knows that they are text.
    std::vector<Node>& members = entries[i].children;
    std::erase_if(members, [](const Node& member) { return member.key == block_key; });
    members.insert(members.begin(), {.kind = Node::Kind::text,
                                     .key = std::string(block_key),
                                     .text = std::string(block_name(file.scan.entries[i].frequency))});
  }
  std::string json;
  append_json(json, file.document);
  return json + '\n';
}

std::string csv_head() {
  return "file,street_no,street,postal_code,city,country,floor,latitude,longitude,time,"
         "block,index,khz,rssi,snr,fic_quality,ensemble_country,station,kind,programme_type,service,component,"
         "encrypted\n";
}

std::string csv_lines(const Scan& scan) {
  const Location& at = scan.location;
  std::string place;
  for (const std::string& text : {scan.file, at.street_no, at.street, at.postal_code, at.city, at.country, at.floor,
                                  at.latitude, at.longitude, time_text(scan_time(scan))})
    append(place, std::string_view(text));
  std::string csv;
  for (const Entry& entry : scan.entries) {
    std::string block = place;
    append(block, block_name(entry.frequency));
    for (const int64_t number : {int64_t{entry.index}, int64_t{entry.frequency}, int64_t{entry.rssi},
                                 int64_t{entry.snr}, int64_t{entry.fic_quality}})
      append(block, number);
    append(block, country(entry));
    for (const Service& service : entry.services) {
      csv += block;
      append(csv, std::string_view(service.label));
      append(csv, std::string_view(service.data ? "data" : "audio"));
      append(csv, programme_type_name(service.programme_type));
      append(csv, int64_t{service.id});
      if (const Component* const component = main_component(service))
        append(csv, int64_t{component->id});
      else
        csv += ',';
      append(csv, std::string_view(service.encrypted ? "yes" : "no"));
      csv.back() = '\n';
    }
  }
  return csv;
}

}  // namespace survey
