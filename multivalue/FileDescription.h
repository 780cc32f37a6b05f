// One file of a store: what its attributes are called in sentences, and which of them have an
// index.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace multivalue {

struct FileDescription {
  std::string name;
  std::map<std::string, int, std::less<>> fields;
  std::vector<int> indexed;
  // What Engine::filesVersion() was when this was read; -1 where the engine does not tell.
  std::int64_t version = -1;

  bool hasIndex(int attribute) const;
};

}  // namespace multivalue
