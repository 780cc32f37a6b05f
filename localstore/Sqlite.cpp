#include "localstore/Sqlite.h"

#include <utility>

#include "store/StoreError.h"

namespace localstore {

namespace {

unsigned codeOf(int result) {
  switch (result & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return store::kBusy;
    case SQLITE_FULL:
    case SQLITE_IOERR:
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
    case SQLITE_CANTOPEN:
    case SQLITE_READONLY:
    case SQLITE_PERM:
    case SQLITE_AUTH:
      return store::kIoFailure;
    case SQLITE_TOOBIG:
      return store::kBadValue;
    default:
      return store::kFailed;
  }
}

const char* explanation(int result) {
  switch (result & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return "another process kept the store too long";
    case SQLITE_FULL:
      return "the disk is full";
    case SQLITE_NOTADB:
      return "the file is no store";
    case SQLITE_CORRUPT:
      return "the store is damaged";
    case SQLITE_CANTOPEN:
      return "the store cannot be opened";
    case SQLITE_READONLY:
      return "the store is read-only";
    default:
      return sqlite3_errstr(result);
  }
}

int flagsOf(Connection::Mode mode) {
  switch (mode) {
    case Connection::Mode::Create:
      return SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
    case Connection::Mode::Read:
      return SQLITE_OPEN_READONLY;
    case Connection::Mode::Whole:
      return SQLITE_OPEN_READONLY | SQLITE_OPEN_URI;
    case Connection::Mode::Open:
      break;
  }
  return SQLITE_OPEN_READWRITE;
}

// The address by which SQLite takes a file for one that nobody changes.
std::string wholeFile(const std::string& path) {
  constexpr std::string_view kPlain =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._/:";
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string address = "file:";
#ifdef _WIN32
  if (path.size() > 1 && path[1] == ':') address += "///";
#endif
  for (char c : path) {
#ifdef _WIN32
    if (c == '\\') c = '/';
#endif
    if (kPlain.find(c) != std::string_view::npos) {
      address += c;
      continue;
    }
    const auto byte = static_cast<unsigned char>(c);
    address += {'%', kDigits[byte / 16], kDigits[byte % 16]};
  }
  return address + "?immutable=1";
}

}  // namespace

Query::Query(Connection& connection, const std::string& sql)
    : connection_(connection), rest_(connection.statements_[sql]) {
  take(sql);
}

Query::Query(Connection& connection, Statement& statement)
    : connection_(connection), rest_(statement.rest) {
  take(statement.sql);
}

void Query::take(const std::string& sql) {
  if (rest_.empty()) {
    statement_ = connection_.prepare(sql);
  } else {
    statement_ = std::move(rest_.back());
    rest_.pop_back();
  }
}

Query::~Query() {
  sqlite3_reset(statement_.get());
  sqlite3_clear_bindings(statement_.get());
  rest_.push_back(std::move(statement_));
}

void Query::check(int result) const {
  if (result != SQLITE_OK) connection_.fail(result);
}

Query& Query::bind(int parameter, std::string_view text) {
  // A null pointer would bind NULL.
  const char* start = text.data() == nullptr ? "" : text.data();
  check(sqlite3_bind_text64(statement_.get(), parameter, start, text.size(), SQLITE_STATIC,
                            SQLITE_UTF8));
  return *this;
}

Query& Query::bindBytes(int parameter, std::string_view bytes) {
  const char* start = bytes.data() == nullptr ? "" : bytes.data();
  check(sqlite3_bind_blob64(statement_.get(), parameter, start, bytes.size(), SQLITE_STATIC));
  return *this;
}

Query& Query::bind(int parameter, std::int64_t number) {
  check(sqlite3_bind_int64(statement_.get(), parameter, number));
  return *this;
}

void Query::giveUpAfter(int instructions) {
  // The instructions are counted on from the statement's earlier uses.
  sqlite3_stmt_status(statement_.get(), SQLITE_STMTSTATUS_VM_STEP, 1);
  patience_ = instructions;
}

// Other statements of the connection, between two steps, are let alone.
int Query::stepWithPatience() {
  if (givenUp_) return SQLITE_DONE;
  sqlite3* const database = connection_.database_.get();
  sqlite3_progress_handler(
      database, patience_, [](void*) { return 1; }, nullptr);
  const int result = sqlite3_step(statement_.get());
  sqlite3_progress_handler(database, 0, nullptr, nullptr);
  givenUp_ = result == SQLITE_INTERRUPT;
  return givenUp_ ? SQLITE_DONE : result;
}

Query& Query::again() {
  // What the last step failed with has been thrown then.
  sqlite3_reset(statement_.get());
  return *this;
}

bool Query::step() {
  const int result = patience_ > 0 ? stepWithPatience() : sqlite3_step(statement_.get());
  if (result == SQLITE_ROW) return true;
  if (result != SQLITE_DONE) connection_.fail(result);
  return false;
}

void Query::run() {
  while (step()) {
  }
}

std::string_view Query::text(int column) const {
  // Asked for as bytes, a text is not copied to end it with a zero.
  sqlite3_value* const value = sqlite3_column_value(statement_.get(), column);
  const void* bytes = sqlite3_value_blob(value);
  const int size = sqlite3_value_bytes(value);
  if (bytes == nullptr) return {};
  return {static_cast<const char*>(bytes), static_cast<std::size_t>(size)};
}

std::int64_t Query::number(int column) const {
  return sqlite3_column_int64(statement_.get(), column);
}

Connection::Connection(const std::string& path, Mode mode) : path_(path) {
  sqlite3* opened = nullptr;
  const std::string name = mode == Mode::Whole ? wholeFile(path) : path;
  const int result = sqlite3_open_v2(name.c_str(), &opened, flagsOf(mode), nullptr);
  database_.reset(opened);
  if (result != SQLITE_OK) fail(result);
  sqlite3_extended_result_codes(opened, 1);
  runNothingOfTheFile();
}

// Whoever can put a file in the place of a store could have it run statements of their own.
void Connection::runNothingOfTheFile() {
  constexpr std::pair<int, int> kSettings[] = {{SQLITE_DBCONFIG_DEFENSIVE, 1},
                                               {SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0},
                                               {SQLITE_DBCONFIG_ENABLE_TRIGGER, 0},
                                               {SQLITE_DBCONFIG_ENABLE_VIEW, 0}};
  for (const auto& [setting, on] : kSettings) {
    const int result = sqlite3_db_config(database_.get(), setting, on, nullptr);
    if (result != SQLITE_OK) fail(result);
  }
}

void Connection::execute(const std::string& sql) {
  const int result = sqlite3_exec(database_.get(), sql.c_str(), nullptr, nullptr, nullptr);
  if (result != SQLITE_OK) fail(result);
}

void Connection::copyFrom(Connection& source) {
  struct Finisher {
    void operator()(sqlite3_backup* copy) const { sqlite3_backup_finish(copy); }
  };
  std::unique_ptr<sqlite3_backup, Finisher> copy(
      sqlite3_backup_init(database_.get(), "main", source.database_.get(), "main"));
  if (!copy) fail(sqlite3_errcode(database_.get()));
  // In one step, so that nobody's write makes it begin again; in a log, writers need not wait.
  const int result = sqlite3_backup_step(copy.get(), -1);
  if (result != SQLITE_DONE) fail(result);
  const int finished = sqlite3_backup_finish(copy.release());
  if (finished != SQLITE_OK) fail(finished);
}

bool Connection::lockFile() {
  sqlite3_file* file = nullptr;
  sqlite3_file_control(database_.get(), "main", SQLITE_FCNTL_FILE_POINTER,
                       static_cast<void*>(&file));
  return file != nullptr && file->pMethods != nullptr &&
         file->pMethods->xLock(file, SQLITE_LOCK_SHARED) == SQLITE_OK &&
         file->pMethods->xLock(file, SQLITE_LOCK_EXCLUSIVE) == SQLITE_OK;
}

bool Connection::inTransaction() const { return sqlite3_get_autocommit(database_.get()) == 0; }

bool Connection::readOnly() const { return sqlite3_db_readonly(database_.get(), "main") == 1; }

std::int64_t Connection::rowsChanged() const { return sqlite3_changes64(database_.get()); }

void Connection::setBusyTimeout(int milliseconds) {
  sqlite3_busy_timeout(database_.get(), milliseconds);
}

void Connection::fail(int result) const {
  std::string message = path_ + ": " + explanation(result);
  // The library's own words name tables and columns, never what a record holds.
  if (codeOf(result) == store::kFailed && database_) {
    message += std::string(" (") + sqlite3_errmsg(database_.get()) + ")";
  }
  throw store::StoreError(codeOf(result), message);
}

void Connection::refuse(const std::string& reason) const {
  throw store::StoreError(store::kIoFailure, path_ + ": " + reason);
}

StatementHandle Connection::prepare(std::string_view sql) {
  sqlite3_stmt* prepared = nullptr;
  const int result = sqlite3_prepare_v3(database_.get(), sql.data(), static_cast<int>(sql.size()),
                                        SQLITE_PREPARE_PERSISTENT, &prepared, nullptr);
  if (result != SQLITE_OK) fail(result);
  return StatementHandle(prepared);
}

WriteScope::WriteScope(Connection& connection)
    : connection_(connection), nested_(connection.writeScopes_ > 0) {
  if (nested_) requireTransaction();
  Query(connection_, nested_ ? "SAVEPOINT part" : "BEGIN IMMEDIATE").run();
  ++connection_.writeScopes_;
}

WriteScope::~WriteScope() {
  if (!open_) return;
  --connection_.writeScopes_;
  if (!connection_.inTransaction()) return;
  try {
    connection_.execute(nested_ ? "ROLLBACK TO part; RELEASE part" : "ROLLBACK");
  } catch (const store::StoreError&) {
    // Nothing is kept of a transaction that could not be undone either: it was never committed.
  }
}

// What is written when the transaction around it is gone would be kept by itself.
void WriteScope::requireTransaction() const {
  if (connection_.inTransaction()) return;
  connection_.refuse("the transaction has been undone by an earlier failure");
}

void WriteScope::commit() {
  requireTransaction();
  Query(connection_, nested_ ? "RELEASE part" : "COMMIT").run();
  open_ = false;
  --connection_.writeScopes_;
}

ReadScope::ReadScope(Connection& connection)
    : connection_(connection), nested_(connection.inTransaction()) {
  if (!nested_) Query(connection_, "BEGIN").run();
}

ReadScope::~ReadScope() {
  if (nested_ || !connection_.inTransaction()) return;
  try {
    Query(connection_, "COMMIT").run();
  } catch (const store::StoreError&) {
    // Nothing was written; the connection's next transaction starts afresh.
  }
}

}  // namespace localstore
