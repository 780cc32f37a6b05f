#include "SharedStoreUnderTest.h"

#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <random>
#include <stdexcept>
#include <utility>

#include "sharedstore/SharedDatabase.h"

// The driver keeps 320 bytes of each reading in which its session was ended.
// NOLINTNEXTLINE(bugprone-reserved-identifier)
extern "C" const char* __lsan_default_suppressions() { return "leak:psqlodbcw.so\n"; }

namespace {

std::string newSchema() {
  std::random_device random;
  return "test_" + std::to_string(random()) + "_" + std::to_string(random());
}

std::string withOptions(const std::string& options) {
  return serverUnderTest() + ";pqopt={options='" + options + "'}";
}

}  // namespace

std::string serverUnderTest() {
  const char* const given = std::getenv("TESSALINE_POSTGRES");
  if (given == nullptr) {
    throw std::runtime_error("no server: run this by scripts/with-postgres, or ./test native");
  }
  return given;
}

std::string settingOfServer(const std::string& name) {
  const std::string whole = ";" + serverUnderTest() + ";";
  const std::size_t value = whole.find(";" + name + "=") + name.size() + 2;
  return whole.substr(value, whole.find(';', value) - value);
}

SharedStoreUnderTest::SharedStoreUnderTest(std::string settings)
    : settings_(std::move(settings)), schema_(newSchema()) {
  sharedstore::Connection(serverUnderTest()).execute("CREATE SCHEMA " + schema_);
  administrator_ = std::make_unique<sharedstore::Connection>(
      withOptions("-c search_path=" + schema_ + " -c client_min_messages=warning"));
  sharedstore::createSharedDatabase(connection());
}

SharedStoreUnderTest::~SharedStoreUnderTest() {
  awaitKilledClients();
  administrator_->execute("DROP SCHEMA " + schema_ + " CASCADE");
}

std::string SharedStoreUnderTest::connection() const {
  return withOptions("-c search_path=" + schema_ + " -c application_name=" + schema_ + "_" +
                     std::to_string(getpid()) + " " + settings_);
}

void SharedStoreUnderTest::awaitKilledClients() const {
  const auto anyLeft = [&] {
    sharedstore::Statement clients(*administrator_,
                                   sharedstore::Sql("SELECT application_name FROM pg_stat_activity"
                                                    " WHERE application_name LIKE '" +
                                                    schema_ + "%'"));
    while (clients.next()) {
      const std::string name = clients.text(0);
      const pid_t pid = std::stoi(name.substr(name.rfind('_') + 1));
      if (kill(pid, 0) != 0 && errno == ESRCH) return true;
    }
    return false;
  };
  for (int tries = 2000; tries > 0 && anyLeft(); --tries) usleep(1000);
}

// The administrator's session is the process's that made the store.
std::shared_ptr<multivalue::Database> SharedStoreUnderTest::connect(const Connecting& how) const {
  static const pid_t kOwner = getpid();
  if (getpid() == kOwner) awaitKilledClients();
  sharedstore::Options options;
  options.busyTimeout = how.busyTimeout;
  return sharedstore::openSharedDatabase(connection(), options);
}

std::string SharedStoreUnderTest::fault() const {
  const multivalue::Checked checked = sharedstore::checkSharedDatabase(connection());
  return checked.faults.empty() ? std::string() : checked.faults.front();
}

std::unique_ptr<StoreUnderTest> newStore() { return std::make_unique<SharedStoreUnderTest>(); }
