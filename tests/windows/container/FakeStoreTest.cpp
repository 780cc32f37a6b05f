#include <gtest/gtest.h>

#include "tests/windows/container/Automation.h"
#include "tests/windows/container/FakeStore.h"

namespace container {
namespace {

class LateBoundStore : public testing::Test {
 protected:
  LateBoundStore() { fillWithThreeBodies(store_); }
  FakeStore store_;
};

TEST_F(LateBoundStore, ReadsARecordByItsKey) {
  const Value file = call(store_.database(), L"OpenFile", {Value(L"ORGPRISECHARGE")});
  const Value record = call(file.object(), L"ReadRecord", {Value(L"001")});
  EXPECT_TRUE(get(record.object(), L"").text().starts_with(L"CAF\u00FECaisse"));
  EXPECT_EQ(get(record.object(), L"Status").number(), 0);
}

TEST_F(LateBoundStore, GivesAnEmptyRecordWithItsStatus) {
  const Value file = call(store_.database(), L"OpenFile", {Value(L"ORGPRISECHARGE")});
  const Value record = call(file.object(), L"ReadRecord", {Value(L"999")});
  EXPECT_EQ(get(record.object(), L"").text(), L"");
  EXPECT_EQ(static_cast<ULONG>(get(record.object(), L"Status").number()), 0x8004000BUL);
}

TEST_F(LateBoundStore, WritesWhatWasAssigned) {
  const Value file = call(store_.database(), L"OpenFile", {Value(L"ORGPRISECHARGE")});
  const Value record = call(file.object(), L"ReadRecord", {Value(L"004")});
  put(record.object(), L"", Value(L"X\u00FEY"));
  call(record.object(), L"DBWrite", {});
  EXPECT_EQ(store_.state().attribute(L"ORGPRISECHARGE", L"004", attribut::RaisonOrgChg), L"Y");
}

TEST_F(LateBoundStore, SelectsByAPrefixInOrder) {
  const Value answer = call(store_.database(), L"ExecuteSentence",
                            {Value(L"SSELECT ORGPRISECHARGE AVEC SigleOrgChg = \"CA]\" PAR "
                                   L"SigleOrgChg\u00FEORGPRISECHARGE\u00FE0 1")});
  EXPECT_EQ(get(answer.object(), L"").text(), L"001\u00FDCAF\u00FE002\u00FDCARSAT");
}

TEST_F(LateBoundStore, SelectsByKeyByNumberAndBySeveralConditions) {
  store_.put(L"ACCORD", L"1", {L"001", L"", L"", L"", L"", L"21186"});
  store_.put(L"ACCORD", L"2", {L"001", L"", L"", L"", L"", L"9999"});
  store_.put(L"ACTIVITES", L"200P01", activity(L"Garde", L"200"));
  const auto select = [&](const wchar_t* request) {
    const Value answer = call(store_.database(), L"ExecuteSentence", {Value(request)});
    return get(answer.object(), L"").text();
  };
  EXPECT_EQ(select(L"SSELECT ACCORD AVEC OrgChgAcc = \"001\" AND AVEC 6 >= \"21186\"\u00FE"
                   L"ACCORD\u00FE0"),
            L"1");
  EXPECT_EQ(select(L"SSELECT ACTIVITES AVEC CodAssoActivite = \"200\" PAR 1 \u00FE"
                   L"ACTIVITES\u00FE0 1 12"),
            L"200P01\u00FDGarde\u00FDP");
  EXPECT_EQ(select(L"SSELECT ACTIVITES AVEC @ID = \"100]\" PAR 1\u00FE"
                   L"ACTIVITES\u00FE0"),
            L"100P01");
  EXPECT_EQ(select(L"SSELECT ACTIVITES AVEC 1 = \"A\"B]\" PAR 1\u00FE"
                   L"ACTIVITES\u00FE0"),
            L"");
}

TEST_F(LateBoundStore, FailsInEachStyle) {
  store_.state().fault = [](const std::string&) { return static_cast<HRESULT>(0x80040042); };
  for (const FaultStyle style :
       {FaultStyle::Hresult, FaultStyle::Exception, FaultStyle::DeferredException}) {
    store_.state().faultStyle = style;
    try {
      call(store_.database(), L"OpenFile", {Value(L"TABLES")});
      ADD_FAILURE() << "no error";
    } catch (const AutomationError& error) {
      EXPECT_EQ(static_cast<ULONG>(error.code()), 0x80040042UL);
    }
  }
}

TEST_F(LateBoundStore, RecordsReleasesInTheirOrder) {
  {
    const Value file = call(store_.database(), L"OpenFile", {Value(L"TABLES")});
    const Value record = call(file.object(), L"ReadRecord", {Value(L"PIECESRENOUV")});
  }
  const std::vector<std::string> expected = {"database", "record TABLES PIECESRENOUV",
                                             "file TABLES"};
  EXPECT_EQ(store_.state().releases, expected);
  EXPECT_EQ(store_.state().alive, 0);
}

TEST_F(LateBoundStore, GivesRightsThatAreReadEachTime) {
  const Value entry = call(store_.rights(), L"", {Value(L"CONSULTATIONORGCHARGE")});
  EXPECT_EQ(get(entry.object(), L"Level").number(), 2);
  store_.state().rightsLevel = 1;
  EXPECT_EQ(get(entry.object(), L"Level").number(), 1);
}

}  // namespace
}  // namespace container
