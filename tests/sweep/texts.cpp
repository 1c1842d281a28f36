// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/sweep/texts.h"

#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "tests/support.h"

namespace {

// A line without what differs from run to run: numbers, bars of the scan, rows of bytes.
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

// Every line that the program has: its reports as the other tests expect them, and its messages.
std::set<std::string> known_lines() {
  std::set<std::string> known{"bytes", "##"};
  for (const char* const report : {"digrad_status.txt", "digrad_status.json", "event_status.txt", "service_list.json",
                                   "chip_info.txt", "scan.txt", "scan.json"})
    learn(known, expected(report));
  for (const std::string image : {"Bootloader", "FMHD", "DAB", "TDMB or data only DAB", "FMHD Demod", "AMHD",
                                  "AMHD Demod", "DAB Demod", "unknown"})
    learn(known, "Firmware image running the sysstate CMD:    " + image);
  learn(known, R"(Starting...kelvo DAB radio client
kelvo 1.0.0
Please note:
kelvo is free software under the GNU General Public License, version 3 or later;
you may use, share and change it under its terms: <https://www.gnu.org/licenses/>.
It comes with NO WARRANTY, to the extent permitted by law.

SPI bus enabled.
Could not power up the Si468x
Patch not transmitted successfully
Firmware not transmitted successfully
Boot up failed
Boot up successful
Si468x is not booted up, no firmware loaded. Please use the command boot first.
Tuned.
Could not tune to frequency
Could not start service
Setting volume to 50
Si468x shut down
2016-3-7T9:5:0Z
)");
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
