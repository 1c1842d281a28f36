// SPDX-License-Identifier: GPL-3.0-or-later
#include "remote/events.h"

#include <gtest/gtest.h>

#include <array>

namespace remote {
namespace {

struct Events_test : testing::Test {
  Events events;
  int slept = 0, woken = 0;

  Events::Listener* listen() {
    return events.add([this] { slept += 1; }, [this] { woken += 1; });
  }
  std::optional<std::string> take(Events::Listener* listener, size_t most = Events::most_waiting) {
    std::string text(most, ' ');
    const std::optional<size_t> length = events.take(*listener, text);
    if (!length) return std::nullopt;
    return text.substr(0, *length);
  }
};

TEST_F(Events_test, NewcomerGetsTheStateThenWhatIsSentInPieces) {
  events.send_state("1");
  events.send("sample", "missed");
  Events::Listener* const listener = listen();
  events.send("sample", "{}");
  EXPECT_EQ(take(listener), "event: state\ndata: 1\n\nevent: sample\ndata: {}\n\n");
  events.send_state("2");
  EXPECT_EQ(take(listener, 9), "event: st");
  EXPECT_EQ(take(listener), "ate\ndata: 2\n\n");
  EXPECT_EQ(slept, 0);
}

TEST_F(Events_test, ListenerSleepsOnceAndIsWokenOnce) {
  Events::Listener* const listener = listen();
  EXPECT_EQ(take(listener), "");
  EXPECT_EQ(slept, 1);
  events.send("sample", "1");
  events.send("sample", "2");
  EXPECT_EQ(woken, 1);
  EXPECT_EQ(take(listener), "event: sample\ndata: 1\n\nevent: sample\ndata: 2\n\n");
  EXPECT_EQ(take(listener), "");
  events.end();
  EXPECT_EQ(woken, 2);
  EXPECT_FALSE(take(listener));
}

TEST_F(Events_test, SlowListenerIsDroppedAndNoOther) {
  Events::Listener* const slow = listen();
  Events::Listener* const quick = listen();
  const std::string piece(1000, 'x');
  for (size_t sent = 0; sent <= Events::most_waiting; sent += piece.size()) {
    events.send("sample", piece);
    EXPECT_EQ(take(quick)->size(), piece.size() + 22);
  }
  EXPECT_FALSE(take(slow));
  EXPECT_EQ(take(quick), "");
}

TEST_F(Events_test, ThirtyTwoListenAndTheNextOneWhenOneLeaves) {
  std::array<Events::Listener*, Events::most_listeners> all{};
  for (auto& one : all) one = listen();
  EXPECT_EQ(listen(), nullptr);
  events.remove(all[5]);
  EXPECT_EQ(events.size(), Events::most_listeners - 1);
  EXPECT_NE(listen(), nullptr);
}

}  // namespace
}  // namespace remote
