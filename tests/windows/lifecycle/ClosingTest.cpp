// A host that goes while the control is busy: afterwards nothing is written, asked or crashed.
#include "tests/windows/lifecycle/ControlTest.h"

namespace lifecycle {
namespace {

using container::AutomationError;

// How the host goes.
enum class Going {
  DestroysItsWindow,    // and lets the control go afterwards
  ClosesAndDestroys,    // Close, no site, last reference; then the window
  DestroysAndReleases,  // the same from within the window's destruction
  ClosesOnly,           // Close and no site; the box stays and is answered later
};

std::string nameOf(Going going) {
  switch (going) {
    case Going::DestroysItsWindow:
      return "DestroysItsWindow";
    case Going::ClosesAndDestroys:
      return "ClosesAndDestroys";
    case Going::DestroysAndReleases:
      return "DestroysAndReleases";
    case Going::ClosesOnly:
      return "ClosesOnly";
  }
  return "";
}

void PrintTo(Going going, std::ostream* out) { *out << nameOf(going); }

class Closing : public ControlTest, public testing::WithParamInterface<Going> {
 protected:
  Going going() const { return GetParam(); }

  void go(HWND box) {
    container::Container& host = control().host;
    switch (going()) {
      case Going::DestroysItsWindow:
        control().window.destroy();
        break;
      case Going::ClosesAndDestroys:
        host.abandon();
        control().window.destroy();
        break;
      case Going::DestroysAndReleases:
        control().window.onDestroy = [&host] { host.abandon(); };
        control().window.destroy();
        break;
      case Going::ClosesOnly:
        host.close();
        host.setSite(false);
        if (box != nullptr && IsWindow(box) != FALSE) container::press(box, answer_);
        break;
    }
    gone_ = true;
    writesWhenGone_ = writes();
  }

  void goIn(const wchar_t* text, const wchar_t* icon, const wchar_t* buttons, int answer) {
    answer_ = answer;
    boxes().setOwner(nullptr);
    boxes().expect(text, icon, buttons, [this](HWND box) { go(box); });
  }

  int writes() {
    return control().state().count("DBWrite") + control().state().count("DeleteRecord");
  }

  void TearDown() override {
    container::pump();
    EXPECT_TRUE(gone_);
    EXPECT_EQ(writes(), writesWhenGone_);
    ControlTest::TearDown();
  }

  bool gone_ = false;
  int writesWhenGone_ = -1;
  int answer_ = 0;
};

INSTANTIATE_TEST_SUITE_P(When, Closing,
                         testing::Values(Going::DestroysItsWindow, Going::ClosesAndDestroys,
                                         Going::DestroysAndReleases, Going::ClosesOnly),
                         [](const auto& given) { return nameOf(given.param); });

TEST_P(Closing, DuringAnInformation) {
  goIn(kUnknownCode, kInformation, L"OK", IDOK);
  user().type(L"777");
}

TEST_P(Closing, DuringARefusedSave) {
  load(L"001");
  user().fill(L"Txt_RaisonOrgChg", L"");
  goIn(kNoName, kExclamation, L"OK", IDOK);
  user().click(L"Cmd_OK");
}

TEST_P(Closing, DuringTheQuestionBeforeADeletion) {
  load(L"001");
  goIn(kDelete, kQuestion, L"YESNO", IDYES);
  user().click(L"Cmd_Supprimer");
  EXPECT_EQ(control().state().files[L"ORGPRISECHARGE"].count(L"001"), 1u);
}

TEST_P(Closing, DuringTheQuestionBeforeACancelledCreation) {
  user().click(L"Cmd_Ajouter");
  user().type(L"CPAM");
  goIn(kLeaveCreation, kQuestion, L"YESNO", IDYES);
  user().click(L"Cmd_Annuler");
}

TEST_P(Closing, DuringTheQuestionOnLeaving) {
  load(L"001");
  user().fill(L"Txt_RaisonOrgChg", L"Caisse nouvelle");
  goIn(kSaveChanges, kQuestion, L"YESNOCANCEL", IDYES);
  user().click(L"Cmd_Sortir");
  EXPECT_EQ(control().stored(L"001", attribut::RaisonOrgChg), L"Caisse d'allocations familiales");
}

TEST_P(Closing, DuringARefusedKey) {
  user().click(L"Cbo_SigleOrgChg");
  goIn(kNoLowerAccents, kExclamation, L"OK", IDOK);
  user().type(L"é");
}

TEST_P(Closing, DuringTheRefusalOfALeave) {
  load(L"001");
  user().clickTab(kRegles);
  user().fill(L"Cbo_PeriodFactOrgChg", L"Hebdomadaire");
  goIn(L"La période de facturation saisie n'existe pas, veuillez la ressaisir.", kExclamation,
       L"OK", IDOK);
  user().click(L"Cmd_OK");
}

TEST_P(Closing, DuringTheGuardOfAnAccount) {
  user().click(L"Cmd_Ajouter");
  user().clickTab(kPriseEnCharge);
  goIn(
      L"Vous devez d'abord sélectionner une entité juridique dans l'onglet \"Activités Couvertes\" "
      L"afin de savoir à quel plan comptable associer le compte à créditer.",
      kExclamation, L"OK", IDOK);
  user().click(L"Txt_CodeCptPrestationService");
}

TEST_P(Closing, WhenToldThatTheUserLeaves) {
  control().host.properties().onChanged = [this](DISPID) { go(nullptr); };
  user().click(L"Cmd_Sortir");
  container::pumpUntil([this] { return gone_; }, 3000);
}

TEST_P(Closing, FromWithinAStoreCall) {
  bool once = false;
  control().state().fault = [&](const std::string& call) {
    if (call.starts_with("ReadRecord ORGPRISECHARGE") && !once) {
      once = true;
      go(nullptr);
    }
    return S_OK;
  };
  user().type(L"001");
  EXPECT_TRUE(once);
}

class WhileBusy : public ControlTest {};

TEST_F(WhileBusy, WSortirIsReadAndOtherCallsAreRefused) {
  load(L"001");
  HRESULT refused = S_OK;
  bool read = false;
  boxes().expect(kDelete, kQuestion, L"YESNO", [&](HWND box) {
    read = !control().wSortir();
    try {
      control().call(L"Vider_Donnees");
    } catch (const AutomationError& error) {
      refused = error.code();
    }
    container::press(box, IDNO);
  });
  user().click(L"Cmd_Supprimer");
  EXPECT_TRUE(read);
  EXPECT_EQ(refused, HRESULT_FROM_WIN32(ERROR_BUSY));
  EXPECT_EQ(user().text(L"Txt_RaisonOrgChg"), L"Caisse d'allocations familiales");
}

TEST_F(WhileBusy, CallsFromWithinAStoreCallAreRefused) {
  HRESULT refused = S_OK;
  bool read = false;
  control().state().fault = [&](const std::string& call) {
    if (!call.starts_with("ReadRecord ORGPRISECHARGE")) return S_OK;
    read = !control().wSortir();
    try {
      control().call(L"Init");
    } catch (const AutomationError& error) {
      refused = error.code();
    }
    return S_OK;
  };
  load(L"001");
  EXPECT_TRUE(read);
  EXPECT_EQ(refused, HRESULT_FROM_WIN32(ERROR_BUSY));
}

TEST_F(WhileBusy, TheHostIsDisabledAroundABoxAndEnabledAfter) {
  int depthInBox = -1;
  boxes().expect(kUnknownCode, kInformation, L"OK", [&](HWND box) {
    depthInBox = control().host.rules().modalDepth();
    container::press(box, IDOK);
  });
  user().type(L"777");
  EXPECT_EQ(depthInBox, 1);
  EXPECT_EQ(control().host.rules().modalDepth(), 0);
}

}  // namespace
}  // namespace lifecycle
