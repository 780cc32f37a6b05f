// The files of a store, and the dictionary and indexes of each, as far as they have been asked for.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "multivalue/Engine.h"

namespace multivalue {

class Catalogue {
 public:
  explicit Catalogue(Engine& engine) : engine_(engine) {}

  // Throws StoreError (kUnknownFile). What is given for reading may lack an index that another
  // process has just made; a writer, inside its transaction, must know them all.
  std::shared_ptr<const FileDescription> forReading(std::string_view name);
  std::shared_ptr<const FileDescription> forWriting(std::string_view name);
  // Nothing happens when the file exists. A name that the system knows brings its dictionary and
  // indexes. Names are letters, digits, "_", "-" and ".", and may not differ by case alone: else
  // StoreError (kBadValue).
  void createFile(std::string_view name);
  // After a transaction was undone: what was seen in it may never have been.
  void forget();

 private:
  Engine& engine_;
  std::int64_t version_ = -1;
  std::map<std::string, std::shared_ptr<const FileDescription>, std::less<>> files_;
};

// Letters, digits, "_", "-" and "."; at least one.
bool isFileName(std::string_view name);

// The files that the system opens, all empty.
void createStandardFiles(Engine& engine);

}  // namespace multivalue
