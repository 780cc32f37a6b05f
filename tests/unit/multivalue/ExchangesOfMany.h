// What an engine tells of exchanging many records at once, the same for each.
#pragma once

#include <gtest/gtest.h>

#include <vector>

#include "multivalue/Engine.h"

// In a store without records of that file; at the end "1", "2" and "3" hold "A2", "B2" and "C".
inline void expectExchangesOfManyTold(multivalue::Engine& engine,
                                      const multivalue::FileDescription& file) {
  const auto exchange = [&](const std::vector<multivalue::Replacement>& all) {
    const auto whole = engine.begin();
    const bool done = engine.exchangeAll(file, all);
    if (done) whole->commit();
    return done;
  };
  EXPECT_TRUE(exchange({}));
  EXPECT_TRUE(exchange({{"1", {}, "A"}, {"2", {}, "B"}}));
  EXPECT_FALSE(exchange({{"3", {}, "C"}, {"2", {}, "X"}})) << "there is a record";
  EXPECT_FALSE(exchange({{"1", "A", "X"}, {"2", "not B", "X"}}));
  EXPECT_FALSE(exchange({{"1", "A", "X"}, {"9", "A", "X"}})) << "there is none";
  EXPECT_EQ(engine.read(file, "1"), "A");
  EXPECT_TRUE(exchange({{"1", "A", "A2"}, {"2", "B", "B2"}, {"3", {}, "C"}}));
  EXPECT_EQ(engine.read(file, "3"), "C");
}
