#include "localstore/Check.h"

#include <utility>

#include "localstore/LocalDatabase.h"
#include "localstore/SqliteEngine.h"
#include "multivalue/RecordText.h"
#include "store/StoreError.h"

namespace localstore {

namespace {

using multivalue::FileDescription;

class Check {
 public:
  explicit Check(SqliteEngine& engine) : engine_(engine) {}

  Checked run() {
    const ReadScope oneState(engine_.connection());
    checkFile();
    for (const std::string& name : engine_.fileNames()) {
      const auto file = engine_.describe(name);
      guarded(name, [&] { checkRecords(*file); });
      for (const int attribute : file->indexed) {
        guarded(name, [&] { checkIndex(*file, attribute); });
      }
    }
    return std::move(checked_);
  }

 private:
  void fault(const std::string& text) { checked_.add(text); }

  // What cannot be read is a fault, and no end of the check.
  template <typename Deed>
  void guarded(const std::string& file, const Deed& deed) {
    try {
      deed();
    } catch (const store::StoreError& error) {
      if (error.code() != store::kIoFailure) throw;
      fault(file + ": cannot be read to its end");
    }
  }

  void checkFile() {
    guarded("the store", [&] {
      Query query(engine_.connection(),
                  "PRAGMA integrity_check(" + std::to_string(kMostFaults) + ")");
      while (query.step()) {
        if (query.text(0) != "ok") fault("the store: " + std::string(query.text(0)));
      }
    });
  }

  void checkRecords(const FileDescription& file) {
    Query query(engine_.connection(), "SELECT id, typeof(id), typeof(record) FROM " +
                                          SqliteEngine::recordTable(file) + " ORDER BY id");
    while (query.step()) {
      ++checked_.records;
      const std::string_view id = query.text(0);
      if (query.text(1) == "text" && multivalue::isIdentifier(id) && query.text(2) == "blob") {
        continue;
      }
      fault(file.name + ": record \"" + std::string(id) + "\" cannot be read");
    }
  }

  // When each entry is right and there are as many as the records make, none is missing.
  void checkIndex(const FileDescription& file, int attribute) {
    const std::string place = file.name + ", index of attribute " + std::to_string(attribute);
    const std::string index = SqliteEngine::indexTable(file, attribute);
    Query entries(engine_.connection(), "SELECT i.id, i.value, i.first, r.record FROM " + index +
                                            " i LEFT JOIN " + SqliteEngine::recordTable(file) +
                                            " r ON r.id = i.id");
    long long right = 0;
    while (entries.step()) {
      const auto made =
          multivalue::indexEntries(multivalue::attributeOf(entries.text(3), attribute));
      const auto entry = made.find(entries.text(1));
      if (entry != made.end() && entry->second == (entries.number(2) != 0)) {
        ++right;
      } else {
        fault(place + ": a wrong entry for record \"" + std::string(entries.text(0)) + "\"");
      }
    }
    checkMissing(file, attribute, place, right);
  }

  void checkMissing(const FileDescription& file, int attribute, const std::string& place,
                    long long right) {
    Query records(engine_.connection(),
                  "SELECT id, record FROM " + SqliteEngine::recordTable(file) + " ORDER BY id");
    long long made = 0;
    while (records.step()) {
      const auto entries =
          multivalue::indexEntries(multivalue::attributeOf(records.text(1), attribute));
      made += static_cast<long long>(entries.size());
    }
    if (made == right) return;
    fault(place + ": " + std::to_string(right) + " right entries, but the records make " +
          std::to_string(made));
  }

  SqliteEngine& engine_;
  Checked checked_;
};

}  // namespace

Checked checkLocalDatabase(const std::string& path, bool readOnly) {
  return checkEngine(
      *openEngine(path, {}, readOnly ? Connection::Mode::Read : Connection::Mode::Open));
}

Checked checkEngine(SqliteEngine& engine) { return Check(engine).run(); }

}  // namespace localstore
