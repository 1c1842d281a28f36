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
  unsigned transport = 0;  ///< TMID: 0 stream audio, 1 stream data, 3 packet data
  unsigned type = 0;       ///< ASCTy or DSCTy
  bool primary = false;
};

struct Service {
  uint32_t id = 0;
  bool data = false;            ///< a data service: `id` has 32 bits, otherwise 16
  unsigned programme_type = 0;  ///< 0 to 31, international table
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
};

/// The eight answers, UTF-8 (a byte that is not becomes U+FFFD); any character may be in them.
struct Location {
  std::string street_no{}, street{}, postal_code{}, city{}, country{}, floor{}, latitude{}, longitude{};
};

/// One scan file: one place of the antenna.
struct Scan {
  std::string file{};  ///< its name as given
  Location location{};
  std::vector<Entry> entries{};  ///< 41 at most
};

enum class Reception {
  no_signal,
  no_dab,    ///< 20 dBµV and more, but no DAB signal
  too_weak,  ///< a DAB signal with a FIC quality below 30: a scan does not ask for its services
  poor,      ///< received; these three differ by SNR: below 8 dB,
  fair,      ///< 8 to 15 dB,
  good,      ///< 16 dB and more
};

Reception reception(const Entry& entry);

/// One row of the comparison: a frequency, and what each scan received there.
struct Row {
  uint32_t frequency = 0;           ///< kHz
  std::vector<const Entry*> cells;  ///< one per scan, null where a scan has no such entry; point into the scans
  std::optional<size_t> best;       ///< the scan that receives it best: highest reception, then FIC quality, SNR,
                                    ///< RSSI; the first of equals. Empty if none receives an ensemble, or
                                    ///< there is one scan alone.
};

/// Whether there is a signal in any of the cells.
bool has_signal(const Row& row);

/// One row per frequency that occurs in `scans`, ascending.
std::vector<Row> rows(const std::vector<Scan>& scans);

/// A service of one block, in whichever scans it was received.
struct Station {
  const Service* service = nullptr;  ///< as the best scan has it
  const Entry* entry = nullptr;      ///< where the best scan received it
  size_t best = 0;                   ///< that scan
  std::vector<size_t> received;      ///< the scans that have it, ascending
};

/// One station per service and frequency, ordered by frequency, then by the chip's order of services. Point into
/// `scans`.
std::vector<Station> stations(const std::vector<Scan>& scans);

/// Heading of a scan: street, floor and city where answered; its file's name otherwise. UTF-8, unescaped.
std::string place_name(const Scan& scan);

/// The first ensemble time of a scan: "2026-03-07 09:05 UTC". Empty if none was received.
std::string time_text(const Scan& scan);

/// Where the bars of all outputs end, dBµV; they begin at 0.
constexpr int signal_scale_end = 80;

/// The component to play: the first with audio, or else the first. Null if there is none.
const Component* main_component(const Service& service);

/// The options that play the service's main component: "-f 33 -e 17333 -c 12 -p".
/// Empty if nothing can play it: `kelvo` takes no index 0, no id 0 and no data service.
std::string play_options(const Entry& entry, const Service& service);

/// ISO 3166-1 code of the country whose data service names it, empty if no data service of `entry` does.
std::string_view country(const Entry& entry);

}  // namespace survey
