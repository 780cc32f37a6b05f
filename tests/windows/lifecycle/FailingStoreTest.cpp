// A store that fails: each of its calls in turn raises an error.
#include <functional>

#include "tests/support/Thorough.h"
#include "tests/windows/lifecycle/ControlTest.h"

namespace lifecycle {
namespace {

using container::AutomationError;
using container::FaultStyle;

// The record, its entity and the entity's activities, each with its text: failing there, nothing
// was on the screen to be changed.
constexpr int kCallsOfALookUp = 6;
constexpr HRESULT kFailure = static_cast<HRESULT>(0x80040042);

struct Outcome {
  int calls = 0;        // made by the flow
  HRESULT code = S_OK;  // what the host was told
  std::string wrong;    // broken rules
};

// Runs Init and then the flow, whose `failing`-th call fails (0: none). `fromInit`: Init's calls
// count too.
Outcome run(int failing, bool fromInit, const std::function<void(Running&)>& flow,
            const std::function<void(Running&)>& afterwards, FaultStyle style) {
  Outcome outcome;
  Running running(container::formProfile());
  container::fillWithThreeBodies(running.store);
  running.state().faultStyle = style;
  running.boxes.answerAll(IDYES);
  running.open();
  const auto arm = [&] {
    running.state().fault = [&](const std::string&) {
      return ++outcome.calls == failing ? kFailure : S_OK;
    };
  };
  try {
    if (fromInit) arm();
    running.init();
    if (!fromInit) arm();
    flow(running);
  } catch (const AutomationError& error) {
    outcome.code = error.code();
  }
  running.state().fault = {};
  running.host.pump();
  EXPECT_FALSE(fromInit && running.wSortir());
  afterwards(running);
  outcome.wrong = running.finish();
  return outcome;
}

// Each call of a flow fails in the native tests; here, where every run takes a control and its
// windows, every third one.
int step() { return testing_support::thorough() ? 1 : 3; }

// The flow with its calls failing in turn.
void failEach(bool fromInit, const std::function<void(Running&)>& flow,
              const std::function<void(Running&, int failing)>& afterwards) {
  const Outcome whole = run(
      0, fromInit, flow, [&](Running& running) { afterwards(running, 0); }, FaultStyle::Exception);
  ASSERT_EQ(whole.wrong, "");
  ASSERT_GT(whole.calls, 0);
  for (int failing = 1; failing <= whole.calls; failing += step()) {
    const Outcome outcome = run(
        failing, fromInit, flow, [&](Running& running) { afterwards(running, failing); },
        failing % 2 == 0 ? FaultStyle::Exception : FaultStyle::Hresult);
    EXPECT_EQ(outcome.wrong, "") << "at call " << failing;
    EXPECT_EQ(outcome.code, fromInit ? kFailure : S_OK) << "at call " << failing;
  }
}

TEST(FailingStore, EndsInitWithItsOwnError) {
  failEach(
      true, [](Running&) {}, [](Running&, int) {});
}

TEST(FailingStore, EndsALookUpQuietly) {
  failEach(
      false, [](Running& running) { running.user.type(L"001"); },
      [](Running& running, int failing) {
        if (failing == 0) return;
        EXPECT_EQ(running.user.text(L"Txt_CodOrgChg"), L"001") << failing;
        EXPECT_TRUE(running.boxes.seen().empty()) << failing;
      });
}

TEST(FailingStore, KeepsTheOldRecordOrTheNewOneWhenSaving) {
  const auto change = [](Running& running) {
    running.user.type(L"001");
    running.user.fill(L"Txt_RaisonOrgChg", L"Caisse nouvelle");
    running.user.click(L"Cmd_OK");
  };
  failEach(false, change, [](Running& running, int failing) {
    const std::wstring name = running.stored(L"001", attribut::RaisonOrgChg);
    EXPECT_TRUE(name == L"Caisse nouvelle" || name == L"Caisse d'allocations familiales")
        << failing;
    EXPECT_EQ(running.stored(L"001", attribut::DesFacture), L"Prise en charge") << failing;
    // Nothing typed is lost: it is in the store, or still on the screen.
    EXPECT_TRUE(name == L"Caisse nouvelle" ||
                running.user.text(L"Txt_RaisonOrgChg") == L"Caisse nouvelle" ||
                failing <= kCallsOfALookUp)
        << failing;
  });
}

TEST(FailingStore, KeepsWhatWasTypedWhenTheWriteFailsAndSavesItLater) {
  Running running(container::formProfile());
  container::fillWithThreeBodies(running.store);
  running.open();
  running.init();
  running.user.type(L"001");
  running.user.fill(L"Txt_RaisonOrgChg", L"Caisse nouvelle");
  running.state().fault = [](const std::string& call) {
    return call.starts_with("DBWrite") ? kFailure : S_OK;
  };
  running.user.click(L"Cmd_OK");
  EXPECT_EQ(running.user.text(L"Txt_RaisonOrgChg"), L"Caisse nouvelle");
  EXPECT_EQ(running.user.text(L"Txt_CodOrgChg"), L"001");
  EXPECT_EQ(running.stored(L"001", attribut::RaisonOrgChg), L"Caisse d'allocations familiales");
  running.state().fault = {};
  running.user.click(L"Cmd_OK");
  EXPECT_EQ(running.stored(L"001", attribut::RaisonOrgChg), L"Caisse nouvelle");
  EXPECT_EQ(running.finish(), "");
}

TEST(FailingStore, NeverWritesOverABodyWhenCreating) {
  const auto create = [](Running& running) {
    running.user.click(L"Cmd_Ajouter");
    running.user.type(L"CPAM");
    running.user.fill(L"Txt_RaisonOrgChg", L"Caisse primaire");
    completeCreation(running.user);
    running.user.click(L"Cmd_OK");
  };
  failEach(false, create, [](Running& running, int failing) {
    EXPECT_EQ(running.stored(L"001", attribut::SigleOrgChg), L"CAF") << failing;
    EXPECT_EQ(running.stored(L"002", attribut::SigleOrgChg), L"CARSAT") << failing;
    EXPECT_EQ(running.stored(L"003", attribut::SigleOrgChg), L"MSA") << failing;
    const std::wstring created = running.stored(L"004", attribut::SigleOrgChg);
    EXPECT_TRUE(created.empty() || created == L"CPAM") << failing;
    // The first call asks for the rights: failing there, no creation is begun.
    EXPECT_TRUE(created == L"CPAM" || running.user.text(L"Txt_SigleOrgChg") == L"CPAM" ||
                failing == 1)
        << failing;
  });
}

TEST(FailingStore, DeletesNothingWhenASearchFails) {
  Running running(container::formProfile());
  container::fillWithThreeBodies(running.store);
  running.boxes.answerAll(IDYES);
  running.open();
  running.init();
  running.user.type(L"001");
  for (const char* search :
       {"ExecuteSentence SSELECT ACCORD", "ExecuteSentence SSELECT DEMANDACC"}) {
    running.state().fault = [&](const std::string& call) {
      return call.starts_with(search) ? kFailure : S_OK;
    };
    running.user.click(L"Cmd_Supprimer");
    EXPECT_EQ(running.state().count("DeleteRecord"), 0) << search;
    EXPECT_EQ(running.user.text(L"Txt_CodOrgChg"), L"001") << search;
  }
  running.state().fault = {};
  EXPECT_EQ(running.finish(), "");
}

TEST(FailingStore, SurvivesADeletionThatFailsAnywhere) {
  const auto remove = [](Running& running) {
    running.user.type(L"001");
    running.user.click(L"Cmd_Supprimer");
  };
  failEach(false, remove, [](Running& running, int failing) {
    EXPECT_EQ(running.stored(L"002", attribut::SigleOrgChg), L"CARSAT") << failing;
  });
}

TEST(FailingStore, SurvivesASearchByAcronymThatFailsAnywhere) {
  const auto search = [](Running& running) {
    running.user.click(L"Cbo_SigleOrgChg");
    running.user.type(L"CA");
    running.user.key(VK_RETURN);
    running.user.key(VK_DOWN);
    running.user.key(VK_RETURN);
  };
  failEach(false, search, [](Running&, int) {});
}

struct Style {
  const char* name;
  FaultStyle style;
  HRESULT code;
};

void PrintTo(const Style& style, std::ostream* out) { *out << style.name; }

class FaultStyles : public testing::TestWithParam<Style> {};

TEST_P(FaultStyles, ReachTheHostWithTheirCode) {
  const Outcome outcome = run(
      4, true, [](Running&) {}, [](Running&) {}, GetParam().style);
  EXPECT_EQ(outcome.code, GetParam().code);
  EXPECT_EQ(outcome.wrong, "");
}

INSTANTIATE_TEST_SUITE_P(Store, FaultStyles,
                         testing::Values(Style{"Hresult", FaultStyle::Hresult, kFailure},
                                         Style{"Exception", FaultStyle::Exception, kFailure},
                                         Style{"DeferredException", FaultStyle::DeferredException,
                                               kFailure}),
                         [](const auto& given) { return given.param.name; });

class ResultStyles : public testing::TestWithParam<container::ResultStyle> {};

TEST_P(ResultStyles, AreAllUnderstood) {
  Running running(container::formProfile());
  container::fillWithThreeBodies(running.store);
  running.state().resultStyle = GetParam();
  running.open();
  running.init();
  running.user.type(L"001");
  EXPECT_EQ(running.user.text(L"Txt_RaisonOrgChg"), L"Caisse d'allocations familiales");
  EXPECT_EQ(running.finish(), "");
}

INSTANTIATE_TEST_SUITE_P(Store, ResultStyles,
                         testing::Values(container::ResultStyle::Dispatch,
                                         container::ResultStyle::Unknown,
                                         container::ResultStyle::ByReference));

TEST(StoreWithoutStatus, ReadsAMissingRecordAsEmpty) {
  Running running(container::formProfile());
  container::fillWithThreeBodies(running.store);
  running.state().offersStatus = false;
  running.boxes.expect(kUnknownCode, kInformation, L"OK", IDOK);
  running.open();
  running.init();
  running.user.type(L"777");
  EXPECT_EQ(running.user.text(L"Txt_CodOrgChg"), L"");
  EXPECT_EQ(running.finish(), "");
}

}  // namespace
}  // namespace lifecycle
