// SPDX-License-Identifier: GPL-3.0-or-later
// What table, page and picture say: the places, the blocks with a signal, and notes on the rest.
#pragma once

#include <string>
#include <vector>

#include "survey/file/comparison.h"

namespace survey {

/// One column of the comparison. Text from files is not escaped, but has no control characters.
struct Place {
  std::string name;        ///< "Main Street 12a, roof, Springfield"
  std::string short_name;  ///< without the parts that all places share
  std::string file;        ///< empty unless another place has the same name
  std::string time;  ///< the ensembles' time, the first that was received: "2026-03-07 09:05 UTC"; empty if none was
  std::string short_time;  ///< "03-07 09:05"
  std::string summary;     ///< "9 ensembles, 92 services"
  std::string verdict;     ///< "best for 5 blocks"; empty if there is no other place
};

/// "No signal: 5A, 5B."
struct Note {
  std::string head;
  std::vector<std::string> items;  ///< without control characters, not escaped

  [[nodiscard]] std::string text() const;
};

struct Chart {
  std::string title;
  std::vector<Place> places;
  std::vector<Row> rows;  ///< the blocks with a signal at one place or more

  std::vector<Note> quiet;  ///< the other blocks: without a signal, and not measured
  std::vector<Note> alone;  ///< of several places, the stations that one of them alone receives
};

Chart chart(const std::vector<Scan>& scans, const std::vector<Station>& stations);

/// The place's figures of a row in words: "52 dBµV, SNR 21 dB, received well, 12 services, best place, +8 dB".
std::string in_words(const Row& row, size_t place);

/// The figures of an entry; empty where they mean nothing: SNR without a DAB signal, services without a list of them.
std::string snr_figure(const Entry& entry);
std::string service_figure(const Entry& entry);

/// Numbers of places, counted from 1: "1, 3".
std::string place_numbers(const std::vector<size_t>& places);

/// What a legend says of the mark of the best place.
std::string best_explained(size_t places);

}  // namespace survey
