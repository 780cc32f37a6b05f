// Sessions through the network: certificates and passwords.
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include <cstdlib>
#include <filesystem>
#include <random>
#include <sstream>
#include <stdexcept>

#include "SharedStoreUnderTest.h"
#include "sharedstore/SharedDatabase.h"
#include "storetool/CommandLine.h"
#include "tests/support/StoreText.h"
#include "tests/support/TemporaryFolder.h"

namespace {

class Variable {
 public:
  Variable(const char* name, const std::string& value) : name_(name) {
    setenv(name, value.c_str(), 1);
  }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;
  ~Variable() { unsetenv(name_); }

 private:
  const char* const name_;
};

class Security : public testing::Test {
 protected:
  Security() {
    execute("CREATE ROLE " + person_ + " LOGIN PASSWORD '" + kPassword + "'");
    execute("GRANT USAGE ON SCHEMA " + store_.schema() + " TO " + person_);
    execute("GRANT SELECT ON ALL TABLES IN SCHEMA " + store_.schema() + " TO " + person_);
  }
  ~Security() override {
    setCertificate("good");
    execute("DROP OWNED BY " + person_);
    execute("DROP ROLE " + person_);
  }

  static std::string tls(const std::string& file) {
    const char* const folder = std::getenv("TESSALINE_POSTGRES_FOLDER");
    if (folder == nullptr) throw std::runtime_error("no certificates: see scripts/postgres.sh");
    return std::string(folder) + "/tls/" + file;
  }
  void execute(const std::string& sql) const { store_.administrator().execute(sql); }
  // Of every session that begins from then on.
  void setCertificate(const std::string& name) const {
    execute("ALTER SYSTEM SET ssl_cert_file = '" + tls(name + ".crt") + "'");
    execute("ALTER SYSTEM SET ssl_key_file = '" + tls(name + ".key") + "'");
    execute("SELECT pg_reload_conf()");
    for (int tries = 0; tries < 500; ++tries) {
      sharedstore::Connection next(serverUnderTest());
      sharedstore::Statement shown(next, sharedstore::Sql("SHOW ssl_key_file"));
      shown.next();
      if (shown.text(0) == tls(name + ".key")) return;
    }
    FAIL() << "the server has not taken its certificate";
  }
  // By the network, without a password.
  std::string byNetwork() const {
    return "Driver=PostgreSQL Unicode;Servername=127.0.0.1;Port=" + settingOfServer("Port") +
           ";Database=postgres;UID=" + person_;
  }
  std::string options(const std::string& more = {}) const {
    return ";pqopt={options='-c search_path=" + store_.schema() + "' " + more + "}";
  }
  std::string verified() const {
    return byNetwork() + ";SSLmode=verify-full" + options("sslrootcert=" + tls("authority.crt"));
  }
  static long long recordsOf(const std::string& connection) {
    return sharedstore::openSharedDatabase(connection)->recordCount("ORGPRISECHARGE");
  }
  // What a refusal says, which holds neither password.
  static std::string refusal(const std::string& connection) {
    const auto open = [&] { sharedstore::openSharedDatabase(connection); };
    EXPECT_EQ(errorOf(open), store::kIoFailure);
    const std::string message = messageOf(open);
    EXPECT_EQ(message.find(kPassword), std::string::npos) << message;
    EXPECT_EQ(message.find(kWrong), std::string::npos) << message;
    return message;
  }

  static constexpr const char* kPassword = "m;ot{s}ecret";
  static constexpr const char* kWrong = "faux-mot";
  static constexpr const char* kRefused = "password authentication failed";

  const SharedStoreUnderTest store_;
  const std::string person_ = "person_" + store_.schema();
  const TemporaryFolder folder_;
};

bool holds(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

TEST_F(Security, AServerWithAGoodCertificateIsTalkedToInSecret) {
  const Variable password("PGPASSWORD", kPassword);
  sharedstore::Connection session(verified());
  sharedstore::Statement shown(
      session, sharedstore::Sql("SELECT CAST(ssl AS integer), version FROM pg_stat_ssl WHERE pid ="
                                " pg_backend_pid()"));
  ASSERT_TRUE(shown.next());
  EXPECT_EQ(shown.number(0), 1);
  EXPECT_TRUE(shown.text(1).starts_with("TLSv1.")) << shown.text(1);
  EXPECT_EQ(recordsOf(verified()), 0);
  const Variable root("PGSSLROOTCERT", tls("authority.crt"));
  EXPECT_EQ(recordsOf(byNetwork() + ";SSLmode=verify-full" + options()), 0);
}

TEST_F(Security, OtherCertificatesAreRefused) {
  const Variable password("PGPASSWORD", kPassword);
  setCertificate("expired");
  EXPECT_TRUE(holds(refusal(verified()), "certificate verify failed")) << refusal(verified());
  EXPECT_EQ(recordsOf(byNetwork() + ";SSLmode=require" + options()), 0);
  setCertificate("foreign");
  EXPECT_TRUE(holds(refusal(verified()), "certificate verify failed")) << refusal(verified());
  setCertificate("elsewhere");
  EXPECT_TRUE(holds(refusal(verified()), "does not match host name")) << refusal(verified());
  setCertificate("good");
  EXPECT_EQ(recordsOf(verified()), 0);
}

TEST_F(Security, AServerThatIsToBeVerifiedNeedsAnAuthority) {
  const Variable password("PGPASSWORD", kPassword);
  const Variable home("HOME", folder_ / "");
  const std::string told = refusal(byNetwork() + ";SSLmode=verify-full" + options());
  EXPECT_TRUE(holds(told, "root certificate file")) << told;
}

TEST_F(Security, AServerMayInsistOnSecrecy) {
  const Variable password("PGPASSWORD", kPassword);
  const std::string told = refusal(byNetwork() + ";SSLmode=disable" + options());
  EXPECT_TRUE(holds(told, "no encryption")) << told;
}

TEST_F(Security, AServerThatIsGoneIsNoticed) {
  const Variable password("PGPASSWORD", kPassword);
  const sharedstore::Connection session(verified());
  int sockets = 0;
  for (const auto& each : std::filesystem::directory_iterator("/proc/self/fd")) {
    const int file = std::stoi(each.path().filename());
    sockaddr_in peer{};
    socklen_t size = sizeof peer;
    if (getpeername(file, reinterpret_cast<sockaddr*>(&peer), &size) != 0) continue;
    if (peer.sin_family != AF_INET ||
        std::to_string(ntohs(peer.sin_port)) != settingOfServer("Port")) {
      continue;
    }
    ++sockets;
    const auto number = [&](int level, int option) {
      int value = -1;
      socklen_t room = sizeof value;
      getsockopt(file, level, option, &value, &room);
      return value;
    };
    EXPECT_EQ(number(SOL_SOCKET, SO_KEEPALIVE), 1);
    EXPECT_EQ(number(IPPROTO_TCP, TCP_KEEPIDLE), 10);
    EXPECT_EQ(number(IPPROTO_TCP, TCP_KEEPINTVL), 3);
    EXPECT_EQ(number(IPPROTO_TCP, TCP_KEEPCNT), 3);
    EXPECT_EQ(number(IPPROTO_TCP, TCP_USER_TIMEOUT), 15000);
  }
  EXPECT_EQ(sockets, 1);
}

// --- Passwords

TEST_F(Security, APasswordComesFromTheEnvironment) {
  const Variable password("PGPASSWORD", kPassword);
  EXPECT_EQ(recordsOf(verified()), 0);
  const Variable wrong("PGPASSWORD", kWrong);
  EXPECT_TRUE(holds(refusal(verified()), kRefused));
}

TEST_F(Security, APasswordComesFromThePasswordFile) {
  const std::string path = folder_ / "passwords";
  const Variable file("PGPASSFILE", path);
  const auto put = [&](const std::string& password) {
    writeText(path, "127.0.0.1:*:postgres:" + person_ + ":" + password + "\n");
    std::filesystem::permissions(path, std::filesystem::perms::owner_read);
  };
  put(kPassword);
  EXPECT_EQ(recordsOf(verified()), 0);
  std::filesystem::remove(path);
  put(kWrong);
  EXPECT_TRUE(holds(refusal(verified()), kRefused));
  std::filesystem::remove(path);
  EXPECT_TRUE(holds(refusal(verified()), "no password supplied"));
}

// The manager keeps what it has read of a source for a while: each has a name of its own, of at
// most 32 letters.
TEST_F(Security, APasswordComesFromTheDataSource) {
  const std::string password = "simple-mot";
  execute("ALTER ROLE " + person_ + " PASSWORD '" + password + "'");
  const std::string number = std::to_string(std::random_device()());
  const auto source = [&](const std::string& name, const std::string& secret) {
    return "[" + name +
           "]\nDriver=PostgreSQL Unicode\nServername=127.0.0.1\nPort=" + settingOfServer("Port") +
           "\nDatabase=postgres\nUsername=" + person_ + "\nPassword=" + secret +
           "\nSSLmode=verify-full\npqopt=sslrootcert=" + tls("authority.crt") +
           " options='-c search_path=" + store_.schema() + "'\n";
  };
  const std::string file = folder_ / "odbc.ini";
  const Variable named("ODBCINI", file);
  writeText(file, source("Right_" + number, password) + source("Wrong_" + number, kWrong));
  EXPECT_EQ(recordsOf("DSN=Right_" + number), 0);
  EXPECT_TRUE(holds(refusal("DSN=Wrong_" + number), kRefused));
}

TEST_F(Security, AWrongPasswordOfAnAddressIsNotShown) {
  std::ostringstream out;
  std::ostringstream err;
  const std::string address = "odbc:" + verified() + ";PWD=" + kWrong;
  EXPECT_EQ(
      storetool::runCommandLine({"query", address, "SSELECT ORGPRISECHARGE"}, out, err, false), 6);
  EXPECT_EQ(out.str(), "");
  EXPECT_TRUE(holds(err.str(), kRefused)) << err.str();
  EXPECT_FALSE(holds(err.str(), kWrong)) << err.str();
}

}  // namespace
