#include "storetool/Copy.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "store/StoreError.h"
#include "storetool/Writer.h"

namespace storetool {

namespace {

// Records between two words to the listener.
constexpr long long kBetweenWords = 1024;

// Of all that a file holds, in its order: 64 bits of FNV-1a, and how many records.
class Digest {
 public:
  void add(std::string_view id, std::string_view record) {
    ++records_;
    addText(id);
    addText(record);
  }
  bool operator==(const Digest&) const = default;

 private:
  // With its size, so that no text's end can be taken for the next one's beginning.
  void addText(std::string_view text) {
    const std::string size = std::to_string(text.size()) + ":";
    for (const std::string_view part : {std::string_view(size), text}) {
      for (const char c : part) {
        constexpr std::uint64_t kPrime = 0x100000001B3U;
        hash_ = (hash_ ^ static_cast<unsigned char>(c)) * kPrime;
      }
    }
  }

  std::uint64_t hash_ = 0xCBF29CE484222325U;
  long long records_ = 0;
};

class Copy {
 public:
  Copy(multivalue::Database& from, multivalue::Database& to, const ProgressListener& listener)
      : from_(from), to_(to), listener_(listener), files_(from.fileNames()) {}

  Copied run() {
    for (const std::string& file : to_.fileNames()) {
      if (to_.recordCount(file) == 0) continue;
      throw store::StoreError(store::kBadValue,
                              "the store to copy to has records already, in " + file);
    }
    for (const std::string& file : files_) all_ += kPasses * from_.recordCount(file);
    writeAll();
    for (const std::string& file : files_) {
      if (digestOf(from_, file) != digestOf(to_, file)) copied_.unlike.push_back(file);
    }
    return copied_;
  }

 private:
  static constexpr long long kPasses = 3;  // one to copy, and one of each store

  void writeAll() {
    const auto whole = to_.begin();
    for (const std::string& file : files_) {
      to_.createFile(file);
      Writer writer(to_, file);
      from_.forEachRecord(file, [&](std::string_view id, std::string_view record) {
        writer.add(id, record);
        ++copied_.records;
        tell();
      });
      writer.flush();
    }
    whole->commit();
  }

  Digest digestOf(multivalue::Database& database, const std::string& file) {
    Digest digest;
    database.forEachRecord(file, [&](std::string_view id, std::string_view record) {
      digest.add(id, record);
      tell();
    });
    return digest;
  }

  void tell() {
    if (++done_ % kBetweenWords != 0 || all_ == 0) return;
    listener_(std::min(1.0, static_cast<double>(done_) / static_cast<double>(all_)));
  }

  multivalue::Database& from_;
  multivalue::Database& to_;
  const ProgressListener& listener_;
  const std::vector<std::string> files_;
  Copied copied_;
  long long all_ = 0;
  long long done_ = 0;
};

}  // namespace

Copied copyStore(multivalue::Database& from, multivalue::Database& to,
                 const ProgressListener& listener) {
  return Copy(from, to, listener).run();
}

}  // namespace storetool
