// The seeds of random tests: the same on every run, unless the environment gives another one.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <random>
#include <string>

namespace testing_support {

// TESSALINE_SEED, else what the test has of its own.
inline std::uint32_t seed(std::uint32_t ownSeed) {
  const char* given = std::getenv("TESSALINE_SEED");
  return given ? static_cast<std::uint32_t>(std::strtoul(given, nullptr, 10)) : ownSeed;
}

// A generator of random numbers that tells its seed with each failure while it lives. A test that
// makes one is a random test: its report holds the seed as a property, by which `./test soak` knows
// it.
class Random {
 public:
  using result_type = std::mt19937::result_type;

  explicit Random(std::uint32_t ownSeed)
      : seed_(seed(ownSeed)),
        engine_(seed_),
        trace_(__FILE__, __LINE__, "TESSALINE_SEED=" + std::to_string(seed_)) {
    testing::Test::RecordProperty("seed", std::to_string(seed_));
  }

  static constexpr result_type min() { return std::mt19937::min(); }
  static constexpr result_type max() { return std::mt19937::max(); }
  result_type operator()() { return engine_(); }

 private:
  std::uint32_t seed_;
  std::mt19937 engine_;
  testing::ScopedTrace trace_;
};

}  // namespace testing_support
