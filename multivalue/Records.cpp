#include "multivalue/Records.h"

#include "multivalue/RecordText.h"
#include "store/StoreError.h"

namespace multivalue {

void requireIdentifier(const FileDescription& file, std::string_view id) {
  if (isIdentifier(id)) return;
  throw store::StoreError(store::kBadValue, "no identifier for a record of " + file.name +
                                                ": it is empty or holds a mark");
}

void requireWritable(std::string_view id, std::string_view record) {
  if (!holdsMarkCharacter(id) && !holdsMarkCharacter(record)) return;
  throw store::StoreError(store::kBadValue,
                          "a text holds U+00FD or U+00FE, which stand for the store's marks");
}

std::optional<std::string> Records::write(std::string_view id, std::string_view record) {
  requireIdentifier(*file_, id);
  return exchange(id, record);
}

std::optional<std::string> Records::remove(std::string_view id) {
  return exchange(id, std::nullopt);
}

// Where another writer is not kept out, it may have come in between.
std::optional<std::string> Records::exchange(std::string_view id,
                                             std::optional<std::string_view> after) {
  constexpr int kAttempts = 100;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    std::optional<std::string> before = read(id);
    if (!before && !after) return before;
    if (engine_.exchange(*file_, id, before, after)) return before;
  }
  throw store::StoreError(store::kBusy,
                          "a record of " + file_->name + " is never found as it was read");
}

}  // namespace multivalue
