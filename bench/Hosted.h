// What a benchmark of the whole control needs around it.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "control/Ctr_OrgPriseCharge.h"
#include "localstore/LocalDatabase.h"
#include "toolkit/headless/HeadlessDesktop.h"

namespace bench {

class FullRights : public screen::Rights {
 public:
  std::shared_ptr<screen::RightsEntry> entry(std::string_view) override {
    class Entry : public screen::RightsEntry {
      long Level() override { return 2; }
    };
    return std::make_shared<Entry>();
  }
};

// A control as a host makes it, before Init.
struct Hosted {
  explicit Hosted(std::shared_ptr<store::Database> store) {
    control.setTheDatabase(std::move(store));
    control.setDroitsUtilisateur(std::make_shared<FullRights>());
  }
  template <class T>
  T& child(std::string_view name) {
    auto* found = dynamic_cast<T*>(control.surface().find(name));
    if (!found) throw std::logic_error("no child control " + std::string(name));
    return *found;
  }

  toolkit::headless::HeadlessDesktop desktop;
  control::Ctr_OrgPriseCharge control{desktop};
};

// A store file that goes with this object, filled in one transaction.
class TemporaryStore {
 public:
  explicit TemporaryStore(const std::function<void(localstore::LocalDatabase&)>& fill) {
    const std::string name = "tessaline-bench-" + std::to_string(std::random_device()());
    folder_ = std::filesystem::temp_directory_path() / name;
    std::filesystem::create_directories(folder_);
    database_ = localstore::createLocalDatabase((folder_ / "bench.store").string());
    const auto transaction = database_->begin();
    fill(*database_);
    transaction->commit();
  }
  ~TemporaryStore() {
    database_.reset();
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }
  TemporaryStore(const TemporaryStore&) = delete;
  TemporaryStore& operator=(const TemporaryStore&) = delete;

  std::shared_ptr<localstore::LocalDatabase> database() const { return database_; }

 private:
  std::filesystem::path folder_;
  std::shared_ptr<localstore::LocalDatabase> database_;
};

}  // namespace bench
