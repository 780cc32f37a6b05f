// The port of multivalue/ over one SQLite file. Its tables: docs/local-store.md.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "localstore/Sqlite.h"
#include "multivalue/Engine.h"

namespace localstore {

class SqliteEngine final : public multivalue::Engine {
 public:
  SqliteEngine(const std::string& path, Connection::Mode mode) : connection_(path, mode) {}

  Connection& connection() { return connection_; }
  // As statements name them.
  static std::string recordTable(const multivalue::FileDescription& file);
  static std::string indexTable(const multivalue::FileDescription& file, int attribute);

  // Makes the tables of an empty database.
  void create();
  // Throws StoreError (kIoFailure) when the database is no store, one of a later format, or has
  // anything but the tables of a store, as they are made here. Nothing else is read before.
  void checkFormat();

  std::vector<std::string> fileNames() override;
  std::shared_ptr<const multivalue::FileDescription> describe(std::string_view name) override;
  std::string sameName(std::string_view name) override;
  void addFile(const multivalue::FileDescription& file) override;
  std::int64_t filesVersion() override;
  std::unique_ptr<multivalue::Transaction> begin() override;
  std::optional<std::string> read(const multivalue::FileDescription& file,
                                  std::string_view id) override;
  // One client writes at a time.
  std::optional<std::string> readLocked(const multivalue::FileDescription& file,
                                        std::string_view id) override {
    return read(file, id);
  }
  bool exchange(const multivalue::FileDescription& file, std::string_view id,
                std::optional<std::string_view> before,
                std::optional<std::string_view> after) override;
  std::vector<std::optional<std::string>> readAllLocked(
      const multivalue::FileDescription& file, const std::vector<std::string>& ids) override;
  bool exchangeAll(const multivalue::FileDescription& file,
                   const std::vector<multivalue::Replacement>& all) override;
  std::unique_ptr<multivalue::Cursor> scan(const multivalue::Scan& scan) override;
  std::int64_t count(const multivalue::FileDescription& file, const multivalue::AccessPath* path,
                     std::int64_t limit) override;

 private:
  // On the records of a file.
  struct Statements {
    std::string read;
    std::string insert;
    std::string replace;
    std::string remove;
    std::map<int, Statement> scans;  // by their shape
  };

  void checkTables();
  Statements& statementsOf(const multivalue::FileDescription& file);
  void reindex(const multivalue::FileDescription& file, std::string_view id,
               std::string_view before, std::string_view after);
  void reindex(const multivalue::FileDescription& file, int attribute, std::string_view id,
               std::string_view before, std::string_view after);

  Connection connection_;
  std::int64_t checked_ = -1;  // the version of the tables that were looked at
  std::map<std::string, Statements, std::less<>> statements_;
};

struct Options;

// An engine on an existing store, ready for use; LocalDatabase.h says what is thrown. What can be
// read as a whole alone, for nothing can be written beside it, is read so.
std::unique_ptr<SqliteEngine> openEngine(const std::string& path, const Options& options,
                                         Connection::Mode mode);

}  // namespace localstore
