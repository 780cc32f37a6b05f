#include <string>
#include <utility>

#include "multivalue/RecordText.h"
#include "sharedstore/CutEntries.h"
#include "sharedstore/ScanStatement.h"
#include "sharedstore/SharedDatabase.h"
#include "sharedstore/SharedEngine.h"
#include "store/StoreError.h"

namespace sharedstore {

namespace {

using multivalue::Checked;
using multivalue::FileDescription;

class Check {
 public:
  explicit Check(SharedEngine& engine) : engine_(engine) {}

  Checked run() {
    for (const std::string& name : engine_.fileNames()) {
      const auto file = engine_.describe(name);
      if (!file) continue;
      checkRecords(*file);
      for (const int attribute : file->indexed) checkIndex(*file, attribute);
    }
    return std::move(checked_);
  }

 private:
  void checkRecords(const FileDescription& file) {
    Rows rows(engine_.connection(), Sql("SELECT id FROM " + recordTable(file.name)));
    while (rows.next()) {
      ++checked_.records;
      const std::string id = rows.bytes(0);
      if (multivalue::isIdentifier(id)) continue;
      checked_.add(file.name + ": record \"" + id + "\" has no key of a record");
    }
  }

  // When each entry is right and there are as many as the records make, none is missing.
  void checkIndex(const FileDescription& file, int attribute) {
    const std::string place = file.name + ", index of attribute " + std::to_string(attribute);
    Rows entries(engine_.connection(),
                 Sql("SELECT i.id, i.value, CAST(i.first AS integer), r.record FROM " +
                     indexTable(file.name, attribute) + " i LEFT JOIN " + recordTable(file.name) +
                     " r ON r.id = i.id"));
    long long right = 0;
    while (entries.next()) {
      const std::string record = entries.bytes(3);
      const auto made = cutEntries(multivalue::attributeOf(record, attribute));
      const auto entry = made.find(entries.bytes(1));
      if (entry != made.end() && entry->second == (entries.number(2) != 0)) {
        ++right;
      } else {
        checked_.add(place + ": a wrong entry for record \"" + entries.bytes(0) + "\"");
      }
    }
    checkMissing(file, attribute, place, right);
  }

  void checkMissing(const FileDescription& file, int attribute, const std::string& place,
                    long long right) {
    Rows rows(engine_.connection(), Sql("SELECT record FROM " + recordTable(file.name)));
    long long made = 0;
    while (rows.next()) {
      const std::string record = rows.bytes(0);
      const auto entries = cutEntries(multivalue::attributeOf(record, attribute));
      made += static_cast<long long>(entries.size());
    }
    if (made == right) return;
    checked_.add(place + ": " + std::to_string(right) + " right entries, but the records make " +
                 std::to_string(made));
  }

  SharedEngine& engine_;
  Checked checked_;
};

}  // namespace

Checked checkSharedDatabase(const std::string& connection) {
  SharedEngine engine(connection);
  engine.checkFormat();
  const auto oneState = engine.begin();
  engine.connection().execute("SET TRANSACTION ISOLATION LEVEL REPEATABLE READ READ ONLY");
  return Check(engine).run();
}

}  // namespace sharedstore
