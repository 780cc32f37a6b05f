#include "sharedstore/Address.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <map>
#include <thread>

#include "SharedStoreUnderTest.h"
#include "sharedstore/SharedDatabase.h"
#include "tests/support/StoreText.h"
#include "tests/support/TemporaryFolder.h"

namespace {

using sharedstore::connectionOf;
using sharedstore::withBounds;
using sharedstore::withoutPasswords;

constexpr const char* kOne =
    "connect_timeout=15 tcp_user_timeout=15000 keepalives_count=3 keepalives_idle=10 "
    "keepalives_interval=3";
constexpr const char* kSeveral =
    "target_session_attrs=read-write connect_timeout=5 tcp_user_timeout=15000 keepalives_count=3 "
    "keepalives_idle=10 keepalives_interval=3";

// In which "Tessaline" is the only data source.
std::string bounded(const std::string& connection,
                    const std::map<std::string, std::string>& ofSource = {}) {
  return withBounds(connection, [&](const std::string& source, const std::string& setting) {
    const auto found = ofSource.find(setting);
    return source == "Tessaline" && found != ofSource.end() ? found->second : std::string();
  });
}

std::string pqopt(const std::string& options) { return "pqopt={" + options + "}"; }

TEST(Address, IsOdbcAndAConnectionString) {
  EXPECT_EQ(connectionOf("odbc:DSN=Tessaline"), "DSN=Tessaline");
  EXPECT_EQ(connectionOf("ODBC:DSN=Tessaline;UID=x"), "DSN=Tessaline;UID=x");
  EXPECT_EQ(connectionOf("odbc:"), "");
  for (const char* const path : {"", "odbc", "demo.store", "odbc.store", "C:\\odbc:x", " odbc:x"}) {
    EXPECT_FALSE(connectionOf(path)) << path;
  }
}

TEST(Address, ASessionIsBounded) {
  EXPECT_EQ(bounded("Servername=a;UID=x"), "Servername=a;UID=x;" + pqopt(kOne));
  EXPECT_EQ(bounded("Servername=a;"), "Servername=a;" + pqopt(kOne));
  EXPECT_EQ(bounded("DSN=Tessaline", {{"servername", "a"}}), "DSN=Tessaline;" + pqopt(kOne));
  EXPECT_EQ(bounded("DSN=Tessaline", {{"server", "a"}}), "DSN=Tessaline;" + pqopt(kOne));
  EXPECT_EQ(bounded(""), pqopt(kOne));
}

TEST(Address, OfSeveralServersItIsTheOneThatTakesWrites) {
  EXPECT_EQ(bounded("Servername=a,b;UID=x"), "Servername=a,b;UID=x;" + pqopt(kSeveral));
  EXPECT_EQ(bounded("uid=a,b; SERVER = a,b,c"), "uid=a,b; SERVER = a,b,c;" + pqopt(kSeveral));
  EXPECT_EQ(bounded("UID=a,b;PWD={;Servername=a,b};Servername=c"),
            "UID=a,b;PWD={;Servername=a,b};Servername=c;" + pqopt(kOne));
  EXPECT_EQ(bounded("DSN=Tessaline", {{"servername", "a,b"}}), "DSN=Tessaline;" + pqopt(kSeveral));
  EXPECT_EQ(bounded("DSN=Tessaline;Servername=c", {{"servername", "a,b"}}),
            "DSN=Tessaline;Servername=c;" + pqopt(kOne));
}

// Of two options of one name the last holds.
TEST(Address, WhatTheUserSetsHolds) {
  const std::string one = kOne;
  EXPECT_EQ(bounded("pqopt={connect_timeout=2 options='-c a=b}}'};UID=x"),
            "UID=x;" + pqopt(one + " connect_timeout=2 options='-c a=b}}'"));
  EXPECT_EQ(bounded("UID=x; PQOPT=sslrootcert=/ca.crt"),
            "UID=x;" + pqopt(one + " sslrootcert=/ca.crt"));
  EXPECT_EQ(bounded("DSN=Tessaline", {{"servername", "a"}, {"pqopt", "sslrootcert=/ca.crt"}}),
            "DSN=Tessaline;" + pqopt(one + " sslrootcert=/ca.crt"));
  EXPECT_EQ(bounded("KeepaliveTime=60;KeepaliveInterval=9"),
            "KeepaliveTime=60;KeepaliveInterval=9;" +
                pqopt("connect_timeout=15 tcp_user_timeout=15000 keepalives_count=3"));
}

TEST(Address, WhatCannotBeReadIsLeftAsItIs) {
  for (const char* const connection :
       {"FILEDSN=x.dsn", "DSN=Another", "DSN=Another;Servername=a,b", "DSN=Tessaline;UID=x"}) {
    EXPECT_EQ(bounded(connection, {{"pqopt", "sslrootcert=/ca.crt"}}), connection);
  }
}

// A server that takes connections and answers none.
class MuteServer {
 public:
  explicit MuteServer(const std::string& path) : socket_(socket(AF_UNIX, SOCK_STREAM, 0)) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    EXPECT_EQ(bind(socket_, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(listen(socket_, 5), 0);
  }
  MuteServer(const MuteServer&) = delete;
  MuteServer& operator=(const MuteServer&) = delete;
  ~MuteServer() { close(socket_); }

 private:
  const int socket_;
};

TEST(Address, AServerThatDoesNotAnswerIsPassedOver) {
  const SharedStoreUnderTest store;
  const TemporaryFolder folder;
  const MuteServer mute(folder / ".s.PGSQL." + settingOfServer("Port"));
  std::string connection = store.connection();
  const std::string name = "Servername=";
  connection.insert(connection.find(name) + name.size(), (folder / "") + ",");
  const std::string hasty = "pqopt={connect_timeout=2 ";
  connection.replace(connection.find("pqopt={"), 7, hasty);
  const auto before = std::chrono::steady_clock::now();
  const auto database = sharedstore::openSharedDatabase(connection);
  EXPECT_EQ(database->recordCount("ORGPRISECHARGE"), 0);
  EXPECT_GE(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(900));
  EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(5));
}

TEST(Address, ThreadsMayConnectAtOnce) {
  const SharedStoreUnderTest store;
  std::atomic<int> connected = 0;
  std::vector<std::thread> threads;
  for (int thread = 0; thread < 8; ++thread) {
    threads.emplace_back([&] {
      for (int i = 0; i < 20; ++i) {
        sharedstore::openSharedDatabase(store.connection());
        ++connected;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(connected, 160);
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
