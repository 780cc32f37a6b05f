// Owner types over the SQLite library; a result code that is no success becomes a StoreError here
// and nowhere else.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace localstore {

struct StatementCloser {
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using StatementHandle = std::unique_ptr<sqlite3_stmt, StatementCloser>;

class Connection;

// A statement's text and what is prepared of it, at rest. Of one connection, which must outlive it.
struct Statement {
  std::string sql;
  std::vector<StatementHandle> rest;
};

// One execution of a prepared statement. Gives the statement back when it goes out of scope, so
// that no read transaction stays open behind it. The connection must outlive it.
class Query {
 public:
  Query(Connection& connection, const std::string& sql);
  // Spares the connection looking for the text.
  Query(Connection& connection, Statement& statement);
  Query(const Query&) = delete;
  Query& operator=(const Query&) = delete;
  ~Query();

  // Parameters are numbered from 1. The text must stay alive until the last step.
  Query& bind(int parameter, std::string_view text);
  Query& bindBytes(int parameter, std::string_view bytes);
  Query& bind(int parameter, std::int64_t number);

  // The steps end, as if there were no more rows, when they have taken so many of SQLite's
  // instructions.
  void giveUpAfter(int instructions);
  bool givenUp() const { return givenUp_; }

  // To its beginning, for other parameters.
  Query& again();
  // True when there is a row. Throws StoreError.
  bool step();
  // Runs a statement that gives no row (or whose rows do not matter).
  void run();

  // Columns are numbered from 0; a view lives until the next step.
  std::string_view text(int column) const;
  std::int64_t number(int column) const;

 private:
  void check(int result) const;
  int stepWithPatience();

  void take(const std::string& sql);

  Connection& connection_;
  // Where the statements of this text are while they are at rest.
  std::vector<StatementHandle>& rest_;
  StatementHandle statement_;
  int patience_ = 0;
  bool givenUp_ = false;
};

// An open SQLite file. Triggers and views of the file are off. Not to be carried across a fork.
class Connection {
 public:
  // Whole: only read, and by nobody written meanwhile; nothing is put beside the file, and what
  // stands in a log beside it is not looked at.
  enum class Mode { Open, Create, Read, Whole };

  // The path is UTF-8 on every system. Throws StoreError (kIoFailure) when the file cannot be
  // opened.
  Connection(const std::string& path, Mode mode);
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection() = default;

  void execute(const std::string& sql);
  // Makes this file a copy of the other's, as that one is at this moment.
  void copyFrom(Connection& source);
  // Takes the file for itself, whatever it holds; false when another has it open. For good.
  bool lockFile();
  // True between the beginning and the end of a transaction.
  bool inTransaction() const;
  bool readOnly() const;
  // By the last statement that changed any.
  std::int64_t rowsChanged() const;
  void setBusyTimeout(int milliseconds);

  // Throws the StoreError that stands for an SQLite result.
  [[noreturn]] void fail(int result) const;
  // Throws StoreError (kIoFailure) that names the file.
  [[noreturn]] void refuse(const std::string& reason) const;

 private:
  friend class Query;
  friend class WriteScope;
  struct Closer {
    void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
  };

  void runNothingOfTheFile();
  StatementHandle prepare(std::string_view sql);

  std::string path_;
  std::unique_ptr<sqlite3, Closer> database_;
  int writeScopes_ = 0;  // open ones
  // Prepared statements at rest, by their text; declared last, so that they go first.
  std::unordered_map<std::string, std::vector<StatementHandle>> statements_;
};

// Everything done between its making and commit() happens, or nothing does. Inside another one it
// is a part of that one: undone alone, kept with the whole. When SQLite has undone the whole by
// itself, on a full disk for instance, the rest of it fails (kIoFailure) to its end.
class WriteScope {
 public:
  // Waits for another process's writer as long as the connection's busy timeout says, then throws
  // StoreError (kBusy).
  explicit WriteScope(Connection& connection);
  WriteScope(const WriteScope&) = delete;
  WriteScope& operator=(const WriteScope&) = delete;
  ~WriteScope();

  void commit();

 private:
  void requireTransaction() const;

  Connection& connection_;
  bool nested_;
  bool open_ = true;
};

// All reads in its life see the same state of the store.
class ReadScope {
 public:
  explicit ReadScope(Connection& connection);
  ReadScope(const ReadScope&) = delete;
  ReadScope& operator=(const ReadScope&) = delete;
  ~ReadScope();

 private:
  Connection& connection_;
  bool nested_;
};

}  // namespace localstore
