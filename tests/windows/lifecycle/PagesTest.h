// What the tests of the pages share: a control in one of the containers in which users meet it, and
// a store with what the pages after the first choose from.
#pragma once

#include <memory>

#include "tests/windows/lifecycle/ControlTest.h"
#include "tests/windows/lifecycle/LocalStore.h"

namespace lifecycle {

inline constexpr const wchar_t* kNewScale = L"Souhaitez-vous créer un nouveau barème ?";
inline constexpr const wchar_t* kUpdate =
    L"Vous venez de saisir un nouveau barème au 01/02/2026\r\nSouhaitez-vous mettre à jour tous "
    L"les accords de l'organisme ?\r\nAttention, ce traitement peut durer quelques minutes.";

enum class Where {
  Form,    // keys are forwarded to the control
  Dialog,  // they are not: IsDialogMessage alone
  Atl      // a container that is not ours
};

std::string nameOf(Where where);
void PrintTo(Where where, std::ostream* out);

// A started control, and the user in front of it.
class Hosted {
 public:
  explicit Hosted(Where where);
  Hosted(const Hosted&) = delete;
  Hosted& operator=(const Hosted&) = delete;
  ~Hosted();

  void init(IDispatch* client, IDispatch* database, IDispatch* rights);
  // Ends everything; what was wrong, empty when nothing was.
  std::string finish();

  container::HostWindow window;
  container::BoxWatcher boxes;
  container::Typist user;

 private:
  class Way;
  class ContainerWay;
  class AtlWay;
  std::unique_ptr<Way> way_;
};

// Three bodies as in ControlTest, with accounts; entity "100" with three provider activities and an
// agency one, entity "200" with one activity; a chart of accounts; four slip parameters; an active
// agreement of body "002".
void fillForPages(container::FakeStore& store);
// The same records, in a store on disk.
void fillForPages(LocalStore& store);
// All records of a store in memory, into one on disk.
void copy(container::FakeStore& from, LocalStore& to);

// The control is started and the focus on the code.
class PagesTest : public testing::TestWithParam<Where> {
 protected:
  using Lines = std::vector<std::wstring>;
  using Held = container::Typist::Held;

  void SetUp() override;
  void TearDown() override;

  container::Typist& user() { return hosted_->user; }
  container::BoxWatcher& boxes() { return hosted_->boxes; }
  container::FakeStoreState& state() { return store_.state(); }
  std::wstring stored(const std::wstring& code, int attribute) {
    return state().attribute(L"ORGPRISECHARGE", code, attribute);
  }
  // Loads the body and brings a tab forward.
  void show(const std::wstring& code, int tab);
  void expectWarning(const wchar_t* text) { boxes().expect(text, kExclamation, L"OK", IDOK); }

  container::FakeStore store_;
  std::unique_ptr<Hosted> hosted_;
};

// A started control on a store on disk, the focus on the code.
class DiskTest : public testing::Test {
 protected:
  using Lines = std::vector<std::wstring>;
  using Held = container::Typist::Held;

  virtual Where where() const = 0;
  virtual void fill() { fillForPages(store_); }

  void SetUp() override;
  void TearDown() override;

  container::Typist& user() { return hosted_->user; }
  container::BoxWatcher& boxes() { return hosted_->boxes; }

  LocalStore store_;
  std::unique_ptr<Hosted> hosted_;
};

// Two values of one attribute.
std::wstring two(const wchar_t* first, const wchar_t* second);

inline auto everywhere() { return testing::Values(Where::Form, Where::Dialog, Where::Atl); }
inline std::string nameOfParam(const testing::TestParamInfo<Where>& given) {
  return nameOf(given.param);
}

}  // namespace lifecycle
