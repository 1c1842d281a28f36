// SPDX-License-Identifier: GPL-3.0-or-later
// kelvo-watch: reception as it changes, on the full screen of a terminal or as JSON lines.
#include <clocale>
#include <cstdlib>
#include <exception>
#include <variant>

#include "live/sample.h"
#include "messages/messages.h"
#include "watch/lines.h"
#include "watch/options.h"
#include "watch/screen.h"

int main(int argc, char** argv) {
  std::setlocale(LC_ALL, "");
  std::setlocale(LC_NUMERIC, "C");
  try {
    const Options options = read_options(argc, argv);
    live::Sampler sampler;
    const live::Sample first = sampler.take();
    if (const auto* const failure = std::get_if<live::Failure>(&first.reading);
        failure != nullptr && failure->cause == live::Failure::Cause::no_link) {
      messages::print(failure->why);
      return EXIT_FAILURE;
    }
    if (options.json) return write_lines(options, sampler, first);
    run_screen(options, sampler, first);
    return EXIT_SUCCESS;
  } catch (const std::exception& error) {  // memory has run out
    messages::print(error);
    return EXIT_FAILURE;
  }
}
