// The records of one file, written whatever is stored. All needs a transaction.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "multivalue/Engine.h"

namespace multivalue {

class Records {
 public:
  Records(Engine& engine, std::shared_ptr<const FileDescription> file)
      : engine_(engine), file_(std::move(file)) {}

  // Nothing when no record has the identifier.
  std::optional<std::string> read(std::string_view id) const { return engine_.read(*file_, id); }
  // Of one that has to stay as it is until the transaction ends.
  std::optional<std::string> readLocked(std::string_view id) const {
    return engine_.readLocked(*file_, id);
  }
  // Creates or replaces; gives what was there. Throws StoreError (kBadValue) for what is no
  // identifier.
  std::optional<std::string> write(std::string_view id, std::string_view record);
  // Gives what was there.
  std::optional<std::string> remove(std::string_view id);

 private:
  std::optional<std::string> exchange(std::string_view id, std::optional<std::string_view> after);

  Engine& engine_;
  std::shared_ptr<const FileDescription> file_;
};

// Throws StoreError (kBadValue) for what is no identifier.
void requireIdentifier(const FileDescription& file, std::string_view id);

// What comes from outside. Throws StoreError (kBadValue) when it holds U+00FD or U+00FE.
void requireWritable(std::string_view id, std::string_view record);

}  // namespace multivalue
