// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/sweep/texts.h"

#include <filesystem>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "tests/support.h"

namespace {

// A line without the parts that differ from run to run: numbers, bars of the scan, rows of bytes.
std::string shape(const std::string& line) {
  if (line.size() >= 3 && line.size() % 3 == 0 && line.find_first_not_of("0123456789abcdef ") == std::string::npos)
    return "bytes";
  std::string shape;
  for (char c : line) {
    if (c >= '0' && c <= '9') c = '#';
    if (c != '-' && (c != '#' || shape.empty() || shape.back() != '#')) shape += c;
  }
  return shape;
}

// Labels may hold any byte, line ends and quotes too.
std::string without_labels(std::string text) {
  constexpr std::string_view key = "\"Label\": \"";
  for (size_t at = 0; (at = text.find(key, at)) != std::string::npos;) {
    at += key.size();
    text.replace(at, 16, "label");
  }
  return text;
}

void learn(std::set<std::string>& known, const std::string& text) {
  std::istringstream all(without_labels(text));
  for (std::string line; std::getline(all, line);) known.insert(shape(line));
}

// In a session, output and commands are indented.
void learn_session(std::set<std::string>& known, const std::string& text) {
  std::istringstream all(text);
  for (std::string line; std::getline(all, line);)
    if (line.starts_with("  ") && line[2] != '$' && line[2] != '>') learn(known, line.substr(2));
}

// Every line that the program can print, taken from the other tests (which include some harmless lines of the trace).
std::set<std::string> known_lines() {
  std::set<std::string> known{"bytes"};
  const std::filesystem::path tests = SOURCE_DIR "/tests";
  for (const auto& file : std::filesystem::directory_iterator(tests / "expected"))
    if (file.is_regular_file()) learn(known, read_file(file.path()));
  for (const char* const session : {"boot.t", "options.t", "receive.t", "reports.t"})
    learn_session(known, read_file(tests / "sessions" / session));
  return known;
}

std::string unknown_line(const std::string& text) {
  static const std::set<std::string> known = known_lines();
  std::istringstream all(text);
  for (std::string line; std::getline(all, line);)
    if (!known.contains(shape(line))) return line;
  return "";
}

}  // namespace

std::string wrong_in_output(const std::string& output) {
  const std::string text = without_labels(output);
  if (const std::string line = unknown_line(text); !line.empty()) return "unknown line \"" + line + "\"";
  const size_t json = text.find("\n\"");
  return json == std::string::npos || nlohmann::json::accept("{" + text.substr(json) + "}") ? "" : "malformed JSON";
}

std::string wrong_in_scan_file(const std::string& file) {
  return nlohmann::json::accept(without_labels(file)) ? "" : "malformed scan file";
}
