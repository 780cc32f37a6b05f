// The port of multivalue/ over PostgreSQL's protocol, by ODBC. Its tables: docs/shared-store.md.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "multivalue/Engine.h"
#include "sharedstore/Odbc.h"
#include "sharedstore/ReadAhead.h"
#include "store/StoreError.h"

namespace sharedstore {

class SharedEngine final : public multivalue::Engine {
 public:
  // `settings`: what each session with the server begins with.
  explicit SharedEngine(const std::string& connection, std::vector<std::string> settings = {})
      : connection_(connection, std::move(settings)) {}

  Connection& connection() { return connection_; }

  // Makes the tables that tell of a store, in a transaction. Throws StoreError (kIoFailure) where
  // there are some already.
  void create();
  // Throws StoreError (kIoFailure) when the database holds no store, or one of another format.
  void checkFormat();

  std::vector<std::string> fileNames() override;
  std::shared_ptr<const multivalue::FileDescription> describe(std::string_view name) override;
  std::vector<std::shared_ptr<const multivalue::FileDescription>> describeAll() override;
  std::string sameName(std::string_view name) override;
  void addFile(const multivalue::FileDescription& file) override;
  std::int64_t filesVersion() override;
  std::unique_ptr<multivalue::Transaction> begin() override;
  std::optional<std::string> read(const multivalue::FileDescription& file,
                                  std::string_view id) override;
  std::optional<std::string> readLocked(const multivalue::FileDescription& file,
                                        std::string_view id) override;
  bool exchange(const multivalue::FileDescription& file, std::string_view id,
                std::optional<std::string_view> before,
                std::optional<std::string_view> after) override;
  std::vector<std::optional<std::string>> readAllLocked(
      const multivalue::FileDescription& file, const std::vector<std::string>& ids) override;
  bool exchangeAll(const multivalue::FileDescription& file,
                   const std::vector<multivalue::Replacement>& all) override;
  bool exchangeAtOnce(const multivalue::FileDescription& file, std::string_view id,
                      std::optional<std::string_view> before,
                      std::optional<std::string_view> after) override;
  void announce(const multivalue::FileDescription& file,
                const std::vector<std::string>& ids) override;
  void announceAll(const multivalue::FileDescription& file) override;
  std::unique_ptr<multivalue::Cursor> scan(const multivalue::Scan& scan) override;
  // The server finds the best of several ways by itself.
  std::int64_t count(const multivalue::FileDescription& file, const multivalue::AccessPath* path,
                     std::int64_t limit) override;

 private:
  class OneTransaction;

  std::optional<std::string> read(const multivalue::FileDescription& file, std::string_view id,
                                  std::string_view lock);

  // A reading, once more when the server was lost in it and no transaction has been lost with it.
  template <typename Reading>
  auto reading(const Reading& deed) {
    try {
      return deed();
    } catch (const store::StoreError&) {
      if (!connection_.lost() || connection_.inTransaction()) throw;
    }
    return deed();
  }

  void readAnnounced();
  // All of which there is a record, or none of which there is one.
  bool exchangeTogether(const multivalue::FileDescription& file,
                        const std::vector<const multivalue::Replacement*>& some);

  Connection connection_;
  int depth_ = 0;
  // Long enough for the letters of a block of agreements.
  ReadAhead ahead_{std::chrono::seconds(30)};
  // As a transaction has found it: files of a store stay as they are made.
  std::optional<std::int64_t> version_;
};

}  // namespace sharedstore
