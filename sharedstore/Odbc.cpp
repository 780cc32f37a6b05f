#include "sharedstore/Odbc.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <mutex>
#include <utility>

#include "multivalue/Engine.h"
#include "sharedstore/Address.h"
#include "sharedstore/DataSources.h"
#include "store/StoreError.h"
#include "text/Utf8.h"

namespace sharedstore {

namespace {

using Wide = std::vector<SQLWCHAR>;

Wide wideOf(std::string_view utf8) {
  const std::u16string units = text::toUtf16(utf8);
  return {units.begin(), units.end()};
}

std::string utf8Of(const SQLWCHAR* units, std::size_t count) {
  return text::fromUtf16(std::u16string(units, units + count));
}

bool succeeded(SQLRETURN result) {
  return result == SQL_SUCCESS || result == SQL_SUCCESS_WITH_INFO;
}

// What driver and server say, without the rows that the server adds to it.
std::string plainText(std::string text) {
  for (const std::string_view tail : {"\nDETAIL:", ";\nError while", "\nError while"}) {
    text.resize(std::min(text.find(tail), text.size()));
  }
  std::replace(text.begin(), text.end(), '\n', ' ');
  return text;
}

// Several statements go in one message; an error is undone by this code, not by a savepoint around
// each statement; results are not cut.
constexpr std::string_view kOwnSettings =
    ";UseServerSidePrepare=0;UseDeclareFetch=0;Protocol=7.4-0;ByteaAsLongVarBinary=1"
    ";MaxLongVarcharSize=1073741823";

// The driver changes the locale of the whole process while it connects, and reads what it has put
// aside of it: two threads at once would read what is freed.
std::mutex& oneConnects() {
  static std::mutex mutex;
  return mutex;
}

void* option(SQLULEN value) {
  return reinterpret_cast<void*>(value);  // as ODBC passes numbers
}

}  // namespace

Sql& Sql::bytes(std::string_view value) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  text_.reserve(text_.size() + 2 * value.size() + 16);
  text_ += "E'\\\\x";
  for (const char c : value) {
    const auto byte = static_cast<unsigned char>(c);
    text_ += kDigits[byte >> 4U];
    text_ += kDigits[byte & 15U];
  }
  text_ += "'::bytea";
  return *this;
}

Connection::Connection(const std::string& connection, std::vector<std::string> settings)
    : connection_(connection), settings_(std::move(settings)) {
  SQLHANDLE made = nullptr;
  if (!succeeded(SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &made))) {
    throw store::StoreError(store::kIoFailure, "ODBC cannot be started");
  }
  environment_.reset(made);
  SQLSetEnvAttr(made, SQL_ATTR_ODBC_VERSION, option(SQL_OV_ODBC3), 0);
  connect();
}

void Connection::connect() {
  if (handle_) SQLDisconnect(handle_.get());
  SQLHANDLE made = nullptr;
  if (!succeeded(SQLAllocHandle(SQL_HANDLE_DBC, environment_.get(), &made))) {
    fail(SQL_HANDLE_ENV, environment_.get());
  }
  handle_.reset(made);
  Wide whole = wideOf(withBounds(connection_, dataSourceSetting) + std::string(kOwnSettings));
  SQLRETURN result = SQL_ERROR;
  {
    const std::lock_guard<std::mutex> alone(oneConnects());
    result = SQLDriverConnectW(made, nullptr, whole.data(), static_cast<SQLSMALLINT>(whole.size()),
                               nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT);
  }
  if (!succeeded(result)) fail(SQL_HANDLE_DBC, made);
  lost_ = false;
  ++session_;
  later_.clear();
  // Not with the first statement: a transaction that is undone would take them with it.
  for (const std::string& setting : settings_) execute(setting);
}

Connection::~Connection() {
  if (inTransaction_ && !lost_) SQLEndTran(SQL_HANDLE_DBC, handle_.get(), SQL_ROLLBACK);
  SQLDisconnect(handle_.get());
}

void Connection::execute(const std::string& sql, int leading) {
  const Statement done(*this, Sql(sql), leading);
}

Connection& Connection::awake() {
  if (lost_ && !inTransaction_) connect();
  return *this;
}

void Connection::later(const std::string& sql, bool dying) { later_.push_back({sql, dying}); }

bool Connection::takeBack(const std::string& sql) {
  if (later_.empty() || later_.back().sql != sql) return false;
  later_.pop_back();
  return true;
}

void Connection::forgetDying() {
  ++epoch_;
  std::erase_if(later_, [](const Later& each) { return each.dying; });
}

void Connection::setAutocommit(bool on) {
  const SQLRETURN result =
      SQLSetConnectAttrW(handle_.get(), SQL_ATTR_AUTOCOMMIT,
                         option(on ? SQL_AUTOCOMMIT_ON : SQL_AUTOCOMMIT_OFF), SQL_IS_UINTEGER);
  if (!succeeded(result)) fail(SQL_HANDLE_DBC, handle_.get());
}

void Connection::begin() {
  ++epoch_;
  if (lost_) connect();
  setAutocommit(false);
  inTransaction_ = true;
  dead_ = false;
}

bool Connection::isOver(const std::string& state) const {
  if (state.starts_with("08") || state == "57P01" || state == "57P02" || state == "57P03") {
    return true;
  }
  SQLUINTEGER dead = SQL_CD_FALSE;
  return succeeded(
             SQLGetConnectAttrW(handle_.get(), SQL_ATTR_CONNECTION_DEAD, &dead, 0, nullptr)) &&
         dead == SQL_CD_TRUE;
}

void Connection::commit() {
  if (dead_) {
    rollback();
    throw store::StoreError(store::kIoFailure,
                            "nothing of the transaction was kept: a statement of it has failed");
  }
  forgetDying();
  inTransaction_ = false;
  ++messages_;
  const SQLRETURN result = SQLEndTran(SQL_HANDLE_DBC, handle_.get(), SQL_COMMIT);
  if (!succeeded(result)) {
    try {
      fail(SQL_HANDLE_DBC, handle_.get());
    } catch (const store::StoreError& error) {
      if (lost_) {
        throw store::StoreError(
            store::kOutcomeUnknown,
            std::string("whether it was written is not known: ") + error.what());
      }
      rollback();
      throw;
    }
  }
  setAutocommit(true);
}

void Connection::rollback() {
  forgetDying();
  inTransaction_ = false;
  dead_ = false;
  if (lost_) return;
  ++messages_;
  const SQLRETURN result = SQLEndTran(SQL_HANDLE_DBC, handle_.get(), SQL_ROLLBACK);
  if (!succeeded(result)) fail(SQL_HANDLE_DBC, handle_.get());
  setAutocommit(true);
}

void Connection::rollBackTo(const std::string& savepoint) {
  forgetDying();
  std::vector<Later> others;
  std::swap(others, later_);
  execute("ROLLBACK TO SAVEPOINT " + savepoint);
  dead_ = false;
  std::swap(others, later_);
  later("RELEASE SAVEPOINT " + savepoint, true);
}

void Connection::fail(SQLSMALLINT type, SQLHANDLE handle) {
  if (inTransaction_) dead_ = true;
  std::array<SQLWCHAR, 6> state{};
  std::array<SQLWCHAR, 2048> message{};
  SQLINTEGER native = 0;
  SQLSMALLINT size = 0;
  const SQLRETURN told = SQLGetDiagRecW(type, handle, 1, state.data(), &native, message.data(),
                                        static_cast<SQLSMALLINT>(message.size()), &size);
  lastState_.clear();
  std::string text = "the driver tells nothing";
  if (succeeded(told)) {
    lastState_ = utf8Of(state.data(), 5);
    const auto whole = std::min(static_cast<std::size_t>(size), message.size() - 1);
    text = plainText(utf8Of(message.data(), whole));
  }
  text = withoutPasswords(lastState_ + " " + text, connection_);
  if (isOver(lastState_)) {
    lost_ = true;
    if (inTransaction_) throw multivalue::Conflict(text, store::kIoFailure);
  }
  if (lastState_ == "40001" || lastState_ == "40P01") throw multivalue::Conflict(text);
  const bool waited = lastState_ == "55P03" || lastState_ == "57014";
  throw store::StoreError(waited ? store::kBusy : store::kIoFailure, text);
}

Statement::Statement(Connection& connection, const Sql& sql, int leading)
    : connection_(connection) {
  connection.awake();
  SQLHANDLE made = nullptr;
  if (!succeeded(SQLAllocHandle(SQL_HANDLE_STMT, connection.handle_.get(), &made))) {
    connection.fail(SQL_HANDLE_DBC, connection.handle_.get());
  }
  handle_.reset(made);
  std::string text;
  for (const Connection::Later& each : connection.later_) {
    text += each.sql + ";";
    ++leading;
  }
  connection.later_.clear();
  text += sql.text();
  Wide whole = wideOf(text);
  ++connection.messages_;
  const SQLRETURN result =
      SQLExecDirectW(made, whole.data(), static_cast<SQLINTEGER>(whole.size()));
  if (result != SQL_NO_DATA) check(result);
  for (; leading > 0; --leading) check(SQLMoreResults(made));
}

void Statement::check(SQLRETURN result) const {
  if (!succeeded(result)) connection_.fail(SQL_HANDLE_STMT, handle_.get());
}

bool Statement::next() {
  const SQLRETURN result = SQLFetch(handle_.get());
  if (result == SQL_NO_DATA) return false;
  check(result);
  return true;
}

std::string Statement::get(int column, SQLSMALLINT type) {
  constexpr std::size_t kRoom = 4096;
  const std::size_t ending = type == SQL_C_CHAR ? 1 : 0;  // each part of a text ends with a zero
  if (room_.size() < kRoom) room_.resize(kRoom);
  std::size_t filled = 0;
  for (;;) {
    SQLLEN left = 0;
    const std::size_t room = room_.size() - filled;
    const SQLRETURN result = SQLGetData(handle_.get(), static_cast<SQLUSMALLINT>(column + 1), type,
                                        room_.data() + filled, static_cast<SQLLEN>(room), &left);
    check(result);
    if (left == SQL_NULL_DATA) return {};
    const bool whole = left != SQL_NO_TOTAL && static_cast<std::size_t>(left) + ending <= room;
    if (whole) return room_.substr(0, filled + static_cast<std::size_t>(left));
    filled += room - ending;
    room_.resize(left == SQL_NO_TOTAL
                     ? room_.size() * 2
                     : filled + static_cast<std::size_t>(left) - (room - ending) + ending);
  }
}

std::string Statement::bytes(int column) { return get(column, SQL_C_BINARY); }

std::string Statement::text(int column) { return get(column, SQL_C_CHAR); }

std::int64_t Statement::number(int column) const {
  SQLBIGINT value = 0;
  SQLLEN size = 0;
  check(SQLGetData(handle_.get(), static_cast<SQLUSMALLINT>(column + 1), SQL_C_SBIGINT, &value,
                   sizeof value, &size));
  return size == SQL_NULL_DATA ? 0 : value;
}

Rows::Rows(Connection& connection, const Sql& selection)
    : connection_(connection),
      name_(connection.newCursor()),
      held_(!connection.inTransaction()),
      epoch_(connection.epoch()),
      session_(connection.awake().session()) {
  Sql sql("DECLARE " + name_ + (held_ ? " CURSOR WITH HOLD FOR " : " CURSOR FOR "));
  sql.add(selection).add("; FETCH " + std::to_string(kBlock) + " FROM " + name_);
  block_ = std::make_unique<Statement>(connection, sql, 1);
}

// A cursor of a transaction ends with it; so does one that was made in a part that was undone.
Rows::~Rows() {
  const bool there = connection_.session() == session_ && !connection_.lost();
  if (there && (held_ || connection_.epoch() == epoch_))
    connection_.later("CLOSE " + name_, !held_);
}

bool Rows::next() {
  for (;;) {
    if (block_->next()) {
      ++taken_;
      return true;
    }
    if (taken_ < kBlock) return false;
    taken_ = 0;
    if (connection_.session() != session_) {
      throw store::StoreError(store::kIoFailure, "the server was lost while its answer was read");
    }
    block_ = std::make_unique<Statement>(connection_,
                                         Sql("FETCH " + std::to_string(kBlock) + " FROM " + name_));
  }
}

}  // namespace sharedstore
