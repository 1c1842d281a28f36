// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/scan_text.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>
#include <utility>

#include "survey/text.h"

namespace survey {

namespace {

constexpr std::string_view scan_beginning =
    "{\"content\": \"FullStationScan\",\n\"FrequencyRegion\": \"Europe\",\n\"Location\": {\n\"StreetNo\": \"";
constexpr std::string_view answer_keys[] = {"\"StreetNo\"", "\"Street\"", "\"PostalCode\"",   "\"City\"",
                                            "\"Country\"",  "\"Floor\"",  "\"gps_latitude\"", "\"gps_longitude\""};
constexpr std::string_view label_key = "\"Label\"";
constexpr size_t label_length = 16;

void skip_space(std::string_view& text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
}

// Takes `expected` from the beginning of `text`, with the white space before it.
bool take(std::string_view& text, std::string_view expected) {
  skip_space(text);
  if (!text.starts_with(expected)) return false;
  text.remove_prefix(expected.size());
  return true;
}

// One character for each byte. The line feeds that were in the label follow it, so that lines keep their numbers.
void append_raw_label(std::string& json, std::string_view label) {
  static constexpr char digits[] = "0123456789abcdef";
  json.append("\"").append(raw_label_key).append("\":\"");
  for (const char c : label) {
    const auto byte = static_cast<uint8_t>(c);
    if (byte >= 0x80) {
      append_character(json, byte);
    } else if (byte < 0x20 || byte == '"' || byte == '\\') {
      json.append("\\u00") += digits[byte >> 4];
      json += digits[byte & 0xF];
    } else {
      json += c;
    }
  }
  json += '"';
  json.append(static_cast<size_t>(std::ranges::count(label, '\n')), '\n');
}

// The label that is raw where `text` begins behind its key, and what follows it.
std::optional<std::pair<std::string_view, std::string_view>> raw_label(std::string_view text, bool all_raw) {
  if (!take(text, ":") || !take(text, "\"") || text.size() <= label_length || text[label_length] != '"') return {};
  const std::string_view after = text.substr(label_length + 1);
  std::string_view next = after;
  if (!all_raw && !(take(next, ",") && take(next, "\"ComponentList\""))) return {};
  return std::pair(text.substr(0, label_length), after);
}

// Everything from the list of ensembles on.
void append_ensembles(std::string& json, std::string_view text, bool all_raw) {
  for (size_t key = text.find(label_key); key != text.npos; key = text.find(label_key)) {
    json.append(text.substr(0, key));
    text.remove_prefix(key + label_key.size());
    if (const auto label = raw_label(text, all_raw)) {
      append_raw_label(json, label->first);
      text = label->second;
    } else {
      json.append(label_key);
    }
  }
  json.append(text);
}

// A line before the list of ensembles. An answer is everything between the quote behind its key and the last quote.
void append_line(std::string& json, std::string_view line, bool all_raw) {
  std::string_view rest = line;
  const bool is_answer = std::ranges::any_of(answer_keys, [&](std::string_view key) { return take(rest, key); });
  if (is_answer && take(rest, ":") && take(rest, "\"")) {
    const size_t start = line.size() - rest.size();
    size_t end = line.find_last_not_of(" \t\r\n");
    if (end > start && line[end] == ',') --end;
    if (end >= start && line[end] == '"') {
      const std::string_view answer = line.substr(start, end - start);
      if (all_raw || !nlohmann::json::accept('"' + std::string(answer) + '"')) {
        json.append(line.substr(0, start - 1)).append(nlohmann::json(valid_utf8(answer)).dump());
        json.append(line.substr(end + 1));
        return;
      }
    }
  }
  json.append(line);
}

}  // namespace

std::string json_text(std::string_view file) {
  std::string json;
  json.reserve(file.size() + file.size() / 8);
  const bool all_raw = file.starts_with(scan_beginning);
  while (!file.empty()) {
    std::string_view next = file;
    if (take(next, "\"ensembleList\"") || file.find('\n') == file.npos) break;
    const std::string_view line = file.substr(0, file.find('\n') + 1);
    append_line(json, line, all_raw);
    file.remove_prefix(line.size());
  }
  append_ensembles(json, file, all_raw);
  return json;
}

}  // namespace survey
