// SPDX-License-Identifier: GPL-3.0-or-later
// Samples as JSON lines on standard output.
#include "watch/lines.h"

#include <bcm2835.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "messages/messages.h"

namespace {

// Each line is flushed: it may be the last one before the reader needs it.
bool write(const std::string& line) {
  return std::fwrite(line.data(), 1, line.size(), stdout) == line.size() && std::fflush(stdout) == 0;
}

}  // namespace

int write_lines(const Options& options, live::Sampler& sampler, live::Sample sample) {
  std::signal(SIGPIPE, SIG_IGN);
  for (uint64_t taken = 1;; ++taken) {
    if (!write(live::to_json(sample) + '\n')) {
      if (errno == EPIPE) return EXIT_SUCCESS;  // the reader has what it wants
      messages::print(std::string("standard output cannot be written: ") + std::strerror(errno));
      return EXIT_FAILURE;
    }
    if (taken == options.count) return EXIT_SUCCESS;
    bcm2835_delay(static_cast<unsigned>(options.interval.count()));
    sample = sampler.take();
  }
}
