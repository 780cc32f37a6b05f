// What a check of a store has found.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace multivalue {

inline constexpr std::size_t kMostFaults = 100;

struct Checked {
  long long records = 0;
  // A line each, at most kMostFaults.
  std::vector<std::string> faults;

  void add(const std::string& fault) {
    if (faults.size() < kMostFaults) faults.push_back(fault);
  }
};

}  // namespace multivalue
