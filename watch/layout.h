// SPDX-License-Identifier: GPL-3.0-or-later
// What the full screen shows, drawn into the window of ncurses.
#pragma once

#include <chrono>

#include "live/history.h"
#include "live/sample.h"

/// Everything that the screen shows.
struct View {
  live::Sample sample{};
  live::History history{};
  std::chrono::milliseconds interval{};
  bool beep = false;
};

/// What the terminal and its locale can show.
struct Abilities {
  bool unicode = false;
  bool colour = false;
};

/// Whether the chip finds a DAB signal, or an FM station.
bool has_signal(const live::Sample& sample);

/// Draws all of it for the window's present size, which may be as small as 40 x 12.
void draw(const View& view, const Abilities& abilities);

/// Defines the colours of reception. After newterm, where the terminal has colours.
void prepare_colours();
