// Another program changes the control's windows, forges what they tell and overwrites what they
// keep: the host lives, and in consultation the store stays as it is.
#include <cstdint>
#include <map>
#include <string>

#include "tests/windows/lifecycle/PagesTest.h"

namespace lifecycle {
namespace {

class Intruder : public PagesTest {
 protected:
  void SetUp() override {
    store_.state().rightsLevel = 1;
    PagesTest::SetUp();
    show(L"001", kActivites);
    before_ = state().files;
  }
  void TearDown() override {
    EXPECT_EQ(state().files, before_);
    EXPECT_EQ(state().count("DBWrite"), 0);
    EXPECT_EQ(state().count("DeleteRecord"), 0);
    PagesTest::TearDown();
  }

  // Runs it to its end, as a user goes on meanwhile.
  void attack(const std::wstring& how, HWND window) {
    std::wstring command = L"\"" + programFolder() + L"lifecycle_intruder.exe\" " + how + L" " +
                           std::to_wstring(reinterpret_cast<std::uintptr_t>(window));
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    ASSERT_TRUE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                               nullptr, &start, &process));
    const bool ended = container::pumpUntil(
        [&] { return WaitForSingleObject(process.hProcess, 0) == WAIT_OBJECT_0; }, 120000);
    DWORD code = 99;
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    EXPECT_TRUE(ended);
    EXPECT_EQ(code, 0U);
    container::pump();
  }
  // The control works as before.
  void expectWorking() {
    user().click(L"Cmd_Annuler");
    show(L"002", kActivites);
    EXPECT_EQ(user().text(L"Txt_CodOrgChg"), L"002");
    EXPECT_EQ(user().tab(), kActivites);
  }

 private:
  std::map<std::wstring, container::FakeStoreState::Records> before_;
};

INSTANTIATE_TEST_SUITE_P(In, Intruder, testing::Values(Where::Form), nameOfParam);

TEST_P(Intruder, LinesAddedAndSelectedInAListGoAgain) {
  const Lines possible = user().lines(L"Lst_Activite");
  const Lines covered = user().lines(L"Lst_ActSelect");
  for (const wchar_t* name : {L"Lst_Activite", L"Lst_ActSelect", L"Lst_TypeAct"}) {
    attack(L"lines", user().find(name));
  }
  EXPECT_EQ(user().lines(L"Lst_Activite"), possible);
  EXPECT_EQ(user().lines(L"Lst_ActSelect"), covered);
  user().doubleClickLine(L"Lst_Activite", 2);
  EXPECT_EQ(user().lines(L"Lst_ActSelect"), covered);
  expectWorking();
}

TEST_P(Intruder, LinesTakenFromAComboComeBack) {
  user().clickTab(kRegles);
  const Lines periods = user().lines(L"Cbo_PeriodFactOrgChg");
  attack(L"choices", user().find(L"Cbo_PeriodFactOrgChg"));
  attack(L"choices", user().find(L"Cbo_SigleOrgChg"));
  EXPECT_EQ(user().lines(L"Cbo_PeriodFactOrgChg"), periods);
  expectWorking();
}

TEST_P(Intruder, ALongTextOfHalfCharactersIsATextLikeAnother) {
  user().clickTab(kCoordonnees);
  attack(L"text", user().find(L"Txt_RaisonOrgChg"));
  attack(L"text", user().find(L"Cbo_SigleOrgChg"));
  attack(L"text", user().find(L"Etq_RaisonOrgChg"));
  expectWorking();
}

TEST_P(Intruder, WhatWindowsKeepForTheirOwnerMayBeOverwritten) {
  attack(L"overwrite", hosted_->window.handle());
  user().clickTab(kRegles);
  EXPECT_EQ(user().tab(), kRegles);
  expectWorking();
}

TEST_P(Intruder, TenThousandRandomMessagesLeaveTheHostAlive) {
  attack(L"random", hosted_->window.handle());
  EXPECT_TRUE(IsWindow(hosted_->window.handle()));
  EXPECT_FALSE(IsHungAppWindow(hosted_->window.handle()));
}

}  // namespace
}  // namespace lifecycle
