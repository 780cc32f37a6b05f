#include "localstore/SqliteEngine.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <set>
#include <utility>

#include "multivalue/Catalogue.h"
#include "multivalue/RecordText.h"

namespace localstore {

using multivalue::AccessPath;
using multivalue::FileDescription;
using multivalue::Replacement;
using multivalue::Scan;

namespace {

// Marks the file as a store ("Tess"), so that no other database is taken for one.
constexpr std::int64_t kApplicationId = 0x54657373;
constexpr std::int64_t kFormat = 1;

constexpr std::string_view kRecord = "record_";
constexpr std::string_view kIndex = "index_";
constexpr std::string_view kOwnTables[] = {
    "CREATE TABLE store_file(name TEXT PRIMARY KEY COLLATE NOCASE) WITHOUT ROWID",
    "CREATE TABLE store_dictionary(file TEXT, name TEXT, attribute INTEGER NOT NULL,"
    " PRIMARY KEY(file, name)) WITHOUT ROWID",
    "CREATE TABLE store_index(file TEXT, attribute INTEGER,"
    " PRIMARY KEY(file, attribute)) WITHOUT ROWID"};

std::string recordName(std::string_view file) { return std::string(kRecord) + std::string(file); }

std::string indexName(std::string_view file, std::int64_t attribute) {
  return std::string(kIndex) + std::string(file) + "_" + std::to_string(attribute);
}

std::string recordTableMade(std::string_view name) {
  return "CREATE TABLE \"" + std::string(name) +
         "\"(id TEXT PRIMARY KEY, record BLOB NOT NULL) WITHOUT ROWID";
}

std::string indexTableMade(std::string_view name) {
  return "CREATE TABLE \"" + std::string(name) +
         "\"(value TEXT, id TEXT, first INTEGER NOT NULL, PRIMARY KEY(value, id)) WITHOUT ROWID";
}

// Could the store have made a table of this name by this statement?
bool isOwn(std::string_view name, std::string_view made) {
  for (const std::string_view own : kOwnTables) {
    if (made == own) return own.starts_with("CREATE TABLE " + std::string(name) + "(");
  }
  return (name.starts_with(kRecord) && made == recordTableMade(name)) ||
         (name.starts_with(kIndex) && made == indexTableMade(name));
}

// Adds the condition on a column, with two parameters: the range's beginning, the one numbered
// `first`, and its end.
void addCondition(std::string& sql, const AccessPath& path, std::string_view column, int first) {
  const auto add = [&](std::string_view comparison, int parameter) {
    (sql += column) += comparison;
    sql += static_cast<char>('0' + parameter);
  };
  if (path.exact) return add(" = ?", first);
  add(" >= ?", first);
  if (!path.high) return;
  sql += " AND ";
  add(" < ?", first + 1);
}

void bindRange(Query& query, const AccessPath& path, int first) {
  query.bind(first, path.low);
  if (!path.exact && path.high) query.bind(first + 1, *path.high);
}

// Scans of a file whose statements differ have different ones: by the attribute of the path, what
// is wanted, and how the path and the keys are bounded.
int shapeOf(const Scan& scan, const std::optional<AccessPath>& keys) {
  enum Bounds { kNone, kExact, kOpen, kClosed, kAll };
  const auto bounds = [](const AccessPath* path) {
    if (path == nullptr) return kNone;
    if (path->exact) return kExact;
    return path->high ? kClosed : kOpen;
  };
  constexpr int kGives = 3;
  const int attribute = scan.path == nullptr ? 0 : scan.path->attribute;
  const int shape = attribute * kGives + static_cast<int>(scan.gives);
  return (shape * kAll + bounds(scan.path)) * kAll + bounds(keys ? &*keys : nullptr);
}

// Key and record; of an index, key, value and whether it is the first.
std::string textOf(const Scan& scan, const std::optional<AccessPath>& keys) {
  const AccessPath* const path = scan.path;
  std::string sql;
  if (path == nullptr || path->attribute == 0) {
    sql += scan.gives == Scan::Gives::Keys ? "SELECT id, x'' FROM " : "SELECT id, record FROM ";
    sql += SqliteEngine::recordTable(scan.file);
    if (path != nullptr) addCondition(sql += " WHERE ", *path, "id", 1);
    sql += " ORDER BY id";
    return sql;
  }
  const bool entries = scan.gives == Scan::Gives::IndexEntries;
  sql += entries ? "SELECT i.id, i.value, i.first FROM " : "SELECT i.id, r.record FROM ";
  (sql += SqliteEngine::indexTable(scan.file, path->attribute)) += " i";
  if (!entries) {
    ((sql += " CROSS JOIN ") += SqliteEngine::recordTable(scan.file)) += " r ON r.id = i.id";
  }
  addCondition(sql += " WHERE ", *path, "i.value", 1);
  if (keys) addCondition(sql += " AND ", *keys, "i.id", 3);
  if (path->exact) {
    sql += " ORDER BY i.id";
  } else if (entries) {
    sql += " ORDER BY i.value, i.id";
  }
  return sql;
}

// Keeps the keys that its statement is bound to.
class SqliteCursor final : public multivalue::Cursor {
 public:
  // `reading` is the statement by which a record is read; both must outlive it.
  SqliteCursor(Connection& connection, const Scan& scan, std::optional<AccessPath> keys,
               Statement& statement, const std::string& reading)
      : connection_(connection),
        keys_(std::move(keys)),
        entries_(scan.path != nullptr && scan.path->attribute != 0 &&
                 scan.gives == Scan::Gives::IndexEntries),
        query_(connection, statement),
        reading_(reading) {
    if (scan.path != nullptr) bindRange(query_, *scan.path, 1);
    if (keys_) bindRange(query_, *keys_, 3);
    if (scan.patience > 0) query_.giveUpAfter(instructionsFor(scan.patience));
  }

  bool next(multivalue::Entry& entry) override {
    if (!query_.step()) return false;
    entry.id = query_.text(0);
    if (!entries_) {
      entry.record = query_.text(1);
      return true;
    }
    entry.value = query_.text(1);
    entry.first = query_.number(2) != 0;
    entry.record = {};
    if (!entry.first) {
      Query record(connection_, reading_);
      record_ = record.bind(1, entry.id).step() ? std::string(record.text(0)) : std::string();
      entry.record = record_;
    }
    return true;
  }

  bool givenUp() const override { return query_.givenUp(); }

 private:
  // An entry of an index that the range of keys passes over takes some instructions of SQLite's.
  static int instructionsFor(std::int64_t entries) {
    constexpr std::int64_t kOfAnEntry = 8;
    constexpr std::int64_t kMost = std::numeric_limits<int>::max() / kOfAnEntry;
    return static_cast<int>(std::min(entries, kMost) * kOfAnEntry);
  }

  Connection& connection_;
  const std::optional<AccessPath> keys_;
  const bool entries_;
  Query query_;
  const std::string& reading_;
  std::string record_;
};

class SqliteTransaction final : public multivalue::Transaction {
 public:
  explicit SqliteTransaction(Connection& connection) : scope_(connection) {}
  void commit() override { scope_.commit(); }

 private:
  WriteScope scope_;
};

}  // namespace

std::string SqliteEngine::recordTable(const FileDescription& file) {
  return '"' + recordName(file.name) + '"';
}

std::string SqliteEngine::indexTable(const FileDescription& file, int attribute) {
  return '"' + indexName(file.name, attribute) + '"';
}

void SqliteEngine::create() {
  WriteScope scope(connection_);
  for (const std::string_view own : kOwnTables) connection_.execute(std::string(own));
  connection_.execute("PRAGMA application_id = " + std::to_string(kApplicationId));
  connection_.execute("PRAGMA user_version = " + std::to_string(kFormat));
  scope.commit();
}

void SqliteEngine::checkFormat() {
  const ReadScope oneState(connection_);
  Query application(connection_, "PRAGMA application_id");
  if (!application.step() || application.number(0) != kApplicationId) {
    connection_.refuse("the file is no store");
  }
  Query format(connection_, "PRAGMA user_version");
  if (!format.step() || format.number(0) != kFormat) {
    connection_.refuse("the store has a format that is not known here");
  }
  filesVersion();
}

// Each table is one that is made here, by its very statement, and the files and indexes that the
// store tells of are those that there are tables of.
void SqliteEngine::checkTables() {
  constexpr const char* kOthers = "the tables of the file are not those of a store";
  std::set<std::string, std::less<>> tables;
  Query made(connection_, "SELECT type, name, tbl_name, sql FROM sqlite_schema");
  while (made.step()) {
    const std::string_view name = made.text(1);
    if (made.text(0) != "table" || made.text(2) != name || !isOwn(name, made.text(3))) {
      connection_.refuse(kOthers);
    }
    tables.emplace(name);
  }
  std::size_t told = std::size(kOwnTables);
  Query files(connection_, "SELECT name FROM store_file");
  for (; files.step(); ++told) {
    if (!multivalue::isFileName(files.text(0)) || !tables.contains(recordName(files.text(0)))) {
      connection_.refuse(kOthers);
    }
  }
  Query indexes(connection_, "SELECT file, attribute FROM store_index");
  for (; indexes.step(); ++told) {
    if (!tables.contains(indexName(indexes.text(0), indexes.number(1))))
      connection_.refuse(kOthers);
  }
  if (told != tables.size()) connection_.refuse(kOthers);
}

std::vector<std::string> SqliteEngine::fileNames() {
  std::vector<std::string> found;
  Query query(connection_, "SELECT name FROM store_file ORDER BY name");
  while (query.step()) found.emplace_back(query.text(0));
  return found;
}

std::shared_ptr<const FileDescription> SqliteEngine::describe(std::string_view name) {
  Query present(connection_, "SELECT 1 FROM store_file WHERE name = ?1 COLLATE BINARY");
  if (!present.bind(1, name).step()) return nullptr;
  auto file = std::make_shared<FileDescription>();
  file->name = name;
  Query fields(connection_, "SELECT name, attribute FROM store_dictionary WHERE file = ?1");
  fields.bind(1, name);
  while (fields.step()) file->fields.emplace(fields.text(0), static_cast<int>(fields.number(1)));
  Query indexes(connection_, "SELECT attribute FROM store_index WHERE file = ?1");
  indexes.bind(1, name);
  while (indexes.step()) file->indexed.push_back(static_cast<int>(indexes.number(0)));
  return file;
}

std::string SqliteEngine::sameName(std::string_view name) {
  Query present(connection_, "SELECT name FROM store_file WHERE name = ?1");
  return present.bind(1, name).step() ? std::string(present.text(0)) : std::string();
}

void SqliteEngine::addFile(const FileDescription& file) {
  Query(connection_, "INSERT INTO store_file VALUES(?1)").bind(1, file.name).run();
  connection_.execute(recordTableMade(recordName(file.name)));
  for (const auto& [name, attribute] : file.fields) {
    Query(connection_, "INSERT INTO store_dictionary VALUES(?1, ?2, ?3)")
        .bind(1, file.name)
        .bind(2, name)
        .bind(3, attribute)
        .run();
  }
  for (const int attribute : file.indexed) {
    Query(connection_, "INSERT INTO store_index VALUES(?1, ?2)")
        .bind(1, file.name)
        .bind(2, attribute)
        .run();
    connection_.execute(indexTableMade(indexName(file.name, attribute)));
  }
}

std::int64_t SqliteEngine::filesVersion() {
  Query query(connection_, "PRAGMA schema_version");
  const std::int64_t version = query.step() ? query.number(0) : 0;
  if (version != checked_) checkTables();
  checked_ = version;
  return version;
}

std::unique_ptr<multivalue::Transaction> SqliteEngine::begin() {
  return std::make_unique<SqliteTransaction>(connection_);
}

// Put together once a file: a command may read and write a hundred thousand records.
SqliteEngine::Statements& SqliteEngine::statementsOf(const FileDescription& file) {
  const auto known = statements_.find(file.name);
  if (known != statements_.end()) return known->second;
  const std::string table = recordTable(file);
  return statements_
      .emplace(file.name,
               Statements{"SELECT record FROM " + table + " WHERE id = ?1",
                          "INSERT INTO " + table + " VALUES(?1, ?2) ON CONFLICT(id) DO NOTHING",
                          "UPDATE " + table + " SET record = ?3 WHERE id = ?1 AND record = ?2",
                          "DELETE FROM " + table + " WHERE id = ?1 AND record = ?2",
                          {}})
      .first->second;
}

std::optional<std::string> SqliteEngine::read(const FileDescription& file, std::string_view id) {
  Query query(connection_, statementsOf(file).read);
  if (!query.bind(1, id).step()) return std::nullopt;
  return std::string(query.text(0));
}

bool SqliteEngine::exchange(const FileDescription& file, std::string_view id,
                            std::optional<std::string_view> before,
                            std::optional<std::string_view> after) {
  const Statements& statements = statementsOf(file);
  if (!before && !after) return !read(file, id);
  if (after && !before) {
    Query(connection_, statements.insert).bind(1, id).bindBytes(2, *after).run();
  } else if (before && !after) {
    Query(connection_, statements.remove).bind(1, id).bindBytes(2, *before).run();
  } else if (before && after) {
    Query(connection_, statements.replace)
        .bind(1, id)
        .bindBytes(2, *before)
        .bindBytes(3, *after)
        .run();
  }
  if (connection_.rowsChanged() == 0) return false;
  reindex(file, id, before.value_or(""), after.value_or(""));
  return true;
}

std::vector<std::optional<std::string>> SqliteEngine::readAllLocked(
    const FileDescription& file, const std::vector<std::string>& ids) {
  std::vector<std::optional<std::string>> records;
  records.reserve(ids.size());
  Query query(connection_, statementsOf(file).read);
  for (const std::string& id : ids) {
    std::optional<std::string>& record = records.emplace_back();
    if (query.again().bind(1, id).step()) record.emplace(query.text(0));
  }
  return records;
}

bool SqliteEngine::exchangeAll(const FileDescription& file, const std::vector<Replacement>& all) {
  Query replacing(connection_, statementsOf(file).replace);
  for (const Replacement& each : all) {
    if (!each.before) {
      if (!exchange(file, each.id, std::nullopt, each.after)) return false;
      continue;
    }
    replacing.again().bind(1, each.id).bindBytes(2, *each.before).bindBytes(3, each.after).run();
    if (connection_.rowsChanged() == 0) return false;
    reindex(file, each.id, *each.before, each.after);
  }
  return true;
}

void SqliteEngine::reindex(const FileDescription& file, std::string_view id,
                           std::string_view before, std::string_view after) {
  for (const int attribute : file.indexed) {
    reindex(file, attribute, id, multivalue::attributeOf(before, attribute),
            multivalue::attributeOf(after, attribute));
  }
}

void SqliteEngine::reindex(const FileDescription& file, int attribute, std::string_view id,
                           std::string_view before, std::string_view after) {
  if (before == after) return;
  const std::string table = indexTable(file, attribute);
  const auto remove = [&](std::string_view value) {
    Query(connection_, "DELETE FROM " + table + " WHERE value = ?1 AND id = ?2")
        .bind(1, value)
        .bind(2, id)
        .run();
  };
  const auto put = [&](std::string_view value, bool first) {
    Query(connection_, "INSERT INTO " + table +
                           " VALUES(?1, ?2, ?3) ON CONFLICT(value, id) DO UPDATE SET first = ?3")
        .bind(1, value)
        .bind(2, id)
        .bind(3, static_cast<std::int64_t>(first))
        .run();
  };
  multivalue::changeIndex(before, after, {remove, put});
}

// A range of keys among the tests narrows the entries of an index where they are read.
std::unique_ptr<multivalue::Cursor> SqliteEngine::scan(const Scan& scan) {
  const bool indexed = scan.path != nullptr && scan.path->attribute != 0;
  std::optional<AccessPath> keys;
  if (indexed && scan.tests != nullptr) keys = multivalue::keyPath(scan.file, *scan.tests);
  Statements& statements = statementsOf(scan.file);
  Statement& own = statements.scans[shapeOf(scan, keys)];
  if (own.sql.empty()) own.sql = textOf(scan, keys);
  return std::make_unique<SqliteCursor>(connection_, scan, std::move(keys), own, statements.read);
}

std::int64_t SqliteEngine::count(const FileDescription& file, const AccessPath* path,
                                 std::int64_t limit) {
  const bool byKey = path == nullptr || path->attribute == 0;
  const std::string table = byKey ? recordTable(file) : indexTable(file, path->attribute);
  if (path == nullptr) {
    Query query(connection_, "SELECT count(*) FROM " + table);
    return query.step() ? query.number(0) : 0;
  }
  std::string sql = "SELECT count(*) FROM (SELECT 1 FROM " + table + " WHERE ";
  addCondition(sql, *path, byKey ? "id" : "value", 1);
  Query query(connection_, sql += " LIMIT ?3)");
  bindRange(query, *path, 1);
  query.bind(3, limit);
  return query.step() ? query.number(0) : 0;
}

}  // namespace localstore
