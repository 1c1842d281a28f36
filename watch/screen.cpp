// SPDX-License-Identifier: GPL-3.0-or-later
// The received signal on the full screen of a terminal: its keys, its signals, its loop.
#include "watch/screen.h"

#include <bcm2835.h>
#include <langinfo.h>
#include <ncurses.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <stdexcept>

#include "live/sample.h"
#include "watch/layout.h"

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr auto key_poll = 25ms;  // a key, a beep and a new size of the window wait no longer

volatile std::sig_atomic_t ended_by = 0;

void end(int signal) { ended_by = signal; }

// The terminal's full screen, until the object ends.
class Full_screen {
 public:
  Full_screen() : screen_(newterm(nullptr, stdout, stdin)) {
    if (screen_ == nullptr) throw std::runtime_error("the terminal is unknown (TERM); --json needs none");
    cbreak();
    noecho();
    nodelay(stdscr, TRUE);
    keypad(stdscr, TRUE);
    curs_set(0);
    // After newterm, whose own handlers end the program at once, maybe in the middle of a command to the chip.
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) std::signal(signal, end);
  }
  Full_screen(const Full_screen&) = delete;
  Full_screen& operator=(const Full_screen&) = delete;
  ~Full_screen() {
    endwin();
    delscreen(screen_);
  }

 private:
  SCREEN* screen_;
};

// The time from one beep to the next: two seconds at an SNR of 0 dB, an eighth of a second from 25 dB on. Nothing
// without a signal.
std::optional<Clock::duration> beep_period(const live::Sample& sample) {
  constexpr double slowest_hz = 0.5, fastest_hz = 8, fastest_snr_db = 25;
  const std::optional<live::Values> values = live::values(sample);
  if (!values || !has_signal(sample)) return std::nullopt;
  const double share = std::clamp((*values)[static_cast<size_t>(live::Measure::snr)] / fastest_snr_db, 0.0, 1.0);
  return std::chrono::duration_cast<Clock::duration>(
      std::chrono::duration<double>(1 / (slowest_hz + share * (fastest_hz - slowest_hz))));
}

void change_interval(std::chrono::milliseconds& interval, bool longer) {
  constexpr std::chrono::milliseconds steps[] = {100ms, 200ms, 500ms, 1s, 2s, 5s, 10s, 30s, 60s};
  if (longer) {
    const auto* const next = std::ranges::upper_bound(steps, interval);
    if (next != std::end(steps)) interval = *next;
  } else {
    const auto* const here = std::ranges::lower_bound(steps, interval);
    if (here != std::begin(steps)) interval = *std::prev(here);
  }
}

// @return false: the user ends the program
bool take_key(int key, View& view) {
  if (key == ' ') view.history.mark();
  if (key == '+' || key == '-') change_interval(view.interval, key == '+');
  if (key == 'b') view.beep = !view.beep;
  return key != 'q';
}

Abilities abilities() {
  const char* const no_colour = std::getenv("NO_COLOR");
  const Abilities able{.unicode = std::strcmp(nl_langinfo(CODESET), "UTF-8") == 0,
                       .colour = has_colors() && (no_colour == nullptr || *no_colour == '\0')};
  if (able.colour) prepare_colours();
  return able;
}

// Waits for the next sample; meanwhile the keys and the beep work. @return false: the user ends the program
bool wait(View& view, const Abilities& able, Clock::time_point& beeped) {
  while (Clock::now() < view.sample.moment + view.interval) {
    bcm2835_delay(key_poll.count());
    for (int key = getch(); key != ERR; key = getch()) {
      if (!take_key(key, view)) return false;
      draw(view, able);
    }
    const std::optional<Clock::duration> period = beep_period(view.sample);
    if (view.beep && period && Clock::now() >= beeped + *period) {
      beep();
      beeped = Clock::now();
    }
    if (ended_by != 0) return false;
  }
  return true;
}

}  // namespace

void run_screen(const Options& options, live::Sampler& sampler, const live::Sample& sample) {
  View view{.sample = sample, .interval = options.interval, .beep = options.beep};
  {
    const Full_screen screen;
    const Abilities able = abilities();
    Clock::time_point beeped{};
    for (uint64_t taken = 1;; ++taken) {
      view.history.add(view.sample);
      draw(view, able);
      if (taken == options.count || !wait(view, able, beeped)) break;
      view.sample = sampler.take();
    }
  }
  if (ended_by == 0) return;
  std::signal(ended_by, SIG_DFL);
  std::raise(ended_by);
}
