// SPDX-License-Identifier: GPL-3.0-or-later
// Messages: what a hostile name cannot do to a terminal.
#include "messages/messages.h"

#include <gtest/gtest.h>

namespace {

TEST(Messages, AreOneLineWithoutControlCharacters) {
  const struct {
    std::string text;
    std::string line;
  } cases[] = {
      {"/dev/spidev0.0: No such file", "/dev/spidev0.0: No such file"},
      {"a\nb\x1b[8m\x7f~", "a?b?[8m?~"},
      {std::string("a\0b", 3), "a?b"},
      {"Stra\xC3\x9F"
       "e \xC2\xA0\xC2\x9B"
       "31m",
       "Stra\xC3\x9F"
       "e \xC2\xA0??31m"},
      {std::string(1000, 'x'), std::string(1000, 'x')},
      {std::string(7'000'000, 'x'), std::string(1000, 'x') + "..."},
      {std::string(999, 'x') + "\xC3\xBC"
                               "y",
       std::string(999, 'x') + "..."},
  };
  for (const auto& c : cases) EXPECT_EQ(messages::one_line(c.text), c.line);
}

}  // namespace
