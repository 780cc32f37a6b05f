#include "com/Registration.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "com/ComBorder.h"
#include "com/Module.h"
#include "ocx/ControlRegistration.h"
#include "tests/windows/registration/ScratchRoot.h"

namespace com {
const wchar_t* errorSource() { return L"Tests"; }
}  // namespace com

namespace {

constexpr const wchar_t* kFile = L"C:\\Program Files\\Tessaline\\Tessaline.ocx";
const std::wstring kClass = L"CLSID\\{4F1871CF-AE4D-4B9A-9033-B73FF2277CE1}";

std::wstring textAt(ScratchRoot& root, const std::wstring& key, const std::wstring& name = L"") {
  const std::optional<com::RegistryValue> value = root.read(key, name);
  if (!value || value->data.size() < sizeof(wchar_t)) return L"(absent)";
  return {reinterpret_cast<const wchar_t*>(value->data.data()),
          value->data.size() / sizeof(wchar_t) - 1};
}

// Changes that a whole registration makes on an empty root.
int changesOfApplying() {
  ScratchRoot root(L"counted");
  com::applyTable(root, ocx::controlTable(kFile));
  return root.changes();
}

HRESULT codeOf(const std::function<void()>& call) {
  try {
    call();
  } catch (const com::Error& failure) {
    return failure.code();
  }
  return S_OK;
}

TEST(Registration, TellsHostsOfTheClass) {
  ScratchRoot root(L"class");
  com::applyTable(root, ocx::controlTable(kFile));
  EXPECT_EQ(textAt(root, kClass + L"\\InprocServer32"), kFile);
  EXPECT_EQ(textAt(root, kClass + L"\\InprocServer32", L"ThreadingModel"), L"Apartment");
  EXPECT_EQ(textAt(root, kClass + L"\\ProgID"), L"Tessaline.Ctr_OrgPriseCharge.1");
  EXPECT_EQ(textAt(root, kClass + L"\\VersionIndependentProgID"), L"Tessaline.Ctr_OrgPriseCharge");
  EXPECT_EQ(textAt(root, kClass + L"\\Version"), L"1.0");
  EXPECT_EQ(textAt(root, kClass + L"\\MiscStatus"), L"0");
  EXPECT_EQ(textAt(root, kClass + L"\\MiscStatus\\1"), L"131473");
  EXPECT_EQ(textAt(root, kClass + L"\\ToolboxBitmap32"), std::wstring(kFile) + L", 101");
  EXPECT_TRUE(root.exists(kClass + L"\\Control"));
  EXPECT_FALSE(root.exists(kClass + L"\\Insertable"));
  EXPECT_TRUE(
      root.exists(kClass + L"\\Implemented Categories\\{40FC6ED4-2438-11CF-A3DB-080036F12502}"));
  EXPECT_TRUE(
      root.exists(kClass + L"\\Implemented Categories\\{40FC6ED5-2438-11CF-A3DB-080036F12502}"));
}

TEST(Registration, TellsHostsOfNamesAndTypeLibrary) {
  ScratchRoot root(L"names");
  com::applyTable(root, ocx::controlTable(kFile));
  const std::wstring clsid = kClass.substr(6);
  EXPECT_EQ(textAt(root, L"Tessaline.Ctr_OrgPriseCharge\\CLSID"), clsid);
  EXPECT_EQ(textAt(root, L"Tessaline.Ctr_OrgPriseCharge\\CurVer"),
            L"Tessaline.Ctr_OrgPriseCharge.1");
  EXPECT_EQ(textAt(root, L"Tessaline.Ctr_OrgPriseCharge.1\\CLSID"), clsid);
  const std::wstring library = textAt(root, kClass + L"\\TypeLib");
  const std::wstring platform = sizeof(void*) == 8 ? L"win64" : L"win32";
  EXPECT_EQ(textAt(root, L"TypeLib\\" + library + L"\\1.0\\0\\" + platform), kFile);
  EXPECT_EQ(textAt(root, L"TypeLib\\" + library + L"\\1.0\\HELPDIR"),
            L"C:\\Program Files\\Tessaline");
  EXPECT_EQ(textAt(root, L"TypeLib\\" + library + L"\\1.0\\FLAGS"), L"2");
  const std::wstring events = L"Interface\\{123A2F52-6BDA-4176-859A-DCFC3B1E4F8A}";
  EXPECT_EQ(textAt(root, events + L"\\TypeLib"), library);
  EXPECT_EQ(textAt(root, events + L"\\ProxyStubClsid32"),
            L"{00020420-0000-0000-C000-000000000046}");
  const std::wstring face = L"Interface\\{28EEF13C-4390-4823-AEF8-0EECE160529E}";
  EXPECT_EQ(textAt(root, face + L"\\TypeLib"), library);
  EXPECT_EQ(textAt(root, face + L"\\ProxyStubClsid32"), L"{00020424-0000-0000-C000-000000000046}");
}

TEST(Registration, UndoneLeavesNothingBehind) {
  ScratchRoot root(L"undone");
  root.putText(L"CLSID", L"", L"somebody else's");
  const auto before = root.contents();
  com::applyTable(root, ocx::controlTable(kFile));
  EXPECT_GT(root.contents().size(), before.size() + 30);
  com::undoTable(root, ocx::controlTable(kFile));
  EXPECT_EQ(root.contents(), before);
}

TEST(Registration, UndoneBringsBackWhatItReplaced) {
  ScratchRoot root(L"replaced");
  root.putText(L"Tessaline.Ctr_OrgPriseCharge", L"", L"an older one");
  root.putText(L"Tessaline.Ctr_OrgPriseCharge\\CLSID", L"",
               L"{00000000-1111-2222-3333-444444444444}");
  root.putText(kClass, L"", L"an older copy");
  root.putText(kClass + L"\\InprocServer32", L"", L"C:\\old\\Tessaline.ocx");
  root.putText(kClass + L"\\InprocServer32", L"ThreadingModel", L"");
  const auto before = root.contents();
  com::applyTable(root, ocx::controlTable(kFile));
  EXPECT_EQ(textAt(root, kClass + L"\\InprocServer32"), kFile);
  com::undoTable(root, ocx::controlTable(kFile));
  EXPECT_EQ(root.contents(), before);
}

TEST(Registration, AppliedTwiceIsUndoneToBeforeTheFirstTime) {
  ScratchRoot root(L"twice");
  root.putText(L"Tessaline.Ctr_OrgPriseCharge", L"", L"an older one");
  const auto before = root.contents();
  com::applyTable(root, ocx::controlTable(L"C:\\first\\Tessaline.ocx"));
  com::applyTable(root, ocx::controlTable(kFile));
  EXPECT_EQ(textAt(root, kClass + L"\\InprocServer32"), kFile);
  com::undoTable(root, ocx::controlTable(kFile));
  EXPECT_EQ(root.contents(), before);
}

TEST(Registration, KeepsWhatOthersHavePutBelowItsKeys) {
  ScratchRoot root(L"others");
  com::applyTable(root, ocx::controlTable(kFile));
  root.putText(kClass + L"\\Another", L"", L"theirs");
  com::undoTable(root, ocx::controlTable(kFile));
  EXPECT_EQ(textAt(root, kClass + L"\\Another"), L"theirs");
  EXPECT_FALSE(root.exists(kClass + L"\\InprocServer32"));
}

TEST(Registration, LeavesWhatOthersHaveChangedSince) {
  ScratchRoot root(L"changed");
  com::applyTable(root, ocx::controlTable(kFile));
  root.putText(L"Tessaline.Ctr_OrgPriseCharge", L"", L"theirs now");
  com::undoTable(root, ocx::controlTable(kFile));
  EXPECT_EQ(root.contents(),
            (std::map<std::wstring, std::wstring>{
                {L"Tessaline.Ctr_OrgPriseCharge\\", L""},
                {L"Tessaline.Ctr_OrgPriseCharge\\|", std::wstring(L"theirs now") + L'\0'}}));
}

TEST(Registration, OfACopyElsewhereIsNotUndoneByThisOne) {
  constexpr const wchar_t* kElsewhere = L"D:\\copy\\Tessaline.ocx";
  ScratchRoot root(L"copies");
  com::applyTable(root, ocx::controlTable(kFile));
  com::applyTable(root, ocx::controlTable(kElsewhere));
  const auto both = root.contents();
  com::undoTable(root, ocx::controlTable(kFile));
  EXPECT_EQ(root.contents(), both);
  EXPECT_EQ(textAt(root, kClass + L"\\InprocServer32"), kElsewhere);
  com::undoTable(root, ocx::controlTable(L"d:\\COPY\\tessaline.OCX"));
  EXPECT_TRUE(root.contents().empty());
}

TEST(Registration, ThatIsRefusedTheSecondTimeLeavesTheFirst) {
  const int changes = changesOfApplying();
  for (int refused = 1; refused <= changes; ++refused) {
    ScratchRoot root(L"second");
    com::applyTable(root, ocx::controlTable(kFile));
    const auto first = root.contents();
    root.refuseOnly(refused);
    codeOf([&] { com::applyTable(root, ocx::controlTable(L"D:\\copy\\Tessaline.ocx")); });
    if (root.changes() < refused) break;
    EXPECT_EQ(root.contents(), first) << "change " << refused;
  }
}

TEST(Registration, UndoneWhereItNeverWasChangesNothing) {
  ScratchRoot root(L"never");
  root.putText(L"Tessaline.Ctr_OrgPriseCharge", L"", L"somebody else's");
  const auto before = root.contents();
  com::undoTable(root, ocx::controlTable(kFile));
  EXPECT_EQ(root.contents(), before);
}

TEST(Registration, ARefusedChangeTakesBackAllTheOthers) {
  const int changes = changesOfApplying();
  ASSERT_GT(changes, 40);
  for (int refused = 1; refused <= changes; ++refused) {
    ScratchRoot root(L"refused");
    root.putText(L"Tessaline.Ctr_OrgPriseCharge", L"", L"an older one");
    const auto before = root.contents();
    root.refuseOnly(refused);
    const HRESULT code = codeOf([&] { com::applyTable(root, ocx::controlTable(kFile)); });
    if (root.changes() >= refused) {
      EXPECT_EQ(code, E_ACCESSDENIED) << "change " << refused;
      EXPECT_EQ(root.contents(), before) << "change " << refused;
    }
  }
}

TEST(Registration, ARefusedUndoingCanBeRunAgain) {
  ScratchRoot counted(L"again");
  com::applyTable(counted, ocx::controlTable(kFile));
  counted.refuseFrom(0);
  com::undoTable(counted, ocx::controlTable(kFile));
  const int changes = counted.changes();
  ASSERT_GT(changes, 40);
  for (int refused = 1; refused <= changes; ++refused) {
    ScratchRoot root(L"again");
    root.putText(kClass + L"\\InprocServer32", L"", L"C:\\old\\Tessaline.ocx");
    const auto before = root.contents();
    com::applyTable(root, ocx::controlTable(kFile));
    root.refuseFrom(refused);
    codeOf([&] { com::undoTable(root, ocx::controlTable(kFile)); });
    root.accept();
    com::undoTable(root, ocx::controlTable(kFile));
    EXPECT_EQ(root.contents(), before) << "change " << refused;
  }
}

TEST(Registration, GoesToTheUsersClassesWhenTheMachinesAreRefused) {
  ScratchRoot machine(L"machine");
  ScratchRoot user(L"user");
  machine.refuseFrom(1);
  com::applyToFirst({&machine, &user}, ocx::controlTable(kFile));
  EXPECT_TRUE(machine.contents().empty());
  EXPECT_EQ(textAt(user, kClass + L"\\InprocServer32"), kFile);
  com::undoInAll({&machine, &user}, ocx::controlTable(kFile));
  EXPECT_TRUE(user.contents().empty());
}

TEST(Registration, StaysOutOfTheUsersClassesWhenTheMachinesAreOpen) {
  ScratchRoot machine(L"machine");
  ScratchRoot user(L"user");
  com::applyToFirst({&machine, &user}, ocx::controlTable(kFile));
  EXPECT_TRUE(user.contents().empty());
  EXPECT_EQ(textAt(machine, kClass + L"\\InprocServer32"), kFile);
}

TEST(Registration, FailsWhenBothAreRefused) {
  ScratchRoot machine(L"machine");
  ScratchRoot user(L"user");
  machine.refuseFrom(1);
  user.refuseFrom(5);
  EXPECT_EQ(codeOf([&] {
              com::applyToFirst({&machine, &user}, ocx::controlTable(kFile));
            }),
            E_ACCESSDENIED);
}

TEST(Registration, AnotherFailureThanARefusalIsNotHidden) {
  ScratchRoot machine(L"machine");
  ScratchRoot user(L"user");
  machine.refuseFrom(3, HRESULT_FROM_WIN32(ERROR_DISK_FULL));
  EXPECT_EQ(codeOf([&] {
              com::applyToFirst({&machine, &user}, ocx::controlTable(kFile));
            }),
            HRESULT_FROM_WIN32(ERROR_DISK_FULL));
  EXPECT_TRUE(user.contents().empty());
}

TEST(Registration, IsUndoneInBothRoots) {
  ScratchRoot machine(L"machine");
  ScratchRoot user(L"user");
  com::applyTable(machine, ocx::controlTable(kFile));
  com::applyTable(user, ocx::controlTable(kFile));
  machine.refuseFrom(1);
  EXPECT_EQ(codeOf([&] {
              com::undoInAll({&machine, &user}, ocx::controlTable(kFile));
            }),
            E_ACCESSDENIED);
  EXPECT_TRUE(user.contents().empty());
  machine.accept();
  com::undoInAll({&machine, &user}, ocx::controlTable(kFile));
  EXPECT_TRUE(machine.contents().empty());
}

}  // namespace
