// SPDX-License-Identifier: GPL-3.0-or-later
#include "remote/state.h"

#include <gtest/gtest.h>

namespace remote {
namespace {

live::Sample dab(uint8_t index, uint32_t khz) {
  return {.reading = live::Dab_signal{.index = index, .frequency = khz}};
}

struct State_test : testing::Test {
  State state;
  Stations stations{Scans{}};

  void play() {
    state.set_mode(Mode::dab);
    state.set_tuning(33);
    state.set_playing({.service_id = 17333, .component = 12, .index = 33});
  }
  std::string playing() {
    const std::string json = to_json(state, stations);
    const size_t begin = json.find("\"playing\":") + 10;
    return json.substr(begin, json.find(",\"volume\"") - begin);
  }
};

TEST_F(State_test, ServiceIsKnownUntilTheTuningChangesBehindItsBack) {
  play();
  EXPECT_FALSE(state.notice(dab(33, 227360)));
  EXPECT_FALSE(state.notice({.reading = live::Failure{}}));
  EXPECT_EQ(playing(), R"({"name":"service 17333","service_id":17333,"component":12,"index":33,"block":"12C"})");
  EXPECT_TRUE(state.notice(dab(7, 187072)));
  EXPECT_EQ(playing(), R"("unknown")");
  EXPECT_FALSE(state.notice(dab(7, 187072)));
}

TEST_F(State_test, SilenceIsKnownUntilTheTuningChanges) {
  state.set_mode(Mode::dab);
  EXPECT_FALSE(state.notice(dab(0, 0)));
  EXPECT_EQ(playing(), "null");
  EXPECT_TRUE(state.notice(dab(0, 174928)));
  EXPECT_EQ(playing(), R"("unknown")");
}

TEST_F(State_test, BrownOutAndAnotherApplicationEndTheService) {
  play();
  state.volume = 5;
  EXPECT_TRUE(state.notice({.reading = live::Not_booted{}}));
  EXPECT_EQ(to_json(state, stations), R"({"doing":null,"mode":"off","playing":null,"volume":null,"stations":0})");
  play();
  EXPECT_TRUE(state.notice({.reading = live::Fm_signal{.frequency = 98700}}));
  EXPECT_EQ(to_json(state, stations), R"({"doing":null,"mode":"FM","playing":null,"volume":null,"stations":0})");
}

TEST_F(State_test, StartsWithoutKnowledge) {
  EXPECT_EQ(playing(), R"("unknown")");
  EXPECT_TRUE(state.notice(dab(33, 227360)));
  EXPECT_EQ(playing(), R"("unknown")");
}

}  // namespace
}  // namespace remote
