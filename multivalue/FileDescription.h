// One file of a store: what its attributes are called in sentences, and which of them have an
// index.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace multivalue {

struct FileDescription {
  std::string name;
  std::map<std::string, int, std::less<>> fields;
  std::vector<int> indexed;

  bool hasIndex(int attribute) const;
};

}  // namespace multivalue
