// What the tests of the built control share: the library beside the program, a store in memory, a
// host window, a container, a user and somebody who answers the boxes.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "store/Layouts.h"
#include "tests/windows/container/Automation.h"
#include "tests/windows/container/BoxWatcher.h"
#include "tests/windows/container/Container.h"
#include "tests/windows/container/FakeStore.h"
#include "tests/windows/container/HostWindow.h"
#include "tests/windows/container/Source.h"
#include "tests/windows/container/Typist.h"

namespace lifecycle {

namespace attribut = store::orgprisecharge;

// The folder of the program, with its last backslash.
std::wstring programFolder();
// Tessaline.ocx, loaded once for the whole program.
container::LibrarySource& library();

inline constexpr const wchar_t* kExclamation = L"exclamation";
inline constexpr const wchar_t* kQuestion = L"question";
inline constexpr const wchar_t* kInformation = L"information";

inline constexpr const wchar_t* kUnknownCode = L"Cet organisme de prise en charge n'existe pas.";
inline constexpr const wchar_t* kNoAcronym =
    L"Le sigle de l'organisme de prise en charge est obligatoire.";
inline constexpr const wchar_t* kNoName =
    L"La raison sociale de l'organisme de prise en charge est obligatoire.";
inline constexpr const wchar_t* kDelete =
    L"Etes-vous sûr de vouloir supprimer cet organisme de prise en charge ?";
inline constexpr const wchar_t* kHasAgreements =
    L"Des accords sont créés pour cet organisme. Suppression impossible.";
inline constexpr const wchar_t* kHasRequests =
    L"Des demandes d'accords sont créées pour cet organisme. Suppression impossible.";
inline constexpr const wchar_t* kLeaveCreation =
    L"Etes-vous sûr de vouloir quitter cette création ?";
inline constexpr const wchar_t* kSaveChanges =
    L"Voulez-vous enregistrer les modifications apportées à cet article ?";
inline constexpr const wchar_t* kNoLowerAccents =
    L"La saisie de minuscule accentuée est interdite sur cette zone.";

// The tabs, by position.
inline constexpr int kCoordonnees = 0;
inline constexpr int kRegles = 1;
inline constexpr int kPriseEnCharge = 2;
inline constexpr int kParticipation = 3;
inline constexpr int kBordereau = 4;
inline constexpr int kActivites = 5;

// On the coverage page: a rate of 20,00, 25,00 and 15,00 from 01/01/2026 on.
void addRate(container::Typist& user);
// What a creation that has been started needs on the pages after the first: an entity ("100"), a
// rate and a slip parameter. The first page is in front again at the end.
void completeCreation(container::Typist& user);

// A control in the strict container. finish() must be the last thing that a test lets happen; the
// fixtures below call it.
class Running {
 public:
  explicit Running(const container::Profile& profile);

  // Opens the control in its profile's way.
  void open();
  // Gives it store and rights and calls Init; throws what Init does.
  void init();
  void give();
  container::Value call(const std::wstring& name, const std::vector<container::Value>& given = {});
  container::Value get(const std::wstring& name);
  void put(const std::wstring& name, const container::Value& value,
           WORD how = DISPATCH_PROPERTYPUT);
  bool wSortir() { return get(L"W_Sortir").truth(); }

  container::FakeStoreState& state() { return store.state(); }
  std::wstring stored(const std::wstring& code, int attribute);

  // Ends everything; what was wrong, empty when nothing was.
  std::string finish();

  container::HostWindow window;
  container::BoxWatcher boxes;
  container::FakeStore store;
  container::Container host;
  container::Typist user;
};

// One control in the container of forms, with three bodies, started, the focus on the code.
class ControlTest : public testing::Test {
 protected:
  virtual container::Profile profile() const { return container::formProfile(); }
  void SetUp() override;
  void TearDown() override;

  Running& control() { return *running_; }
  container::Typist& user() { return running_->user; }
  container::BoxWatcher& boxes() { return running_->boxes; }
  void load(const std::wstring& code);  // types the code

  std::unique_ptr<Running> running_;
};

// The same in each kind of container.
class ProfileTest : public ControlTest, public testing::WithParamInterface<container::Profile> {
 protected:
  container::Profile profile() const override { return GetParam(); }
};

}  // namespace lifecycle
