// SPDX-License-Identifier: GPL-3.0-or-later
// The content of scan files as plain records, the same for every output.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace survey {

struct Component {
  uint32_t id = 0;
  unsigned transport = 0;  ///< TMID: 0 stream audio, 1 stream data, 2 FIDC, 3 packet data
  unsigned type = 0;       ///< ASCTy or DSCTy
  bool primary = false;
  bool encrypted = false;  ///< its CA flag
};

struct Service {
  uint32_t id = 0;
  bool data = false;            ///< a data service: `id` has 32 bits, otherwise 16
  unsigned programme_type = 0;  ///< 0 to 31, international table
  bool encrypted = false;       ///< a conditional access system (CAId) protects it, or the component to play
  std::string label{};          ///< UTF-8, without trailing blanks; may hold control characters: escape it on output
  std::vector<Component> components{};
};

/// The ensemble's time, UTC.
struct Time {
  unsigned year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
};

/// What was received at one entry of the chip's frequency list.
struct Entry {
  unsigned index = 0;        ///< entry of the list, what `kelvo -f` takes
  uint32_t frequency = 0;    ///< kHz; where the chip could not be read, that of the default list
  int rssi = 0;              ///< signal strength, dBµV
  int snr = 0;               ///< dB
  unsigned fic_quality = 0;  ///< 0 to 100
  bool valid = false;        ///< the chip found a DAB signal
  std::vector<Service> services{};
  std::optional<Time> time{};  ///< a time that exists
  bool measured = true;        ///< false: the scan has no result for this index, all values are 0
};

/// The eight answers, UTF-8 (a byte that is not becomes U+FFFD); any character may be in them.
struct Location {
  std::string street_no{}, street{}, postal_code{}, city{}, country{}, floor{}, latitude{}, longitude{};
};

/// One scan: one place of the antenna.
struct Scan {
  std::string file{};  ///< its name as given; with its number where the file has several scans
  Location location{};
  std::vector<Entry> entries{};  ///< 41, fewer if the file has been edited
};

/// Street, floor and city, where answered; otherwise the file's name. UTF-8, unescaped.
std::vector<std::string> place_parts(const Scan& scan);

/// The same in one line: "Main Street 12a, roof, Springfield".
std::string place_name(const Scan& scan);

/// The first ensemble time of a scan, null if none was received.
const Time* scan_time(const Scan& scan);

/// "2026-03-07 09:05 UTC", empty for null.
std::string time_text(const Time* time);

/// The component to play: the primary one with audio, or else the first with audio; without audio the primary one or
/// the first. Null if there is none.
const Component* main_component(const Service& service);

/// ISO 3166-1 code of the country whose data service names it, empty if no data service of `entry` does.
std::string_view country(const Entry& entry);

}  // namespace survey
