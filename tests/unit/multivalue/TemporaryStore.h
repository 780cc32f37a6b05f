// A store for one test, and a client of it.
#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

#include "StoreUnderTest.h"
#include "store/Request.h"
#include "tests/support/StoreText.h"

class TemporaryStore {
 public:
  TemporaryStore() : store_(newStore()), database_(store_->connect({})) {}

  multivalue::Database& operator*() const { return *database_; }
  multivalue::Database* operator->() const { return database_.get(); }
  std::shared_ptr<multivalue::Database> connect(const Connecting& how = {}) const {
    return store_->connect(how);
  }

  const StoreUnderTest& underTest() const { return *store_; }

  void put(std::string_view file, std::string_view id,
           std::initializer_list<std::string> attributes) const {
    database_->createFile(file);
    database_->write(file, id, recordText(attributes));
  }

  // The answer with "|" between records and "," between columns.
  std::string select(std::string_view sentence, std::string_view columns = "0") const {
    std::string text = database_->ExecuteSentence(store::request(sentence, "", columns)).text();
    for (char& c : text) {
      if (c == store::kAttributeMark) c = '|';
      if (c == store::kValueMark) c = ',';
    }
    return text;
  }

 private:
  std::unique_ptr<StoreUnderTest> store_;
  std::shared_ptr<multivalue::Database> database_;
};
