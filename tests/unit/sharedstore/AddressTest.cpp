#include "sharedstore/Address.h"

#include <gtest/gtest.h>

#include "SharedStoreUnderTest.h"
#include "sharedstore/SharedDatabase.h"
#include "tests/support/StoreText.h"

namespace {

using sharedstore::connectionOf;
using sharedstore::withoutPasswords;

TEST(Address, IsOdbcAndAConnectionString) {
  EXPECT_EQ(connectionOf("odbc:DSN=Tessaline"), "DSN=Tessaline");
  EXPECT_EQ(connectionOf("ODBC:DSN=Tessaline;UID=x"), "DSN=Tessaline;UID=x");
  EXPECT_EQ(connectionOf("odbc:"), "");
  for (const char* const path : {"", "odbc", "demo.store", "odbc.store", "C:\\odbc:x", " odbc:x"}) {
    EXPECT_FALSE(connectionOf(path)) << path;
  }
}

TEST(Address, PasswordsAreTakenOutOfTexts) {
  EXPECT_EQ(withoutPasswords("no secret here", "DSN=x;PWD=secret;UID=y"), "no *** here");
  EXPECT_EQ(withoutPasswords("a;b}c and a;b", "DSN=x;Password={a;b}}c}"), "*** and a;b");
  EXPECT_EQ(withoutPasswords("s3 and other", "pqopt={sslmode=require password=s3 x=y};pwd = other"),
            "*** and ***");
  EXPECT_EQ(withoutPasswords("secretsecret", "PWD=secret"), "******");
  EXPECT_EQ(withoutPasswords("PWD= and pwd", "PWD=;DSN=x"), "PWD= and pwd");
}

TEST(Address, AServerThatIsNotThereIsAnErrorWithoutThePassword) {
  const auto open = [] {
    sharedstore::openSharedDatabase(
        "Driver=PostgreSQL Unicode;Servername=/nowhere;Database=none;UID=me;PWD=nowhere");
  };
  EXPECT_EQ(errorOf(open), store::kIoFailure);
  const std::string message = messageOf(open);
  EXPECT_NE(message.find("/***"), std::string::npos) << message;
  EXPECT_EQ(message.find("nowhere"), std::string::npos) << message;
}

TEST(Address, ADatabaseWithoutAStoreIsRefused) {
  EXPECT_EQ(messageOf([] { sharedstore::openSharedDatabase(serverUnderTest()); }),
            "the database holds no store");
}

}  // namespace
