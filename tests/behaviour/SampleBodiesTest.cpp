// Every body of the sample, shown and saved without any change, keeps its text, but for what a save
// normalises by rule; and it is left without a question.
#include <algorithm>
#include <functional>

#include "store/CodeTable.h"
#include "store/Conversions.h"
#include "store/Layouts.h"
#include "tests/behaviour/ControlTest.h"
#include "tests/behaviour/SampleStore.h"
#include "tests/behaviour/Snapshot.h"

namespace behaviour {
namespace {

using store::DynamicArray;
using testing_support::MemoryStore;

bool isPrincipal(const DynamicArray& body) { return body.get(attribut::TypeOrgChg) == "P"; }
bool isChecked(const DynamicArray& body, int attribute) { return body.get(attribute) == "1"; }

// --- What a save normalises, each rule by itself.

struct Normal {
  const MemoryStore& store;
  bool accounting;

  using Rule = void (Normal::*)(DynamicArray&) const;
  static std::vector<Rule> rules() {
    return {&Normal::unsetNumbersAreZero,        &Normal::unknownDocumentsGo,
            &Normal::accountsWithoutEffectGo,    &Normal::hoursAreChosenByPrincipalBodies,
            &Normal::lettersAreManagedOrNothing, &Normal::billingIsAnticipatedByRequests,
            &Normal::blankRatesAreNothing,       &Normal::deductionsGoWithSlipsOfMfp,
            &Normal::emptyParticipationsAreZero};
  }

  void unsetNumbersAreZero(DynamicArray& body) const {
    for (const int attribute :
         {attribut::RenouvOrgChg, attribut::DemAccordOrgChg, attribut::IncidCompta,
          attribut::GestionExclu, attribut::FactAnticip, attribut::Abonnement, attribut::AjusTarif,
          attribut::CoutGlobal}) {
      if (body.get(attribute).empty()) body.set(attribute, "0");
    }
  }
  void unknownDocumentsGo(DynamicArray& body) const {
    const DynamicArray table = store.record("TABLES", "PIECESRENOUV");
    for (int i = body.DCount(attribut::PieceRenouOrgChg); i >= 1; --i) {
      if (store::labelOfCode(table, body.get(attribut::PieceRenouOrgChg, i)).empty()) {
        body.Delete(attribut::PieceRenouOrgChg, i);
      }
    }
  }
  void accountsWithoutEffectGo(DynamicArray& body) const {
    if (!accounting || !isChecked(body, attribut::IncidCompta)) return;
    if (body.get(attribut::DebitOrgChg).empty()) return;
    for (const int attribute : {attribut::DebitOrgChg, attribut::CreditOrgChg}) {
      if (!body.get(attribute).empty()) body.set(attribute, "");
    }
  }
  void hoursAreChosenByPrincipalBodies(DynamicArray& body) const {
    if (!isPrincipal(body)) body.set(attribut::GestionExclu, "0");
  }
  void lettersAreManagedOrNothing(DynamicArray& body) const {
    if (!isChecked(body, attribut::LettresInfo)) body.set(attribut::LettresInfo, "");
  }
  void billingIsAnticipatedByRequests(DynamicArray& body) const {
    if (!isPrincipal(body) || !isChecked(body, attribut::DemAccordOrgChg)) {
      body.set(attribut::FactAnticip, "0");
    }
  }

  void blankRatesAreNothing(DynamicArray& body) const {
    for (const int attribute : {attribut::TxRembMajOrgChg, attribut::PrestServOrgChg}) {
      for (int i = 1; i <= body.DCount(attribute); ++i) {
        if (body.get(attribute, i) == " ") body.set(attribute, i, "");
      }
    }
  }
  void deductionsGoWithSlipsOfMfp(DynamicArray& body) const {
    if (body.get(attribut::TypeBordOrgChg) != "M") return;
    for (const int attribute :
         {attribut::DebAbatHOrgChg, attribut::FinAbatHOrgChg, attribut::PourcentAbatOrgChg}) {
      if (!body.get(attribute).empty()) body.set(attribute, "");
    }
  }
  void emptyParticipationsAreZero(DynamicArray& body) const {
    for (int i = 1; i <= body.DCount(attribut::DebRevSeulOrgChg); ++i) {
      if (body.get(attribut::BaremCoursOrgChg, i).empty()) {
        body.set(attribut::BaremCoursOrgChg, i, "0");
      }
    }
  }

  DynamicArray operator()(DynamicArray body) const {
    for (const Rule rule : rules()) (this->*rule)(body);
    return body;
  }
};

// --- What the checks refuse of a body of the sample.

long slipWidth(const MemoryStore& store, const DynamicArray& body) {
  long width = 0;
  for (int i = 1; i <= body.DCount(attribut::ParamSelecOrgChg); ++i) {
    const std::string key(body.get(attribut::ParamSelecOrgChg, i));
    width += store::wholeNumber(
        store.record("PARAMBORDORGCHG", key).get(store::parambordorgchg::Longueur));
  }
  return width;
}

std::string scaleRefusal(const DynamicArray& body) {
  if (store::wholeNumber(body.get(attribut::DatBaremCours)) <=
      store::wholeNumber(body.get(attribut::DatBaremPrec))) {
    return "La date du barème en cours doit être supérieure à la date de barème précédent.";
  }
  for (int i = 2; i <= body.DCount(attribut::DebRevSeulOrgChg); ++i) {
    if (body.get(attribut::DebRevSeulOrgChg, i) != body.get(attribut::FinRevSeulOrgChg, i - 1)) {
      return "Il n'y a pas enchaînement dans les tranches de revenus des personnes seules.";
    }
  }
  return "";
}

// "" when it is saved.
std::string refusal(const MemoryStore& store, const DynamicArray& body, bool accounting) {
  if (accounting && !isChecked(body, attribut::IncidCompta)) {
    if (body.get(attribut::DebitOrgChg).empty()) {
      return "Le compte comptable DEBIT est obligatoire.";
    }
    if (body.get(attribut::CreditOrgChg).empty()) {
      return "Le compte comptable CREDIT est obligatoire.";
    }
  }
  const std::string scale = scaleRefusal(body);
  if (!scale.empty()) return scale;
  const long width = slipWidth(store, body);
  if (width <= 130) return "";
  return "La taille cumulée des paramètres sélectionnés est de " + std::to_string(width) +
         " caractères alors que la largeur de la page ne peut être supérieure à 130";
}

// --- The sample as it is, and with what it does not hold itself.

struct Variant {
  const char* name;
  std::function<void(DynamicArray& body)> change;
};

std::ostream& operator<<(std::ostream& out, const Variant& variant) { return out << variant.name; }

// A refused scale shows the row that breaks the chain, and opens a date that is to be entered
// again.
const std::set<std::string> kShownByARefusal{
    "Lst_DebRevSeulOrgChg", "Lst_FinRevSeulOrgChg", "Lst_DebRevMenOrgChg", "Lst_FinRevMenOrgChg",
    "Lst_BaremPrecOrgChg",  "Lst_BaremCoursOrgChg", "Bdv_Bareme",          "Txt_DatBaremCours"};

void asItIs(DynamicArray&) {}

void withUnsetNumbers(DynamicArray& body) {
  for (const int attribute :
       {attribut::RenouvOrgChg, attribut::DemAccordOrgChg, attribut::NbExemplOrgChg,
        attribut::IncidCompta, attribut::GestionExclu, attribut::LettresInfo, attribut::FactAnticip,
        attribut::StatsOrgChg, attribut::TypeBordOrgChg, attribut::ParamTriSelect}) {
    body.set(attribute, "");
  }
}

void withOptionsOfOthers(DynamicArray& body) {
  body.set(attribut::GestionExclu, "2");
  body.set(attribut::FactAnticip, "1");
  body.set(attribut::LettresInfo, "oui");
}

void withAccountsWithoutEffect(DynamicArray& body) {
  if (!isChecked(body, attribut::IncidCompta)) return;
  body.set(attribut::DebitOrgChg, "4110000000");
  body.set(attribut::CreditOrgChg, "7060000000");
  body.set(attribut::CpteProdAide, "7400000000");
}

using Parameter = std::tuple<bool, Variant>;

class SampleBodies : public ControlTest, public testing::WithParamInterface<Parameter> {
 protected:
  SampleBodies() {
    fillFromSample(store_);
    store_.set("COMPTEUR", "999", store::compteur::InterfaceComptable, accounting() ? "O" : "");
    for (const std::string& id : bodies()) {
      DynamicArray body = record(id);
      std::get<1>(GetParam()).change(body);
      store_.put(attribut::kFile, id, body);
    }
    // The list that each save reads again is no matter here.
    store_.answer("SSELECT ORGPRISECHARGE PAR 1", {{"001", "CD01"}, {"002", "CD02"}});
    start();
  }
  static bool accounting() { return std::get<0>(GetParam()); }
  std::vector<std::string> bodies() { return store_.ids(attribut::kFile); }
  DynamicArray record(const std::string& id) { return store_.record(attribut::kFile, id); }
  DynamicArray normal(const std::string& id) { return Normal{store_, accounting()}(record(id)); }
  std::string refusalOf(const std::string& id) { return refusal(store_, record(id), accounting()); }

  void expectRecord(const std::string& id, const DynamicArray& expected,
                    Caller at = Caller::here()) {
    const auto trace = called("expectRecord", at);
    EXPECT_PRED_FORMAT2(sameBody, record(id).text(), expected.text());
  }
  void expectRefused(const std::string& id, const std::string& message,
                     Caller at = Caller::here()) {
    const auto trace = called("expectRefused", at);
    const DynamicArray before = record(id);
    const Snapshot screen = snapshotOf(control_->surface());
    press("Cmd_OK");
    expectBox(message, Icon::Exclamation);
    expectNothingWritten();
    expectRecord(id, before);
    EXPECT_EQ(difference(screen, snapshotOf(control_->surface()), kShownByARefusal), "");
    press("Cmd_Annuler");
  }
  void expectSaved(const std::string& id, const DynamicArray& expected,
                   Caller at = Caller::here()) {
    const auto trace = called("expectSaved", at);
    press("Cmd_OK");
    expectNoBox();
    EXPECT_EQ(state(), kEmpty);
    EXPECT_EQ(store_.calls(CallKind::DBWrite).size(), 1U);
    expectRecord(id, expected);
    store_.forgetCalls();
  }
};

TEST_P(SampleBodies, SavedUnchangedKeepTheirTextAndTheSecondTimeWhollySo) {
  for (const std::string& id : bodies()) {
    SCOPED_TRACE(id);
    const std::string message = refusalOf(id);
    lookUp(id);
    expectNoBox();
    if (!message.empty()) {
      expectRefused(id, message);
      continue;
    }
    expectSaved(id, normal(id));
    lookUp(id);
    expectSaved(id, record(id));
  }
}

TEST_P(SampleBodies, AreLeftUnchangedWithoutAQuestion) {
  for (const std::string& id : bodies()) {
    SCOPED_TRACE(id);
    lookUp(id);
    press("Cmd_Sortir");
    expectNoBox();
    EXPECT_TRUE(control_->W_Sortir());
    control_->setW_Sortir(false);
  }
  expectNothingWritten();
}

class ChangedSampleBodies : public SampleBodies {};

TEST_P(ChangedSampleBodies, AreLeftWithAQuestionAndKeepAllTheRest) {
  for (const std::string& id : bodies()) {
    SCOPED_TRACE(id);
    if (!refusalOf(id).empty()) continue;
    lookUp(id);
    user_->fill(box("Txt_Ville"), "AILLEURS");
    desktop_.answer(Answer::Cancel);
    press("Cmd_Sortir");
    expectBox("Voulez-vous enregistrer les modifications apportées à cet article ?", Icon::Question,
              toolkit::Buttons::YesNoCancel);
    EXPECT_FALSE(control_->W_Sortir());
    DynamicArray expected = normal(id);
    expected.set(attribut::AdrVille, "AILLEURS");
    expectSaved(id, expected);
  }
}

const Variant kAsItIs{"AsItIs", asItIs};
const Variant kUnset{"UnsetNumbers", withUnsetNumbers};
const Variant kOfOthers{"OptionsOfOthers", withOptionsOfOthers};
const Variant kWithoutEffect{"AccountsWithoutEffect", withAccountsWithoutEffect};

std::string nameOf(const testing::TestParamInfo<Parameter>& parameter) {
  const auto& [accounting, variant] = parameter.param;
  return std::string(variant.name) + (accounting ? "WithAccounts" : "WithoutAccounts");
}

INSTANTIATE_TEST_SUITE_P(
    All, SampleBodies,
    testing::Combine(testing::Bool(), testing::Values(kAsItIs, kUnset, kOfOthers, kWithoutEffect)),
    nameOf);
INSTANTIATE_TEST_SUITE_P(All, ChangedSampleBodies,
                         testing::Combine(testing::Bool(), testing::Values(kAsItIs)), nameOf);

// --- The sample and its variants do show each rule at work.

TEST(SampleBodiesRules, AreEachNeededByABody) {
  MemoryStore store;
  fillFromSample(store);
  const Normal normal{store, true};
  for (std::size_t rule = 0; rule < Normal::rules().size(); ++rule) {
    int needed = 0;
    for (const Variant& variant : {kAsItIs, kUnset, kOfOthers, kWithoutEffect}) {
      for (const std::string& id : store.ids(attribut::kFile)) {
        DynamicArray body = store.record(attribut::kFile, id);
        variant.change(body);
        const std::string before = body.text();
        (normal.*Normal::rules()[rule])(body);
        needed += body.text() != before && refusal(store, body, true).empty();
      }
    }
    EXPECT_GT(needed, 0) << "rule " << rule;
  }
}

TEST(SampleBodiesRules, ThreeBodiesAreRefusedAndTheOthersAreNot) {
  MemoryStore store;
  fillFromSample(store);
  std::vector<std::string> messages;
  for (const std::string& id : store.ids(attribut::kFile)) {
    const std::string message = refusal(store, store.record(attribut::kFile, id), true);
    if (!message.empty()) messages.push_back(message);
  }
  EXPECT_PRED_FORMAT2(
      same, messages,
      (std::vector<std::string>{
          "La taille cumulée des paramètres sélectionnés est de 131 caractères alors que la "
          "largeur de la page ne peut être supérieure à 130",
          "Il n'y a pas enchaînement dans les tranches de revenus des personnes seules.",
          "La date du barème en cours doit être supérieure à la date de barème "
          "précédent."}));
}

}  // namespace
}  // namespace behaviour
