// SPDX-License-Identifier: GPL-3.0-or-later
// kelvo-survey: scan files for people and other programs.
#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <functional>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "survey/options.h"
#include "survey/output/cells.h"
#include "survey/output/exports.h"
#include "survey/output/page.h"
#include "survey/output/picture.h"
#include "survey/output/table.h"
#include "survey/file/reader.h"
#include "survey/text/text.h"

namespace {

using namespace survey;

Scan_file read(const std::string& name) { return read_scan(read_bytes(name), name); }

std::vector<Scan> read_all(const std::vector<std::string>& names) {
  std::vector<Scan> scans;
  scans.reserve(names.size());
  for (const std::string& name : names) scans.push_back(read(name).scan);
  return scans;
}

/// Text that is printed when all of it is there: a temporary file, which memory need not hold.
class Held_back {
 public:
  Held_back() : file_(std::tmpfile(), [](std::FILE* file) { return std::fclose(file); }) { check(file_ != nullptr); }

  void add(const std::string& text) { check(std::fwrite(text.data(), 1, text.size(), file_.get()) == text.size()); }

  void print() {
    std::array<char, 65536> piece{};
    std::rewind(file_.get());
    while (const size_t size = std::fread(piece.data(), 1, piece.size(), file_.get()))
      std::cout.write(piece.data(), static_cast<std::streamsize>(size));
    check(std::ferror(file_.get()) == 0);
  }

 private:
  static void check(bool good) {
    if (!good) throw File_error("temporary file", std::strerror(errno));
  }

  std::unique_ptr<std::FILE, int (*)(std::FILE*)> file_;
};

void print_each(const Options& options, const std::string& head, const std::function<std::string(Scan_file)>& convert) {
  Held_back text;
  text.add(head);
  for (const std::string& name : options.files) text.add(convert(read(name)));
  text.print();
}

// Prints numbers alone, since what is printed becomes part of a command line.
int play(const Options& options) {
  const std::vector<Scan> scans = read_all(options.files);
  const std::vector<Station> found = stations_called(options.name, scans);
  std::string answer;
  std::string complaint;
  if (found.empty()) complaint = "no audio service has \"" + options.name + "\" in its name";
  if (found.size() > 1) complaint = "several stations have \"" + options.name + "\" in their names:";
  if (found.size() == 1) {
    answer = play_options(*found.front().entry, *found.front().service);
    if (answer.empty()) complaint = "kelvo has no options that play \"" + found.front().service->label + "\"";
  }
  if (complaint.empty()) {
    std::cout << answer << '\n';
    return EXIT_SUCCESS;
  }
  const Terminal terminal = standard_output();
  std::cerr << "kelvo-survey: " << shown(complaint, terminal) << '\n';
  if (found.size() > 1) write_stations(std::cerr, found, scans, terminal);
  return EXIT_FAILURE;
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
    // The next file to be opened would take its number, and the output.
    if (fcntl(STDOUT_FILENO, F_GETFD) == -1) throw File_error("standard output", "is closed");
    const int status = run(options);
    if (!std::cout.flush()) throw File_error("standard output", "cannot be written");
    return status;
  } catch (const std::exception& error) {
    std::cerr << "kelvo-survey: " << error.what() << '\n';
    return EXIT_FAILURE;
  }
}
