// A store in a schema of its own, on the server that the environment names.
#pragma once

#include <memory>
#include <string>

#include "sharedstore/Odbc.h"
#include "tests/unit/multivalue/StoreUnderTest.h"

class SharedStoreUnderTest final : public StoreUnderTest {
 public:
  // Settings of the server for the clients' sessions, as "-c name=value".
  explicit SharedStoreUnderTest(std::string settings = {});
  ~SharedStoreUnderTest() override;

  // As openSharedDatabase takes it.
  std::string connection() const;
  const std::string& schema() const { return schema_; }
  // Of the server itself, in the store's schema.
  sharedstore::Connection& administrator() const { return *administrator_; }

  std::shared_ptr<multivalue::Database> connect(const Connecting& how) const override;
  std::string fault() const override;

 private:
  // What a killed client had sent is done, or undone, a moment later.
  void awaitKilledClients() const;

  const std::string settings_;
  const std::string schema_;
  std::unique_ptr<sharedstore::Connection> administrator_;
};

// TESSALINE_POSTGRES: a connection string of ODBC to an empty database, without a semicolon at its
// end. Throws std::runtime_error where there is none.
std::string serverUnderTest();
// What it says under a name: settingOfServer("Port").
std::string settingOfServer(const std::string& name);
