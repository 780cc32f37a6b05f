#include "sharedstore/SharedEngine.h"

#include <algorithm>
#include <map>
#include <utility>

#include "multivalue/Catalogue.h"
#include "multivalue/RecordText.h"
#include "sharedstore/CutEntries.h"
#include "sharedstore/ScanStatement.h"
#include "store/StoreError.h"

namespace sharedstore {

using multivalue::FileDescription;
using multivalue::Scan;

namespace {

constexpr std::int64_t kFormat = 1;

// "index_", a name, "_" and four digits are a name of a table: 63 bytes.
constexpr std::size_t kLongestName = 52;

// Two of these differ by more than case.
std::string folded(std::string_view name) {
  std::string lower(name);
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lower;
}

Sql recordTableMade(const FileDescription& file) {
  return Sql("CREATE TABLE " + recordTable(file.name) +
             " (id bytea PRIMARY KEY, record bytea NOT NULL)");
}

Sql indexTableMade(const FileDescription& file, int attribute) {
  return Sql("CREATE TABLE " + indexTable(file.name, attribute) +
             " (value bytea, id bytea, first boolean NOT NULL, PRIMARY KEY (value, id))");
}

// Names are kept as bytes, as the records are: no server's collation or encoding meets them.
Sql filesInserted(const FileDescription& file) {
  Sql sql("INSERT INTO store_file (folded, name) VALUES (");
  return sql.bytes(folded(file.name)).add(", ").bytes(file.name).add(")");
}

Sql fieldsInserted(const FileDescription& file) {
  Sql sql("INSERT INTO store_dictionary (file, name, attribute) VALUES ");
  bool any = false;
  for (const auto& [name, attribute] : file.fields) {
    sql.add(any ? ", (" : "(").bytes(file.name).add(", ").bytes(name).add(", ");
    sql.number(attribute).add(")");
    any = true;
  }
  return sql;
}

Sql indexInserted(const FileDescription& file, int attribute) {
  Sql sql("INSERT INTO store_index (file, attribute) VALUES (");
  return sql.bytes(file.name).add(", ").number(attribute).add(")");
}

Sql removal(const std::string& table, std::string_view id,
            const std::vector<std::string_view>& values) {
  Sql sql("DELETE FROM " + table + " WHERE id = ");
  sql.bytes(id).add(" AND value IN (");
  for (std::size_t i = 0; i < values.size(); ++i) sql.add(i > 0 ? ", " : "").bytes(values[i]);
  return sql.add(")");
}

Sql addition(const std::string& table, std::string_view id,
             const std::map<std::string_view, bool>& entries, std::string_view from) {
  Sql sql("INSERT INTO " + table + " (value, id, first) SELECT v.value, ");
  sql.bytes(id).add(", v.first FROM (VALUES ");
  bool any = false;
  for (const auto& [value, first] : entries) {
    sql.add(any ? ", (" : "(").bytes(value).add(first ? ", true)" : ", false)");
    any = true;
  }
  return sql.add(") v (value, first)")
      .add(from)
      .add(" ON CONFLICT (value, id) DO UPDATE SET first = excluded.first");
}

// What puts one text in the place of another, if that one is there.
Sql exchanged(const std::string& table, std::string_view id, std::optional<std::string_view> before,
              std::optional<std::string_view> after) {
  Sql sql;
  if (after && !before) {
    sql.add("INSERT INTO " + table + " (id, record) VALUES (").bytes(id).add(", ");
    sql.bytes(*after).add(") ON CONFLICT (id) DO NOTHING");
  } else if (before && !after) {
    sql.add("DELETE FROM " + table + " WHERE id = ").bytes(id).add(" AND record = ");
    sql.bytes(*before);
  } else if (before && after) {
    sql.add("UPDATE " + table + " SET record = ").bytes(*after).add(" WHERE id = ").bytes(id);
    sql.add(" AND record = ").bytes(*before);
  }
  return sql.add(" RETURNING 1");
}

class SharedCursor final : public multivalue::Cursor {
 public:
  SharedCursor(Connection& connection, const Scan& scan)
      : path_(scan.path != nullptr ? *scan.path : multivalue::AccessPath{}),
        entries_(path_.attribute != 0 && scan.gives == Scan::Gives::IndexEntries),
        rows_(connection, scanStatement(scan)) {}

  bool next(multivalue::Entry& entry) override {
    do {
      if (!rows_.next()) return false;
      take();
    } while (!isMeant());
    entry.id = id_;
    entry.record = record_;
    entry.value = value_;
    entry.first = first_;
    return true;
  }

 private:
  void take() {
    id_ = rows_.bytes(0);
    if (!entries_) {
      record_ = rows_.bytes(1);
      return;
    }
    value_ = rows_.bytes(1);
    first_ = rows_.number(2) != 0;
    record_ = rows_.bytes(3);
    if (!isCut(value_)) return;
    // What the value goes on with stands in the record alone.
    first_ = false;
    value_ = {};
  }

  // An entry that is cut off may be another value's, and a record that had to be waited for may
  // have become another.
  bool isMeant() const {
    if (path_.attribute == 0 || (entries_ && !value_.empty())) return true;
    return isOnPath(path_, multivalue::attributeOf(record_, path_.attribute));
  }

  const multivalue::AccessPath path_;
  const bool entries_;
  Rows rows_;
  std::string id_;
  std::string record_;
  std::string value_;
  bool first_ = false;
};

}  // namespace

class SharedEngine::OneTransaction final : public multivalue::Transaction {
 public:
  explicit OneTransaction(SharedEngine& engine)
      : engine_(engine), savepoint_("tessaline_" + std::to_string(engine.depth_)) {
    if (engine_.depth_ == 0) {
      engine_.version_.reset();
      engine_.connection_.begin();
    } else {
      engine_.connection_.later(made(), true);
    }
    ++engine_.depth_;
  }
  OneTransaction(const OneTransaction&) = delete;
  OneTransaction& operator=(const OneTransaction&) = delete;
  ~OneTransaction() override {
    if (!open_) return;
    end();
    try {
      undo();
    } catch (const store::StoreError&) {
      // The server undoes what its client has left.
    }
  }

  void commit() override {
    end();
    if (engine_.depth_ == 0) {
      engine_.connection_.commit();
    } else if (!engine_.connection_.takeBack(made())) {
      engine_.connection_.later("RELEASE SAVEPOINT " + savepoint_, true);
    }
  }

 private:
  std::string made() const { return "SAVEPOINT " + savepoint_; }

  void end() {
    open_ = false;
    --engine_.depth_;
  }

  void undo() {
    engine_.version_.reset();
    if (engine_.depth_ == 0) {
      engine_.connection_.rollback();
    } else if (!engine_.connection_.takeBack(made())) {
      engine_.connection_.rollBackTo(savepoint_);
    }
  }

  SharedEngine& engine_;
  const std::string savepoint_;
  bool open_ = true;
};

void SharedEngine::create() {
  try {
    connection_.execute(
        "CREATE TABLE store_state (one integer PRIMARY KEY CHECK (one = 1),"
        " format integer NOT NULL, files bigint NOT NULL);"
        "CREATE TABLE store_file (folded bytea PRIMARY KEY, name bytea NOT NULL);"
        "CREATE TABLE store_dictionary (file bytea, name bytea, attribute integer NOT NULL,"
        " PRIMARY KEY (file, name));"
        "CREATE TABLE store_index (file bytea, attribute integer, PRIMARY KEY (file, attribute))",
        3);
  } catch (const store::StoreError&) {
    constexpr std::string_view kThereIsOne = "42P07";
    if (connection_.lastState() != kThereIsOne) throw;
    throw store::StoreError(store::kIoFailure, "the database holds a store already");
  }
  connection_.execute("INSERT INTO store_state VALUES (1, " + std::to_string(kFormat) + ", 0)");
}

void SharedEngine::checkFormat() {
  std::int64_t format = 0;
  try {
    Statement found(connection_, Sql("SELECT format FROM store_state"));
    if (found.next()) format = found.number(0);
  } catch (const store::StoreError&) {
    constexpr std::string_view kNoTable = "42P01";
    if (connection_.lastState() != kNoTable) throw;
    throw store::StoreError(store::kIoFailure, "the database holds no store");
  }
  if (format == kFormat) return;
  throw store::StoreError(store::kIoFailure, "the store has a format that is not known here");
}

std::vector<std::string> SharedEngine::fileNames() {
  return reading([&] {
    std::vector<std::string> found;
    Rows rows(connection_, Sql("SELECT name FROM store_file ORDER BY folded"));
    while (rows.next()) found.push_back(rows.bytes(0));
    std::sort(found.begin(), found.end());
    return found;
  });
}

std::shared_ptr<const FileDescription> SharedEngine::describe(std::string_view name) {
  Sql sql("SELECT 0, ''::bytea, 0 FROM store_file WHERE name = ");
  sql.bytes(name).add(" UNION ALL SELECT 1, name, attribute FROM store_dictionary WHERE file = ");
  sql.bytes(name).add(" UNION ALL SELECT 2, ''::bytea, attribute FROM store_index WHERE file = ");
  sql.bytes(name);
  Statement found = reading([&] { return Statement(connection_, sql); });
  bool present = false;
  auto file = std::make_shared<FileDescription>();
  file->name = name;
  while (found.next()) {
    const std::int64_t kind = found.number(0);
    const int attribute = static_cast<int>(found.number(2));
    if (kind == 0) present = true;
    if (kind == 1) file->fields.emplace(found.bytes(1), attribute);
    if (kind == 2) file->indexed.push_back(attribute);
  }
  std::sort(file->indexed.begin(), file->indexed.end());
  return present ? file : nullptr;
}

std::string SharedEngine::sameName(std::string_view name) {
  Sql sql("SELECT name FROM store_file WHERE folded = ");
  sql.bytes(folded(name));
  Statement found = reading([&] { return Statement(connection_, sql); });
  return found.next() ? found.bytes(0) : std::string();
}

// All in one message. Of two that add a file at once, the second waits for the first.
void SharedEngine::addFile(const FileDescription& file) {
  if (file.name.size() > kLongestName) {
    throw store::StoreError(
        store::kBadValue,
        "a file's name has at most " + std::to_string(kLongestName) + " letters in a shared store");
  }
  int leading = 2;
  Sql sql("UPDATE store_state SET files = files + 1;");
  sql.add(filesInserted(file)).add(";");
  if (!file.fields.empty()) {
    sql.add(fieldsInserted(file)).add(";");
    ++leading;
  }
  for (const int attribute : file.indexed) {
    sql.add(indexInserted(file, attribute)).add(";").add(indexTableMade(file, attribute)).add(";");
    leading += 2;
  }
  try {
    const Statement added(connection_, sql.add(recordTableMade(file)), leading);
  } catch (const store::StoreError& error) {
    constexpr std::string_view kMetAnother = "23505";
    if (connection_.lastState() == kMetAnother) throw multivalue::Conflict(error.what());
    throw;
  }
  version_.reset();
}

std::int64_t SharedEngine::filesVersion() {
  if (depth_ > 0 && version_) return *version_;
  Statement found =
      reading([&] { return Statement(connection_, Sql("SELECT files FROM store_state")); });
  const std::int64_t version = found.next() ? found.number(0) : 0;
  if (depth_ > 0) version_ = version;
  return version;
}

std::unique_ptr<multivalue::Transaction> SharedEngine::begin() {
  return std::make_unique<OneTransaction>(*this);
}

std::optional<std::string> SharedEngine::read(const FileDescription& file, std::string_view id,
                                              std::string_view lock) {
  Sql sql("SELECT record FROM " + recordTable(file.name) + " WHERE id = ");
  sql.bytes(id).add(lock);
  Statement found = reading([&] { return Statement(connection_, sql); });
  if (!found.next()) return std::nullopt;
  return found.bytes(0);
}

std::optional<std::string> SharedEngine::read(const FileDescription& file, std::string_view id) {
  return read(file, id, "");
}

std::optional<std::string> SharedEngine::readLocked(const FileDescription& file,
                                                    std::string_view id) {
  return read(file, id, " FOR SHARE");
}

// One statement, with the entries that go. Those that come are in it where none go: engines that
// spread a table over machines change it once in a statement.
bool SharedEngine::exchange(const FileDescription& file, std::string_view id,
                            std::optional<std::string_view> before,
                            std::optional<std::string_view> after) {
  if (after && id.size() > kLongestKey) {
    throw store::StoreError(store::kBadValue, "a key has at most " + std::to_string(kLongestKey) +
                                                  " bytes in a shared store");
  }
  if (!before && !after) return !read(file, id);
  Sql sql("WITH done AS (");
  sql.add(exchanged(recordTable(file.name), id, before, after)).add(")");
  std::vector<Sql> additions;
  for (const int attribute : file.indexed) {
    const std::string table = indexTable(file.name, attribute);
    const EntryChanges changes =
        entryChanges(multivalue::attributeOf(before.value_or(""), attribute),
                     multivalue::attributeOf(after.value_or(""), attribute));
    const std::string with = ", index" + std::to_string(attribute) + " AS (";
    if (!changes.removed.empty()) {
      sql.add(with).add(removal(table, id, changes.removed));
      sql.add(" AND EXISTS (SELECT 1 FROM done))");
      if (!changes.put.empty()) additions.push_back(addition(table, id, changes.put, ""));
    } else if (!changes.put.empty()) {
      sql.add(with).add(addition(table, id, changes.put, ", done")).add(")");
    }
  }
  {
    Statement done(connection_, sql.add(" SELECT count(*) FROM done"));
    if (!done.next() || done.number(0) == 0) return false;
  }
  for (const Sql& each : additions) const Statement added(connection_, each);
  return true;
}

std::unique_ptr<multivalue::Cursor> SharedEngine::scan(const Scan& scan) {
  return reading([&] { return std::make_unique<SharedCursor>(connection_, scan); });
}

std::int64_t SharedEngine::count(const FileDescription& file, const multivalue::AccessPath* path,
                                 std::int64_t) {
  if (path != nullptr) return 0;
  const Sql sql("SELECT count(*) FROM " + recordTable(file.name));
  Statement found = reading([&] { return Statement(connection_, sql); });
  return found.next() ? found.number(0) : 0;
}

}  // namespace sharedstore
