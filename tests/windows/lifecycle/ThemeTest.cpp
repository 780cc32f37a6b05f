// The common controls in the control: the host's. Compiled into a host that has version 6 of them
// and into one that has none.
#include "tests/windows/lifecycle/ControlTest.h"

// After windows.h.
#include <psapi.h>

namespace lifecycle {
namespace {

bool hostHasVersion6() {
  ACTCTX_SECTION_KEYED_DATA found{};
  found.cbSize = sizeof found;
  return FindActCtxSectionStringW(0, nullptr, ACTIVATION_CONTEXT_SECTION_DLL_REDIRECTION,
                                  L"comctl32.dll", &found) != FALSE;
}

// Of a copy of the common controls, by the side-by-side folder that it comes from; one of the
// system's own folder is of version 5. 0 of any other module.
DWORD versionOf(HMODULE module) {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(module, path, MAX_PATH);
  CharLowerW(path);
  const std::wstring whole = path;
  if (!whole.ends_with(L"\\comctl32.dll")) return 0;
  return whole.find(L"_6595b64144ccf1df_6.") == std::wstring::npos ? 5 : 6;
}

bool isLoaded(DWORD version) {
  HMODULE modules[512] = {};
  DWORD bytes = 0;
  EnumProcessModules(GetCurrentProcess(), modules, sizeof modules, &bytes);
  for (DWORD i = 0; i < bytes / sizeof(HMODULE); ++i) {
    if (versionOf(modules[i]) == version) return true;
  }
  return false;
}

class Theme : public ControlTest {
 protected:
  // Of the common controls that a window of the control is made by.
  DWORD versionBehind(const wchar_t* name) {
    HMODULE module = nullptr;
    GetModuleHandleExW(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        reinterpret_cast<LPCWSTR>(GetClassLongPtrW(user().find(name), GCLP_WNDPROC)), &module);
    return versionOf(module);
  }
};

TEST_F(Theme, TheTabsAreOfTheHostsVersion) {
  EXPECT_EQ(versionBehind(L"Ong_OrgPriseChg"), hostHasVersion6() ? 6U : 5U);
}

TEST_F(Theme, ButtonsAndFieldsAreThemedWhereTheHostsAre) {
  for (const wchar_t* name : {L"Cmd_Sortir", L"Opt_TypePrincipalOrgChg", L"Txt_CodOrgChg"}) {
    EXPECT_EQ(versionBehind(name), hostHasVersion6() ? 6U : 0U) << user().find(name);
  }
}

// The library's own imports must not bring version 6 into a host that has none.
TEST_F(Theme, AHostWithoutVersion6GetsNone) { EXPECT_EQ(isLoaded(6), hostHasVersion6()); }

TEST_F(Theme, TheControlWorksInIt) {
  load(L"001");
  user().clickTab(kRegles);
  EXPECT_EQ(user().tab(), kRegles);
  user().click(L"Opt_TypeComplOrgChg");
  EXPECT_TRUE(user().checked(L"Opt_TypeComplOrgChg"));
  EXPECT_FALSE(user().checked(L"Opt_TypePrincipalOrgChg"));
  user().click(L"Opt_TypePrincipalOrgChg");
  EXPECT_TRUE(user().checked(L"Opt_TypePrincipalOrgChg"));
}

}  // namespace
}  // namespace lifecycle
