#pragma once

#include <string>

#include "tests/support/TemporaryFolder.h"
#include "tests/unit/multivalue/StoreUnderTest.h"

class LocalStoreUnderTest final : public StoreUnderTest {
 public:
  LocalStoreUnderTest();

  std::string path() const { return folder_ / "test.store"; }
  std::shared_ptr<multivalue::Database> connect(const Connecting& how) const override;
  std::string fault() const override;

 private:
  TemporaryFolder folder_;
};
