// SPDX-License-Identifier: GPL-3.0-or-later
#include "remote/orders.h"

#include <gtest/gtest.h>

#include <thread>

namespace remote {
namespace {

using namespace std::chrono_literals;

TEST(Orders, AreReadFromExactlyTheirMembers) {
  const std::pair<const char*, Order> texts[] = {
      {R"({"order":"play","service_id":4294967295,"component":0,"index":255})", Play{4294967295, 0, 255}},
      {R"( {"index": 33, "component": 12, "service_id": 17333, "order": "play"} )", Play{17333, 12, 33}},
      {R"({"order":"stop"})", Stop{}},
      {R"({"order":"volume","level":63})", Volume{63}},
      {R"({"order":"find"})", Find{}},
      {R"({"order":"cancel"})", Cancel{}},
      {R"({"order":"boot","mode":"DAB"})", Boot{Mode::dab}},
      {R"({"order":"boot","mode":"FM"})", Boot{Mode::fm}},
      {R"({"order":"seek","direction":"up"})", Seek{true}},
      {R"({"order":"seek","direction":"down"})", Seek{false}},
  };
  for (const auto& [text, order] : texts) {
    EXPECT_EQ(parse_order(text), order) << text;
    EXPECT_EQ(parse_order(to_json(order)), order) << text;
  }
  for (const char* const text : {"",
                                 "null",
                                 "[]",
                                 "{}",
                                 R"("stop")",
                                 R"({"order":"stop")",
                                 R"({"order":"stop"} x)",
                                 R"({"order":"halt"})",
                                 R"({"order":1})",
                                 R"({"order":"stop","order":"stop"})",
                                 R"({"order":"stop","level":1})",
                                 R"({"order":"volume"})",
                                 R"({"order":"volume","level":64})",
                                 R"({"order":"volume","level":-1})",
                                 R"({"order":"volume","level":1.5})",
                                 R"({"order":"volume","level":"9"})",
                                 R"({"order":"volume","level":18446744073709551616})",
                                 R"({"order":"play","service_id":4294967296,"component":0,"index":0})",
                                 R"({"order":"play","service_id":1,"component":0,"index":256})",
                                 R"({"order":"play","service_id":1,"component":0,"index":null})",
                                 R"({"order":"boot","mode":"dab"})",
                                 R"({"order":"seek","direction":["up"]})",
                                 "{\"order\":\"stop\xff\"}"})
    EXPECT_THROW(parse_order(text), Order_error) << text;
}

TEST(Orders, NewerOneReplacesTheOneThatWaits) {
  Orders orders;
  orders.put(Stop{});
  orders.put(Volume{5});
  EXPECT_EQ(orders.poll().order, Order(Volume{5}));
  EXPECT_FALSE(orders.has_order());
  orders.put_back(Find{});
  orders.put_back(Stop{});
  EXPECT_EQ(orders.wait({}).order, Order(Find{}));
}

TEST(Orders, SamplesAreForViewersAlone) {
  Orders orders;
  orders.set_viewers(1);
  EXPECT_FALSE(orders.wait(Orders::Clock::now()).order);
  orders.set_viewers(0);
  std::thread other([&] { orders.put(Stop{}); });
  EXPECT_EQ(orders.wait({}).order, Order(Stop{}));  // not the sample, although its time has come
  other.join();
  std::thread last([&] { orders.end(); });
  EXPECT_TRUE(orders.wait({}).ends);
  last.join();
}

}  // namespace
}  // namespace remote
