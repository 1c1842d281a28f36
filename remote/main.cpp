// SPDX-License-Identifier: GPL-3.0-or-later
// kelvo-remote: the radio as a web page.
#include <pthread.h>

#include <cerrno>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <thread>

#include "messages/messages.h"
#include "remote/access.h"
#include "remote/events.h"
#include "remote/options.h"
#include "remote/orders.h"
#include "remote/pairing.h"
#include "remote/radio.h"
#include "remote/server.h"
#include "remote/stations.h"
#include "remote/storage.h"
#include "survey/file/reader.h"

namespace {

using namespace remote;

// The program's files begin with its own name: the stations of the simulated board are none of a real one.
std::string own_file(const std::filesystem::path& folder, const char* ending) {
  return (folder / program_invocation_short_name).string() + ending;
}

// The key in the file; a new one, which the file keeps from now on, where there is none or the user wants it. Only a
// server can do with one that is not kept.
std::string stored_key(const std::filesystem::path& file, Options::Task task) {
  const auto is_ours = [](std::string_view text) { return is_key(text.substr(0, text.find('\n'))); };
  const std::string text = read_file(file).value_or("");
  if (task != Options::Task::new_key && is_ours(text)) return text.substr(0, text.find('\n'));
  std::string key = new_key();
  try {
    write_file(file, key + "\n", is_ours);
  } catch (const Storage_error& error) {
    if (task != Options::Task::serve) throw;
    messages::print(std::string(error.what()) + "; pairing lasts until the program ends");
  }
  return key;
}

Scans read_scans(const std::vector<std::string>& names) {
  Scans scans;
  for (const std::string& name : names)
    for (survey::Scan_file& file : survey::read_file(name)) scans.push_back(std::move(file.scan));
  return scans;
}

// The signals that end the program; blocked in all threads, they are waited for.
sigset_t ending_signals() {
  sigset_t signals{};
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&signals, signal);
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);
  std::signal(SIGPIPE, SIG_IGN);
  return signals;
}

void serve(Options& options, const std::filesystem::path& folder, const std::filesystem::path& key_file,
           const std::string& key) {
  const sigset_t signals = ending_signals();
  Orders orders;
  Events events;
  Stations stations(read_scans(options.files));
  Radio radio({.last = own_file(folder, ".last"), .scan = own_file(folder, ".scan.json")}, options.interval, orders,
              events, stations);
  if (const live::Outcome failure = radio.open()) throw Listen_error(failure->why);
  Listener listener(options);
  Access access(key_file, key, options.hosts);
  const Server server(listener, {.access = access, .orders = orders, .events = events, .stations = stations});
  print_start(options, key);
  std::thread board([&] { radio.run(); });
  int signal = 0;
  while (sigwait(&signals, &signal) != 0) {
  }
  orders.end();
  board.join();
}

}  // namespace

int main(int argc, char** argv) {
  std::setlocale(LC_CTYPE, "");
  std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
  messages::fill_standard_streams();
  try {
    Options options = read_options(argc, argv);
    const std::filesystem::path folder = state_folder();
    const std::filesystem::path key_file = own_file(folder, ".key");
    const std::string key = stored_key(key_file, options.task);
    if (options.task == Options::Task::serve)
      serve(options, folder, key_file, key);
    else
      print_pairing(options, key);
    return EXIT_SUCCESS;
  } catch (const survey::File_error& error) {
    messages::refuse(error.what());
  } catch (const std::exception& error) {
    messages::print(error.what());
    return EXIT_FAILURE;
  }
}
