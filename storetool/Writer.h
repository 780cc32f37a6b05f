// Records written to one file of a store, many at once: a store on a server takes as long for one.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "multivalue/Database.h"

namespace storetool {

class Writer {
 public:
  // The database must outlive it.
  Writer(multivalue::Database& database, std::string file)
      : database_(database), file_(std::move(file)) {}

  // Writes what there is when it has become much; throws what the store throws.
  void add(std::string_view id, std::string_view record) {
    records_.push_back({std::string(id), std::string(record)});
    bytes_ += id.size() + record.size();
    if (records_.size() == kMostRecords || bytes_ >= kManyBytes) flush();
  }
  void flush() {
    if (!records_.empty()) database_.writeAll(file_, records_);
    records_.clear();
    bytes_ = 0;
  }

 private:
  static constexpr std::size_t kMostRecords = 500;
  static constexpr std::size_t kManyBytes = std::size_t{1} << 20;

  multivalue::Database& database_;
  const std::string file_;
  std::vector<multivalue::Database::Written> records_;
  std::size_t bytes_ = 0;
};

}  // namespace storetool
