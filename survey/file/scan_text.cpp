// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/file/scan_text.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>
#include <utility>

#include "survey/text/text.h"

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

// Where the answer on this line begins, if there is one: behind its key, the colon and the quote.
std::optional<size_t> answer_start(std::string_view line) {
  std::string_view rest = line;
  const bool has_key = std::ranges::any_of(answer_keys, [&](std::string_view key) { return take(rest, key); });
  if (!has_key || !take(rest, ":") || !take(rest, "\"")) return {};
  return line.size() - rest.size();
}

// An answer ends at the last quote of its line.
void append_answer(std::string& json, std::string_view line, size_t start, bool all_raw) {
  size_t end = line.find_last_not_of(" \t\r\n");
  if (end > start && line[end] == ',') --end;
  const std::string_view answer = line.substr(start, end - start);
  if (end < start || line[end] != '"' || (!all_raw && nlohmann::json::accept('"' + std::string(answer) + '"'))) {
    json.append(line);
  } else {
    json.append(line.substr(0, start - 1))
        .append(nlohmann::json(valid_utf8(answer)).dump())
        .append(line.substr(end + 1));
  }
}

}  // namespace

std::string json_text(std::string_view file) {
  std::string json;
  json.reserve(file.size() + file.size() / 8);
  const bool all_raw = file.starts_with(scan_beginning);
  while (!file.empty()) {
    const std::string_view line = file.substr(0, std::min(file.find('\n'), file.size() - 1) + 1);
    const std::optional<size_t> answer = answer_start(line);
    if (!answer && line.find("\"ensembleList\"") != line.npos) break;
    if (answer)
      append_answer(json, line, *answer, all_raw);
    else
      json.append(line);
    file.remove_prefix(line.size());
  }
  append_ensembles(json, file, all_raw);
  return json;
}

}  // namespace survey
