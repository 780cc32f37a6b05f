#include "multivalue/SeenRecords.h"

#include <functional>
#include <utility>

namespace multivalue {

namespace {

std::size_t placeOf(std::string_view file, std::string_view id) {
  const std::hash<std::string_view> hash;
  return hash(file) * 31 + hash(id);
}

}  // namespace

SeenRecords::Seen::Seen(SeenRecords& list, std::string file, std::string_view id, Text text)
    : list_(list),
      file_(std::move(file)),
      id_(id),
      text_(std::move(text)),
      place_(list.seen_.emplace(placeOf(file_, id_), this)) {}

SeenRecords::Seen::~Seen() { list_.seen_.erase(place_); }

void SeenRecords::changed(std::string_view file, std::string_view id, const Text& before,
                          const Text& after) {
  if (take(file, id, before, after) && noted_) {
    noted_->push_back({std::string(file), std::string(id), before, after});
  }
}

void SeenRecords::undo() {
  if (!noted_) return;
  const std::vector<Change> changes = std::move(*noted_);
  noted_.reset();
  for (auto change = changes.rbegin(); change != changes.rend(); ++change) {
    take(change->file, change->id, change->after, change->before);
  }
}

// Was there one that had seen it?
bool SeenRecords::take(std::string_view file, std::string_view id, const Text& before,
                       const Text& after) {
  bool any = false;
  const auto [first, last] = seen_.equal_range(placeOf(file, id));
  for (auto place = first; place != last; ++place) {
    Seen& seen = *place->second;
    if (seen.file_ != file || seen.id_ != id || seen.text_ != before) continue;
    seen.text_ = after;
    any = true;
  }
  return any;
}

}  // namespace multivalue
