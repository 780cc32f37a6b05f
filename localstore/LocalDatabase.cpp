#include "localstore/LocalDatabase.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>
#include <utility>

#include "localstore/Catalogue.h"
#include "localstore/Commands.h"
#include "localstore/RecordTable.h"
#include "localstore/Selection.h"
#include "localstore/Sentence.h"
#include "localstore/Sqlite.h"
#include "store/StoreError.h"

namespace localstore {

namespace {

// Shared by the database object, its files and its records: the store closes with the last.
struct Engine {
  Engine(const std::string& path, Connection::Mode mode)
      : connection(path, mode), catalogue(connection) {}

  Connection connection;
  Catalogue catalogue;

  // The file is looked up inside the transaction: another process may have given it an index.
  void write(std::string_view file, std::string_view id, std::string_view record) {
    WriteScope scope(connection);
    RecordTable(connection, catalogue.forWriting(file)).write(id, record);
    scope.commit();
  }

  bool remove(std::string_view file, std::string_view id) {
    WriteScope scope(connection);
    const bool removed = RecordTable(connection, catalogue.forWriting(file)).remove(id);
    scope.commit();
    return removed;
  }
};

class LocalRecord final : public store::Record {
 public:
  LocalRecord(std::shared_ptr<Engine> engine, std::string file, std::string_view id,
              std::string_view text, bool found)
      : Record(store::DynamicArray(text), found),
        engine_(std::move(engine)),
        file_(std::move(file)),
        id_(id) {}

  void DBWrite() override { engine_->write(file_, id_, fields().text()); }

 private:
  std::shared_ptr<Engine> engine_;
  std::string file_;
  std::string id_;
};

class LocalFile final : public store::File {
 public:
  LocalFile(std::shared_ptr<Engine> engine, std::string_view name)
      : engine_(std::move(engine)), name_(name) {}

  std::unique_ptr<store::Record> ReadRecord(std::string_view id) override {
    RecordTable table(engine_->connection, engine_->catalogue.forReading(name_));
    const std::optional<std::string> text = table.read(id);
    return std::make_unique<LocalRecord>(engine_, name_, id, text.value_or(""), text.has_value());
  }

  int DeleteRecord(std::string_view id) override {
    return engine_->remove(name_, id) ? 0 : static_cast<int>(store::kRecordNotFound);
  }

 private:
  std::shared_ptr<Engine> engine_;
  std::string name_;
};

class LocalTransaction final : public Transaction {
 public:
  explicit LocalTransaction(std::shared_ptr<Engine> engine)
      : engine_(std::move(engine)), scope_(std::make_unique<WriteScope>(engine_->connection)) {}
  LocalTransaction(const LocalTransaction&) = delete;
  LocalTransaction& operator=(const LocalTransaction&) = delete;
  ~LocalTransaction() override {
    scope_.reset();
    engine_->catalogue.forget();
  }

  void commit() override { scope_->commit(); }

 private:
  std::shared_ptr<Engine> engine_;
  std::unique_ptr<WriteScope> scope_;  // ends before what it has made is forgotten
};

class SqliteDatabase final : public LocalDatabase {
 public:
  explicit SqliteDatabase(std::shared_ptr<Engine> engine) : engine_(std::move(engine)) {}

  std::unique_ptr<store::File> OpenFile(std::string_view name) override {
    return std::make_unique<LocalFile>(engine_, engine_->catalogue.forReading(name)->name);
  }

  store::DynamicArray ExecuteSentence(std::string_view request) override {
    const store::DynamicArray parts(request);
    if (isSelection(parts.get(1))) {
      return runSelection(engine_->connection, engine_->catalogue, parts.get(1), parts.get(2),
                          parts.get(3));
    }
    if (parts.empty()) refuseSentence("", 0, "the request is empty");
    for (int i = 1; i <= parts.DCount(); ++i) {
      runCommand(engine_->connection, engine_->catalogue, parts.get(i));
    }
    return {};
  }

  std::vector<std::string> fileNames() override { return engine_->catalogue.names(); }

  void createFile(std::string_view name) override { engine_->catalogue.createFile(name); }

  std::string fieldName(std::string_view file, int attribute) override {
    for (const auto& [name, number] : engine_->catalogue.forReading(file)->fields) {
      if (number == attribute) return name;
    }
    return {};
  }

  std::unique_ptr<Transaction> begin() override {
    return std::make_unique<LocalTransaction>(engine_);
  }

  void write(std::string_view file, std::string_view id, std::string_view record) override {
    engine_->write(file, id, record);
  }

  long long recordCount(std::string_view file) override {
    const auto description = engine_->catalogue.forReading(file);
    Query query(engine_->connection, "SELECT count(*) FROM " + description->recordTable());
    return query.step() ? query.number(0) : 0;
  }

  void forEachRecord(std::string_view file, const Visitor& visitor) override {
    const ReadScope scope(engine_->connection);
    RecordTable(engine_->connection, engine_->catalogue.forReading(file)).forEach(visitor);
  }

 private:
  std::shared_ptr<Engine> engine_;
};

std::filesystem::path pathOf(const std::string& utf8) {
  return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

void configure(Connection& connection, const Options& options) {
  connection.setBusyTimeout(options.busyTimeout);
  connection.execute("PRAGMA cache_size = -" + std::to_string(options.cacheSize));
  connection.execute("PRAGMA temp_store = MEMORY");
  connection.execute("PRAGMA trusted_schema = OFF");
  // Each commit is on the disk before it is confirmed, not only the ends of the log.
  connection.execute("PRAGMA synchronous = FULL");
}

void limitPages(Connection& connection, const Options& options) {
  if (options.maxPages > 0) {
    connection.execute("PRAGMA max_page_count = " + std::to_string(options.maxPages));
  }
}

}  // namespace

std::shared_ptr<LocalDatabase> openLocalDatabase(const std::string& path, const Options& options) {
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(pathOf(path), ignored)) {
    throw store::StoreError(store::kIoFailure, path + ": there is no such store");
  }
  auto engine = std::make_shared<Engine>(path, Connection::Mode::Open);
  configure(engine->connection, options);
  try {
    engine->catalogue.checkFormat();
  } catch (const store::StoreError& error) {
    if (error.code() != store::kIoFailure) throw;
    const std::string message = error.what();
    if (message.starts_with(path)) throw;
    throw store::StoreError(error.code(), path + ": " + message);
  }
  if (engine->connection.readOnly()) {
    throw store::StoreError(store::kIoFailure, path + ": the store is read-only");
  }
  limitPages(engine->connection, options);
  return std::make_shared<SqliteDatabase>(std::move(engine));
}

std::shared_ptr<LocalDatabase> createLocalDatabase(const std::string& path,
                                                   const Options& options) {
  std::error_code ignored;
  if (std::filesystem::exists(pathOf(path), ignored)) {
    throw store::StoreError(store::kIoFailure, path + ": there is such a file already");
  }
  auto engine = std::make_shared<Engine>(path, Connection::Mode::Create);
  configure(engine->connection, options);
  limitPages(engine->connection, options);
  engine->connection.execute("PRAGMA journal_mode = WAL");
  engine->catalogue.create();
  return std::make_shared<SqliteDatabase>(std::move(engine));
}

}  // namespace localstore
