// A store in a file of a test's own.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "localstore/LocalDatabase.h"
#include "store/Request.h"
#include "tests/support/StoreText.h"
#include "tests/support/TemporaryFolder.h"

class LocalStore {
 public:
  explicit LocalStore(const localstore::Options& options = {})
      : database_(localstore::createLocalDatabase(path(), options)) {}

  std::string path() const { return folder_ / "test.store"; }
  multivalue::Database& operator*() const { return *database_; }
  multivalue::Database* operator->() const { return database_.get(); }

  std::string select(std::string_view sentence) const {
    return database_->ExecuteSentence(store::request(sentence, "", "0")).text();
  }

 private:
  TemporaryFolder folder_;
  std::shared_ptr<multivalue::Database> database_;
};
