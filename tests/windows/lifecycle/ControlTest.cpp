#include "tests/windows/lifecycle/ControlTest.h"

namespace lifecycle {

using container::Rules;
using container::Value;

std::wstring programFolder() {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  const std::wstring whole = path;
  return whole.substr(0, whole.rfind(L'\\') + 1);
}

container::LibrarySource& library() {
  static container::LibrarySource source(programFolder() + L"Tessaline.ocx");
  return source;
}

Running::Running(const container::Profile& profile)
    : host(profile, window, library()),
      user({window, [this] { host.pump(); }, [this] { return host.controlWindow(); }}) {
  boxes.setOwner(window.handle());
}

void Running::open() {
  const HRESULT opened = host.open();
  if (FAILED(opened)) throw std::runtime_error("the control does not activate");
}

Value Running::call(const std::wstring& name, const std::vector<Value>& given) {
  const Rules::HostCall running(host.rules(), "Invoke");
  return container::call(host.automation(), name, given);
}

Value Running::get(const std::wstring& name) {
  const Rules::HostCall running(host.rules(), "Invoke");
  return container::get(host.automation(), name);
}

void Running::put(const std::wstring& name, const Value& value, WORD how) {
  const Rules::HostCall running(host.rules(), "Invoke");
  container::put(host.automation(), name, value, how);
}

void Running::give() {
  put(L"TheClient", Value(store.client().Get()), DISPATCH_PROPERTYPUTREF);
  put(L"TheDatabase", Value(store.database().Get()));
  put(L"DroitsUtilisateur", Value(store.rights().Get()), DISPATCH_PROPERTYPUTREF);
}

void Running::init() {
  give();
  call(L"Init");
  host.pump();
}

std::wstring Running::stored(const std::wstring& code, int attribute) {
  return state().attribute(L"ORGPRISECHARGE", code, attribute);
}

std::string Running::finish() {
  std::string wrong = boxes.report() + host.finish();
  if (state().alive != 0)
    wrong += std::to_string(state().alive) + " store objects are still held\n";
  return wrong;
}

void ControlTest::SetUp() {
  running_ = std::make_unique<Running>(profile());
  container::fillWithThreeBodies(running_->store);
  running_->open();
  running_->init();
  ASSERT_EQ(GetForegroundWindow(), running_->window.handle());
  ASSERT_EQ(user().focused(), L"Txt_CodOrgChg");
}

void ControlTest::TearDown() {
  if (running_ == nullptr) return;
  EXPECT_EQ(running_->finish(), "");
}

void addRate(container::Typist& user) {
  user.click(L"Cmd_AjoutTaux");
  user.type(L"01012026");
  user.key(VK_TAB);
  user.type(L"20");
  user.key(VK_TAB);
  user.type(L"25");
  user.key(VK_TAB);
  user.type(L"15");
  user.click(L"Cmd_OKTaux");
}

void completeCreation(container::Typist& user) {
  user.clickTab(kActivites);
  user.fill(L"Txt_Entite", L"100");
  user.clickTab(kPriseEnCharge);
  user.click(L"Opt_HeureOrgChg");
  addRate(user);
  user.clickTab(kBordereau);
  user.doubleClickLine(L"Lst_ParamPossOrgChg", 0);
  user.clickTab(kCoordonnees);
}

void ControlTest::load(const std::wstring& code) {
  user().fill(L"Txt_CodOrgChg", code);
  ASSERT_EQ(user().text(L"Txt_CodOrgChg"), code);
}

}  // namespace lifecycle
