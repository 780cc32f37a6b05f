#include "store/StoreError.h"

#include <gtest/gtest.h>

namespace {

using store::StoreError;

TEST(StoreError, TellsMemberAndCodeWithoutItsText) {
  EXPECT_EQ(StoreError(store::kBusy, "Mme Martin is locked", "file.ReadRecord").withoutText(),
            "file.ReadRecord 0x80040003");
  EXPECT_EQ(StoreError(store::kFailed, "Mme Martin").withoutText(), "0x80004005");
  EXPECT_EQ(StoreError(0x1F, "").withoutText(), "0x0000001F");
  EXPECT_EQ(StoreError(0xFFFFFFFFU, "").withoutText(), "0xFFFFFFFF");
  EXPECT_EQ(StoreError(0, "").withoutText(), "0x00000000");
}

}  // namespace
