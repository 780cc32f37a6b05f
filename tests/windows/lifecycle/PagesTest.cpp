#include "tests/windows/lifecycle/PagesTest.h"

#include "tests/windows/lifecycle/AtlHost.h"

namespace lifecycle {

using container::Container;
using container::HostWindow;
using container::Value;
using Microsoft::WRL::ComPtr;

std::string nameOf(Where where) {
  if (where == Where::Form) return "Form";
  return where == Where::Dialog ? "Dialog" : "Atl";
}

void PrintTo(Where where, std::ostream* out) { *out << nameOf(where); }

class Hosted::Way {
 public:
  virtual ~Way() = default;
  virtual ComPtr<IDispatch> automation() = 0;
  virtual HWND controlWindow() = 0;
  virtual void pump() = 0;
  virtual std::string finish() = 0;
};

class Hosted::ContainerWay : public Way {
 public:
  ContainerWay(const container::Profile& profile, HostWindow& window)
      : host_(profile, window, library()) {
    if (FAILED(host_.open())) throw std::runtime_error("the control does not activate");
  }
  ComPtr<IDispatch> automation() override { return host_.automation(); }
  HWND controlWindow() override { return host_.controlWindow(); }
  void pump() override { host_.pump(); }
  std::string finish() override { return host_.finish(); }

 private:
  Container host_;
};

class Hosted::AtlWay : public Way {
 public:
  explicit AtlWay(HostWindow& window) : window_(window), host_(window) {}
  ComPtr<IDispatch> automation() override { return host_.control(); }
  HWND controlWindow() override { return host_.controlWindow(); }
  void pump() override { container::pump(); }
  std::string finish() override {
    host_.release();
    window_.destroy();
    container::pump();
    return library().canUnloadNow() == S_OK ? "" : "the control's library is still in use\n";
  }

 private:
  HostWindow& window_;
  AtlHost host_;
};

Hosted::Hosted(Where where)
    : user({window, [this] { way_->pump(); }, [this] { return way_->controlWindow(); }}) {
  boxes.setOwner(window.handle());
  if (where == Where::Atl) {
    way_ = std::make_unique<AtlWay>(window);
  } else {
    way_ = std::make_unique<ContainerWay>(
        where == Where::Form ? container::formProfile() : container::dialogProfile(), window);
  }
}

Hosted::~Hosted() = default;

void Hosted::init(IDispatch* client, IDispatch* database, IDispatch* rights) {
  const auto control = way_->automation();
  container::put(control, L"TheClient", Value(client));
  container::put(control, L"TheDatabase", Value(database));
  container::put(control, L"DroitsUtilisateur", Value(rights));
  container::call(control, L"Init");
  way_->pump();
}

std::string Hosted::finish() { return way_->finish() + boxes.report(); }

void fillForPages(container::FakeStore& store) {
  container::fillWithThreeBodies(store);
  store.put(L"COMPTEUR", L"999",
            {L"", L"", L"", L"", L"", L"", L"", L"", L"", L"003", L"", L"", L"", L"", L"O"});
  store.put(L"ACTIVITES", L"100M02",
            container::activity(L"Emploi direct", L"100", L"M", L"MANDAT"));
  store.put(L"ACTIVITES", L"100P03", container::activity(L"Garde de jour", L"100"));
  store.put(L"ACTIVITES", L"100P04", container::activity(L"Garde de nuit", L"100"));
  store.put(L"ASSOCIATION", L"200", {L"ENTRAIDE DES VALLEES"});
  store.put(L"ACTIVITES", L"200P01", container::activity(L"Portage de repas", L"200"));
  const std::pair<const wchar_t*, const wchar_t*> accounts[] = {
      {L"4110000000", L"USAGERS"},     {L"4120000000", L"ADHERENTS"},
      {L"4130000000", L"CAISSES"},     {L"4670000000", L"AUTRES DEBITEURS"},
      {L"7060000000", L"PRESTATIONS"}, {L"7080000000", L"PRODUITS ANNEXES"}};
  for (const auto& [number, label] : accounts) {
    store.put(L"PLANCOMPTABLE", std::wstring(L"100") + number, {label});
  }
  store.put(L"PLANCOMPTABLE", L"2004110000000", {L"D'UNE AUTRE ENTITE"});
  store.put(L"PARAMBORDORGCHG", L"2", {L"Heures", L"9"});
  store.put(L"PARAMBORDORGCHG", L"3", {L"Période", L"7"});
  store.put(L"PARAMBORDORGCHG", L"4", {L"Ville", L"90"});
  for (const wchar_t* code : {L"001", L"002", L"003"}) {
    store.set(L"ORGPRISECHARGE", code, attribut::DebitOrgChg, L"4110000000");
    store.set(L"ORGPRISECHARGE", code, attribut::CreditOrgChg, L"7060000000");
  }
  store.put(L"ACCORD", L"7002", {L"002", L"", L"", L"", L"", L"21300"});
}

void copy(container::FakeStore& from, LocalStore& to) {
  for (const auto& [file, records] : from.state().files) {
    for (const auto& [id, text] : records) to.put(file.c_str(), id.c_str(), text);
  }
}

void fillForPages(LocalStore& store) {
  container::FakeStore source;
  fillForPages(source);
  copy(source, store);
}

void PagesTest::SetUp() {
  fillForPages(store_);
  hosted_ = std::make_unique<Hosted>(GetParam());
  hosted_->init(store_.client().Get(), store_.database().Get(), store_.rights().Get());
  ASSERT_EQ(GetForegroundWindow(), hosted_->window.handle());
  user().click(L"Txt_CodOrgChg");
  ASSERT_EQ(user().focused(), L"Txt_CodOrgChg");
}

void PagesTest::TearDown() {
  if (hosted_ == nullptr) return;
  EXPECT_EQ(hosted_->finish(), "");
  EXPECT_EQ(state().alive, 0);
}

void PagesTest::show(const std::wstring& code, int tab) {
  user().fill(L"Txt_CodOrgChg", code);
  ASSERT_EQ(user().text(L"Txt_CodOrgChg"), code);
  user().clickTab(tab);
  ASSERT_EQ(user().tab(), tab);
}

void DiskTest::SetUp() {
  fill();
  hosted_ = std::make_unique<Hosted>(where());
  hosted_->init(store_.client().Get(), store_.database().Get(), store_.rights().Get());
  ASSERT_EQ(GetForegroundWindow(), hosted_->window.handle());
  user().click(L"Txt_CodOrgChg");
}

void DiskTest::TearDown() {
  if (hosted_ != nullptr) {
    EXPECT_EQ(hosted_->finish(), "");
  }
  EXPECT_EQ(store_.release(), S_OK);
}

std::wstring two(const wchar_t* first, const wchar_t* second) {
  return std::wstring(first) + container::kValueMark + second;
}

}  // namespace lifecycle
