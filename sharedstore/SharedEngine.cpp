#include "sharedstore/SharedEngine.h"

#include <algorithm>
#include <map>
#include <utility>

#include "multivalue/Catalogue.h"
#include "multivalue/RecordText.h"
#include "sharedstore/CutEntries.h"
#include "sharedstore/ExchangeStatements.h"
#include "sharedstore/ScanStatement.h"
#include "store/StoreError.h"

namespace sharedstore {

using multivalue::FileDescription;
using multivalue::Replacement;
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
    engine_.ahead_.forget();
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

std::vector<std::shared_ptr<const FileDescription>> SharedEngine::describeAll() {
  const Sql sql(
      "SELECT 0, name, ''::bytea, 0 FROM store_file"
      " UNION ALL SELECT 1, file, name, attribute FROM store_dictionary"
      " UNION ALL SELECT 2, file, ''::bytea, attribute FROM store_index"
      " UNION ALL SELECT 3, ''::bytea, ''::bytea, files FROM store_state ORDER BY 1");
  Statement found = reading([&] { return Statement(connection_, sql); });
  std::map<std::string, std::shared_ptr<FileDescription>> files;
  while (found.next()) {
    const std::int64_t kind = found.number(0);
    const std::int64_t number = found.number(3);
    if (kind == 3) {
      for (const auto& [name, file] : files) file->version = number;
      continue;
    }
    std::string name = found.bytes(1);
    if (kind == 0)
      files.emplace(name, std::make_shared<FileDescription>()).first->second->name = name;
    const auto file = files.find(name);
    if (file == files.end()) continue;
    if (kind == 1) file->second->fields.emplace(found.bytes(2), static_cast<int>(number));
    if (kind == 2) file->second->indexed.push_back(static_cast<int>(number));
  }
  std::vector<std::shared_ptr<const FileDescription>> all;
  for (const auto& [name, file] : files) {
    std::sort(file->indexed.begin(), file->indexed.end());
    all.push_back(file);
  }
  return all;
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
  if (depth_ == 0) {
    if (ahead_.expects(file.name, id)) readAnnounced();
    if (auto known = ahead_.take(file.name, id)) return *std::move(known);
  }
  return read(file, id, "");
}

std::optional<std::string> SharedEngine::readLocked(const FileDescription& file,
                                                    std::string_view id) {
  return read(file, id, " FOR SHARE");
}

void SharedEngine::announce(const FileDescription& file, const std::vector<std::string>& ids) {
  if (depth_ == 0) ahead_.announce(file.name, ids);
}

void SharedEngine::announceAll(const FileDescription& file) {
  if (depth_ == 0) ahead_.announceAll(file.name);
}

// Where that fails though the server is there, what is asked for is read by itself.
void SharedEngine::readAnnounced() {
  try {
    reading([&] { ahead_.read(connection_); });
  } catch (const store::StoreError&) {
    ahead_.forget();
    if (connection_.lost()) throw;
  }
}

bool SharedEngine::exchange(const FileDescription& file, std::string_view id,
                            std::optional<std::string_view> before,
                            std::optional<std::string_view> after) {
  if (!before && !after) return !read(file, id);
  const Exchange parts = exchangeStatements(file, id, before, after);
  {
    Sql sql = parts.record;
    Statement done(connection_, sql.add(" SELECT count(*) FROM done"));
    if (!done.next() || done.number(0) == 0) return false;
  }
  for (const Sql& each : parts.additions) const Statement added(connection_, each);
  return true;
}

std::vector<std::optional<std::string>> SharedEngine::readAllLocked(
    const FileDescription& file, const std::vector<std::string>& ids) {
  std::vector<std::optional<std::string>> records(ids.size());
  if (ids.empty()) return records;
  Sql sql("SELECT id, record FROM " + recordTable(file.name) + " WHERE id IN (");
  std::map<std::string_view, std::size_t> places;
  for (const std::string& id : ids) {
    sql.add(places.empty() ? "" : ", ").bytes(id);
    places.emplace(id, places.size());
  }
  Statement found(connection_, sql.add(") ORDER BY id FOR SHARE"));
  while (found.next()) records[places.at(found.bytes(0))] = found.bytes(1);
  return records;
}

// Those that are there and those that are not: a message each, with the entries ahead.
bool SharedEngine::exchangeAll(const FileDescription& file, const std::vector<Replacement>& all) {
  std::vector<const Replacement*> changed;
  std::vector<const Replacement*> added;
  for (const Replacement& each : all) {
    requireKey(each.id);
    (each.before ? changed : added).push_back(&each);
  }
  return exchangeTogether(file, changed) && exchangeTogether(file, added);
}

bool SharedEngine::exchangeTogether(const FileDescription& file,
                                    const std::vector<const Replacement*>& some) {
  if (some.empty()) return true;
  Sql sql;
  int leading = 0;
  for (const Sql& each : entryStatements(file, some)) {
    sql.add(each).add(";");
    ++leading;
  }
  const bool present = some.front()->before.has_value();
  sql.add(present ? updated(file, some) : inserted(file, some));
  Statement done(connection_, sql.add(" SELECT count(*) FROM done"), leading);
  return done.next() && done.number(0) == std::ssize(some);
}

// Several statements of one message are one transaction, which an error undoes: the division is
// one where nothing was changed, or where a file may have been described anew.
bool SharedEngine::exchangeAtOnce(const FileDescription& file, std::string_view id,
                                  std::optional<std::string_view> before,
                                  std::optional<std::string_view> after) {
  constexpr std::string_view kDividedByZero = "22012";
  if ((!before && !after) || file.version < 0) return false;
  ahead_.forget(file.name, id);
  const Exchange parts = exchangeStatements(file, id, before, after);
  Sql sql = parts.record;
  sql.add(" SELECT 1 / count(*) FROM done, store_state WHERE files = ").number(file.version);
  for (const Sql& each : parts.additions) sql.add(";").add(each);
  const int sent = connection_.awake().messages();
  try {
    const Statement done(connection_, sql, static_cast<int>(parts.additions.size()));
    return true;
  } catch (const store::StoreError& failure) {
    if (connection_.lastState() == kDividedByZero) return false;
    if (!connection_.lost() || connection_.messages() == sent) throw;
    throw store::StoreError(store::kOutcomeUnknown,
                            std::string("whether it was written is not known: ") + failure.what());
  }
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
