// SPDX-License-Identifier: GPL-3.0-or-later
// kelvo-survey: scan files for people and other programs.
#include <fcntl.h>
#include <unistd.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <functional>
#include <iostream>
#include <string>
#include <vector>

#include "messages/messages.h"
#include "survey/file/reader.h"
#include "survey/file/search.h"
#include "survey/options.h"
#include "survey/output/cells.h"
#include "survey/output/exports.h"
#include "survey/output/page.h"
#include "survey/output/picture.h"
#include "survey/output/spool.h"
#include "survey/output/table.h"
#include "survey/text/text.h"

namespace {

using namespace survey;

/// The scans in a file. Parts that are missing are no reason to refuse it: they may have been taken out on purpose.
std::vector<Scan_file> read(const std::string& name) {
  std::vector<Scan_file> files = read_file(name);
  for (const Scan_file& file : files)
    if (!file.gaps.empty()) messages::print(visible(file.scan.file + ": incomplete: " + file.gaps));
  return files;
}

std::vector<Scan> read_all(const std::vector<std::string>& names) {
  std::vector<Scan> scans;
  for (const std::string& name : names)
    for (Scan_file& file : read(name)) scans.push_back(std::move(file.scan));
  return scans;
}

void print_each(const Options& options, const std::string& head, const std::function<std::string(Scan_file)>& convert) {
  Spool spool;
  spool.add(head);
  for (const std::string& name : options.files)
    for (Scan_file& file : read(name)) spool.add(convert(std::move(file)));
  spool.print(std::cout);
}

int fail(const std::string& complaint, const Terminal& terminal) {
  messages::print(printable(complaint, terminal));
  return EXIT_FAILURE;
}

// Standard output gets options and numbers alone: it becomes part of a command line.
int play(const Options& options) {
  const std::vector<Scan> scans = read_all(options.files);
  const std::vector<Station> all = stations(scans);
  const std::vector<Station> found = stations_called(options.name, all);
  const Terminal terminal = standard_output();
  if (found.empty()) return fail("no audio service has \"" + options.name + "\" in its name", terminal);
  if (found.size() > 1) {
    fail("several stations have \"" + options.name + "\" in their names:", terminal);
    write_choice(std::cerr, found, all, terminal);
    return EXIT_FAILURE;
  }
  const Service& service = *found.front().service;
  const std::string reason = unplayable(*found.front().entry, service);
  if (!reason.empty()) return fail("no options play \"" + service.label + "\": " + reason, terminal);
  if (service.encrypted) messages::print(printable("\"" + service.label + "\" is encrypted", terminal));
  std::cout << play_options(*found.front().entry, service) << '\n';
  return EXIT_SUCCESS;
}

int run(const Options& options) {
  switch (options.output) {
    case Output::table:
      write_table(std::cout, read_all(options.files), standard_output());
      break;
    case Output::stations: {
      const std::vector<Scan> scans = read_all(options.files);
      write_stations(std::cout, stations(scans), scans, standard_output());
      break;
    }
    case Output::html:
      write_page(std::cout, read_all(options.files));
      break;
    case Output::svg:
      write_picture(std::cout, read_all(options.files));
      break;
    case Output::json:
      print_each(options, "", [](Scan_file file) { return json_line(std::move(file)); });
      break;
    case Output::csv:
      print_each(options, csv_head(), [](const Scan_file& file) { return csv_lines(file.scan); });
      break;
    case Output::play:
      return play(options);
  }
  return EXIT_SUCCESS;
}

}  // namespace

int main(int argc, char** argv) {
  std::setlocale(LC_CTYPE, "");
  try {
    const Options options = read_options(argc, argv);
    // If it is closed, the next file to be opened gets its number and would receive the output.
    if (fcntl(STDOUT_FILENO, F_GETFD) == -1) throw File_error("standard output", "is closed");
    const int status = run(options);
    if (!std::cout.flush()) throw File_error("standard output", "cannot be written");
    return status;
  } catch (const std::exception& error) {
    messages::print(error);
    return EXIT_FAILURE;
  }
}
