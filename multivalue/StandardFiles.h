// What a new store holds before its first record: the files that the system opens, the names of
// their attributes in sentences, and the attributes that have an index.
#pragma once

#include <string_view>
#include <vector>

namespace multivalue {

struct FieldName {
  std::string_view name;
  int attribute;
};

struct StandardFile {
  std::string_view name;
  std::vector<FieldName> fields;
  std::vector<int> indexed;
};

const std::vector<StandardFile>& standardFiles();

// Null for a file that the system does not know.
const StandardFile* standardFile(std::string_view name);

}  // namespace multivalue
