// The control as its user and its host have it: a store in memory, a desktop that answers from a
// script, a user at keyboard and mouse.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "control/Ctr_OrgPriseCharge.h"
#include "store/Layouts.h"
#include "tests/support/Focus.h"
#include "tests/support/MemoryStore.h"
#include "tests/support/Same.h"
#include "tests/support/TestDesktop.h"
#include "toolkit/headless/User.h"

namespace behaviour {

namespace attribut = store::orgprisecharge;

using testing_support::bodyAttribute;
using testing_support::boxCount;
using testing_support::called;
using testing_support::CallKind;
using testing_support::hasFocus;
using testing_support::noBoxes;
using testing_support::same;
using testing_support::sameAttributes;
using testing_support::sameBody;
using toolkit::Answer;
using toolkit::CheckBox;
using toolkit::ComboBox;
using toolkit::CommandButton;
using toolkit::Icon;
using toolkit::ListBox;
using toolkit::OptionButton;
using toolkit::TextBox;
using toolkit::headless::Caller;

struct RightsLevel {
  long value = 2;
  bool fails = false;
  int reads = 0;
  int lostAfter = 0;  // so many reads from now the level is 1; 0: never
};

class TestRights : public screen::Rights {
 public:
  TestRights(std::shared_ptr<RightsLevel> level, std::shared_ptr<std::vector<std::string>> log)
      : level_(std::move(level)), log_(std::move(log)) {}
  ~TestRights() override { log_->push_back("Rights"); }
  std::shared_ptr<screen::RightsEntry> entry(std::string_view right) override;

  std::vector<std::string> asked;

 private:
  std::shared_ptr<RightsLevel> level_;
  std::shared_ptr<std::vector<std::string>> log_;
};

// Three bodies, 001 DOMUS, 002 CRAM, 003 CAF; the counter stands at 003.
void fillThreeBodies(testing_support::MemoryStore& store);
// Gives a body what the pages after the first ask for, so that it can be saved: a principal one in
// hours, of legal entity 010, with one activity and one slip parameter.
void completeBody(testing_support::MemoryStore& store, std::string_view code);
// Code tables, counter, slip parameters, a legal entity with an activity, and kinds of street; no
// body.
void fillTables(testing_support::MemoryStore& store);

using Lines = std::vector<std::string>;

// The texts as the values of one attribute.
std::string values(const Lines& texts);
// Attributes of an address that no page shows.
constexpr bool keptFree(int attribute) {
  return attribute > attribut::AdrMail && attribute <= store::adresse::Dernier;
}
// An attribute written with bars in the place of value marks.
std::string marked(std::string text);
// A line a call.
Lines told(const std::vector<testing_support::Call>& calls);
// The texts of a list or combo box.
template <class List>
Lines linesOf(const List& list) {
  Lines lines;
  for (const toolkit::ListItem& line : list.items().all()) lines.push_back(line.text);
  return lines;
}

// The tabs, by position.
inline constexpr int kCoordonnees = 0;
inline constexpr int kRegles = 1;
inline constexpr int kPriseEnCharge = 2;
inline constexpr int kParticipation = 3;
inline constexpr int kBordereau = 4;
inline constexpr int kActivites = 5;

// Texts of boxes that several pages lead to.
inline constexpr const char* kEnregistrer =
    "Voulez-vous enregistrer les modifications apportées à cet article ?";
inline constexpr const char* kQuitterCreation = "Etes-vous sûr de vouloir quitter cette création ?";
inline constexpr const char* kPlusDeCode =
    "Tous les codes d'organisme de prise en charge (001 à 999) sont attribués. La création ne peut "
    "pas être enregistrée.";
inline constexpr const char* kCompteurIllisible =
    "Le compteur des codes d'organisme de prise en charge ne peut pas être lu. La création ne peut "
    "pas être enregistrée.";
inline constexpr const char* kSansEntite =
    "L'organisme de prise en charge doit couvrir au moins une activité.";

class ControlTest : public testing::Test {
 protected:
  ControlTest();
  // Gives the control its objects, without Init.
  void connect();
  // The same, then Init; the journals start empty.
  void start();

  template <class T>
  T& child(std::string_view name) {
    auto* control = dynamic_cast<T*>(control_->surface().find(name));
    if (!control) throw std::logic_error("no child control " + std::string(name));
    return *control;
  }
  TextBox& box(std::string_view name) { return child<TextBox>(name); }
  CommandButton& button(std::string_view name) { return child<CommandButton>(name); }
  OptionButton& option(std::string_view name) { return child<OptionButton>(name); }
  CheckBox& check(std::string_view name) { return child<CheckBox>(name); }
  ComboBox& combo(std::string_view name) { return child<ComboBox>(name); }
  ListBox& list(std::string_view name) { return child<ListBox>(name); }
  bool enabled(std::string_view name) { return child<toolkit::Control>(name).enabled(); }
  TextBox& code() { return box("Txt_CodOrgChg"); }
  ComboBox& sigles() { return child<ComboBox>("Cbo_SigleOrgChg"); }
  toolkit::SSTab& tabs() { return child<toolkit::SSTab>("Ong_OrgPriseChg"); }

  // The user types a code into the empty code field.
  void lookUp(std::string_view code, Caller at = Caller::here());
  // The user starts a creation and fills what it needs: the two fields of the first page, the
  // legal entity, hours and a rate, a slip parameter. The first page is in front again at the end.
  void beginCreation(std::string_view sigle = "NEUF", std::string_view raison = "Organisme neuf",
                     Caller at = Caller::here());
  // The same for the pages after the first of a creation that has been started.
  void completeCreation(Caller at = Caller::here());
  // On the coverage page: a rate of 20,00, 25,00 and 15,00 from 01/01/2026 on.
  void addRate(Caller at = Caller::here());
  bool press(std::string_view name, Caller at = Caller::here()) {
    return user_->click(button(name), at);
  }

  // What each button, the code and the acronym's fields are: see state().
  std::string state();
  std::string attribute(std::string_view code, int number) {
    return std::string(store_.record("ORGPRISECHARGE", code).get(number));
  }
  // The one box shown since the last call.
  void expectBox(std::string_view text, Icon icon, toolkit::Buttons buttons = toolkit::Buttons::Ok,
                 Caller at = Caller::here());
  void expectNoBox(Caller at = Caller::here());
  void expectNothingWritten(Caller at = Caller::here());

  testing_support::MemoryStore store_;
  testing_support::TestDesktop desktop_;
  std::shared_ptr<RightsLevel> level_ = std::make_shared<RightsLevel>();
  std::unique_ptr<control::Ctr_OrgPriseCharge> control_;
  std::unique_ptr<toolkit::headless::User> user_;
};

inline constexpr const char* kEmpty = "code ajouter sortir | recherche";
inline constexpr const char* kExisting = "code supprimer ok annuler sortir | recherche pages";
inline constexpr const char* kCreating = "ok annuler | saisie pages";

}  // namespace behaviour
