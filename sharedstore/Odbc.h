// Owner types over ODBC; a return code that is no success becomes a StoreError here and nowhere
// else.
#pragma once

#ifdef _WIN32
#include <windows.h>
#endif
#include <sql.h>
#include <sqlext.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace sharedstore {

template <SQLSMALLINT Type>
struct HandleCloser {
  using pointer = SQLHANDLE;
  void operator()(SQLHANDLE handle) const { SQLFreeHandle(Type, handle); }
};
template <SQLSMALLINT Type>
using Handle = std::unique_ptr<void, HandleCloser<Type>>;

// A statement's text. What comes from a caller stands in it as digits of its bytes, and as nothing
// else: the driver takes fewer parameters than a statement for many records has, and asks the
// server about long ones.
class Sql {
 public:
  explicit Sql(std::string text = {}) : text_(std::move(text)) {}

  Sql& add(std::string_view text) {
    text_ += text;
    return *this;
  }
  Sql& bytes(std::string_view value);
  Sql& number(std::int64_t value) { return add(std::to_string(value)); }
  Sql& add(const Sql& other) { return add(other.text_); }

  const std::string& text() const { return text_; }

 private:
  std::string text_;
};

// A session with a server, and another one once that is lost: it is made when it is needed, and
// never within a transaction. Used by one thread at a time; not to be carried across a fork.
class Connection {
 public:
  // A connection string of ODBC, UTF-8, and what each session begins with. Throws StoreError
  // (kIoFailure).
  explicit Connection(const std::string& connection, std::vector<std::string> settings = {});
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection();

  // `leading`: how many statements of the text come before the last.
  void execute(const std::string& sql, int leading = 0);

  // What goes to the server together with the next statement, ahead of it. Dying: it has no
  // meaning once the transaction has ended, or is undone to a savepoint.
  void later(const std::string& sql, bool dying);
  // True when the last of these was still to go, and does not any more.
  bool takeBack(const std::string& sql);

  // A transaction begins with its first statement.
  void begin();
  // Throws StoreError: when nothing was kept, or, with kOutcomeUnknown, when the server was lost
  // before it had confirmed.
  void commit();
  void rollback();
  void rollBackTo(const std::string& savepoint);
  bool inTransaction() const { return inTransaction_; }
  // In a session, a new one where the last is lost.
  Connection& awake();
  // The session is over, by no deed of this client.
  bool lost() const { return lost_; }
  // Another number for each session.
  int session() const { return session_; }

  // Another number whenever a transaction has begun or ended, as a whole or in part.
  int epoch() const { return epoch_; }
  // A name that no other cursor of the session has.
  std::string newCursor() { return "tessaline_" + std::to_string(++cursors_); }

  // How many messages have gone to the server, each with an answer, since it was connected.
  int messages() const { return messages_; }
  // The SQLSTATE of the last failure.
  const std::string& lastState() const { return lastState_; }
  // Throws StoreError, or its Conflict, with the server's text.
  [[noreturn]] void fail(SQLSMALLINT type, SQLHANDLE handle);

 private:
  friend class Statement;
  struct Later {
    std::string sql;
    bool dying;
  };

  void forgetDying();
  void setAutocommit(bool on);
  void connect();
  bool isOver(const std::string& state) const;

  const std::string connection_;
  const std::vector<std::string> settings_;
  Handle<SQL_HANDLE_ENV> environment_;
  Handle<SQL_HANDLE_DBC> handle_;
  std::vector<Later> later_;
  bool inTransaction_ = false;
  // A statement of the transaction has failed: the server keeps nothing of it, though it takes the
  // end of it for a success.
  bool dead_ = false;
  bool lost_ = false;
  int session_ = 0;
  int epoch_ = 0;
  int messages_ = 0;
  int cursors_ = 0;
  std::string lastState_;
};

// One execution of a statement; its result is the last statement's of the text. The connection must
// outlive it.
class Statement {
 public:
  // `leading`: how many statements of the text come before the last.
  Statement(Connection& connection, const Sql& sql, int leading = 0);
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;
  ~Statement() = default;

  // False after the last row. Columns are numbered from 0.
  bool next();
  std::string bytes(int column);
  std::string text(int column);
  std::int64_t number(int column) const;

 private:
  void check(SQLRETURN result) const;
  std::string get(int column, SQLSMALLINT type);

  Connection& connection_;
  Handle<SQL_HANDLE_STMT> handle_;
  std::string room_;  // for what the driver hands out
};

// Rows of a selection, fetched in blocks, all in one state of the store. Outside a transaction the
// server keeps them aside, so that none stays open between two blocks.
class Rows {
 public:
  Rows(Connection& connection, const Sql& selection);
  Rows(const Rows&) = delete;
  Rows& operator=(const Rows&) = delete;
  ~Rows();

  bool next();
  std::string bytes(int column) const { return block_->bytes(column); }
  std::int64_t number(int column) const { return block_->number(column); }

  static constexpr int kBlock = 500;

 private:
  Connection& connection_;
  const std::string name_;
  const bool held_;
  const int epoch_;
  const int session_;
  std::unique_ptr<Statement> block_;
  int taken_ = 0;  // of the block
};

}  // namespace sharedstore
