// The ways into a file's records that spare reading them all: a key, a range of keys, an index
// entry, a range of an index.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "multivalue/Comparison.h"
#include "multivalue/FileDescription.h"

namespace multivalue {

// A field of a sentence, looked up: an attribute number, 0 for the key.
struct Test {
  int attribute = 0;
  Criterion criterion;
};

struct AccessPath {
  int attribute = 0;  // 0: the key
  std::string low;
  // The first text past the range; none when nothing is past it. Not used when exact.
  std::optional<std::string> high;
  bool exact = false;
  // The test that every entry of the range satisfies.
  const Test* answers = nullptr;
};

// The first text, byte by byte, that does not begin with the prefix and comes after those that do.
std::optional<std::string> endOfPrefix(std::string prefix);

// A key or range of keys that one of the tests asks for; none when none does. The tests must
// outlive it.
std::optional<AccessPath> keyPath(const FileDescription& file, const std::vector<Test>& tests);

// All that the tests offer; a single key alone when they ask for one. The tests must outlive them.
std::vector<AccessPath> accessPaths(const FileDescription& file, const std::vector<Test>& tests);

}  // namespace multivalue
