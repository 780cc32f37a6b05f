// A body as a whole: entered on its six pages, saved, looked up again; and a screen that is
// cleared.
#include <map>
#include <set>

#include "store/Layouts.h"
#include "tests/behaviour/ScaleTest.h"

namespace behaviour {
namespace {

const std::string kMark(1, store::kValueMark);

// What the six pages show, a line a control: no buttons, and no lines that a combo box offers.
using Shown = std::map<std::string, std::string>;

std::string shownBy(const toolkit::Control& control) {
  using toolkit::Kind;
  switch (control.kind()) {
    case Kind::TextBox:
      return static_cast<const TextBox&>(control).text();
    case Kind::ComboBox:
      return static_cast<const ComboBox&>(control).text();
    case Kind::OptionButton:
      return static_cast<const toolkit::OptionButton&>(control).value() ? "set" : "";
    case Kind::CheckBox:
      return static_cast<const CheckBox&>(control).value() ? "set" : "";
    case Kind::ScrollBar: {
      const auto& bar = static_cast<const toolkit::ScrollBar&>(control);
      return std::to_string(bar.value()) + " of " + std::to_string(bar.max()) +
             (bar.visible() ? " shown" : "");
    }
    case Kind::ListBox: {
      std::string lines;
      for (const auto& line : static_cast<const ListBox&>(control).items().all()) {
        lines += line.text + "|";
      }
      return lines;
    }
    case Kind::Label:
    case Kind::Frame:
      return control.caption();
    default:
      return "";
  }
}

void shownBelow(const toolkit::Container& container, Shown& shown) {
  for (const toolkit::Control* control : container.children()) {
    const std::string text = shownBy(*control);
    if (!text.empty()) shown[control->name()] = text;
    if (control->isContainer()) shownBelow(static_cast<const toolkit::Container&>(*control), shown);
  }
}

class EnteredBody : public ControlTest {
 protected:
  EnteredBody() {
    fillTables(store_);
    store_.set("COMPTEUR", "999", store::compteur::InterfaceComptable, "O");
    for (const char* account : {"0104110000001", "0104110000002", "0107060000001"}) {
      store_.put("PLANCOMPTABLE", account, {std::string("COMPTE ") + account});
    }
    store_.put("ACTIVITES", "010P02",
               {"Garde", "010", "", "", "", "", "", "", "", "", "", "P", "SAAD"});
    store_.set("COMPTEUR", "999", store::compteur::DernierOrgChg, "041");
    start();
  }
  // The names of the enabled controls.
  std::set<std::string> enabledNow() {
    std::set<std::string> names;
    for (const auto& [name, enabled] : enabledBelow(control_->surface())) {
      if (enabled) names.insert(name);
    }
    return names;
  }
  Shown pages() {
    Shown shown;
    shownBelow(tabs(), shown);
    return shown;
  }
  void front(int tab, Caller at = Caller::here()) {
    const auto trace = called("front", at);
    ASSERT_TRUE(user_->click(tabs(), tab));
  }
  void fill(std::string_view name, std::string_view keys, Caller at = Caller::here()) {
    const auto trace = called("fill", at);
    ASSERT_TRUE(user_->fill(*control_->surface().find(name), keys)) << name;
  }
  void set(std::string_view name, Caller at = Caller::here()) {
    const auto trace = called("set", at);
    ASSERT_TRUE(user_->click(child<toolkit::OptionButton>(name))) << name;
  }
  void toggle(std::string_view name, Caller at = Caller::here()) {
    const auto trace = called("toggle", at);
    ASSERT_TRUE(user_->click(child<CheckBox>(name))) << name;
  }
  void choose(std::string_view name, int line, Caller at = Caller::here()) {
    const auto trace = called("choose", at);
    ASSERT_TRUE(user_->choose(child<ComboBox>(name), line)) << name;
  }
  void twice(std::string_view name, int line, Caller at = Caller::here()) {
    const auto trace = called("twice", at);
    ASSERT_TRUE(user_->dblClick(child<ListBox>(name), line)) << name;
  }

  // Every field of the six pages, the entity first: accounts are asked for under it.
  void enterAll(Caller at = Caller::here()) {
    const auto trace = called("enterAll", at);
    ASSERT_TRUE(press("Cmd_Ajouter"));
    ASSERT_TRUE(user_->type("ENTIER"));
    enterCoordonnees();
    enterActivites();
    enterRegles();
    enterPriseEnCharge();
    enterParticipation();
    enterBordereau();
    expectNoBox();
  }
  void enterCoordonnees(Caller at = Caller::here()) {
    const auto trace = called("enterCoordonnees", at);
    front(0);
    const std::pair<const char*, const char*> texts[] = {{"Txt_RaisonOrgChg", "Organisme entier"},
                                                         {"Txt_Complement", "Étage 2"},
                                                         {"Txt_NumVoie", "7"},
                                                         {"Txt_NomVoie", "de l'Œuvre"},
                                                         {"Txt_Localite", "Le Bourg"},
                                                         {"Txt_CodePostal", "63000"},
                                                         {"Txt_Ville", "Clermont"},
                                                         {"Txt_Telephone", "0400000001"},
                                                         {"Txt_Fax", "0400000002"},
                                                         {"Txt_Email", "a@b.example"},
                                                         {"Txt_InterlocDossOrgChg", "Mme D"},
                                                         {"Txt_InterlocFactOrgChg", "M. F"}};
    for (const auto& [name, keys] : texts) fill(name, keys);
    choose("Cbo_NatureVoie", 1);
  }
  void enterActivites(Caller at = Caller::here()) {
    const auto trace = called("enterActivites", at);
    front(5);
    fill("Txt_Entite", "010");
    twice("Lst_Activite", 0);
    twice("Lst_Activite", 1);
  }
  void enterRegles(Caller at = Caller::here()) {
    const auto trace = called("enterRegles", at);
    front(1);
    set("Opt_TypePrincipalOrgChg");
    set("Opt_PlafMensOrgChg");
    toggle("Cac_DemAccordOrgChg");
    toggle("Cac_FactAnticip");
    choose("Cbo_RenouvOrgChg", 2);
    twice("Lst_PiecePossibleOrgChg", 1);
    twice("Lst_PiecePossibleOrgChg", 0);
    choose("Cbo_StatsOrgChg", 1);
    choose("Cbo_PeriodFactOrgChg", 2);
    toggle("Cac_LettresInfo");
    fill("Txt_DebitOrgChg", "4110000001");
    fill("Txt_CreditOrgChg", "4110000002");
    fill("Txt_CpteProdAide", "7060000001");
    front(5);
    set("Opt_DimJF");
  }
  void enterRow(const char* add, const char* ok,
                const std::vector<std::pair<const char*, std::string>>& zones,
                Caller at = Caller::here()) {
    const auto trace = called("enterRow", at);
    ASSERT_TRUE(press(add));
    for (const auto& [zone, keys] : zones) fill(zone, keys);
    ASSERT_TRUE(press(ok));
  }
  void enterPriseEnCharge(Caller at = Caller::here()) {
    const auto trace = called("enterPriseEnCharge", at);
    front(2);
    set("Opt_HeureOrgChg");
    for (const char* date : {"01/01/2024", "1.1.25", "010126"}) {
      enterRow("Cmd_AjoutTaux", "Cmd_OKTaux",
               {{"Txt_DateRembOrgChg", date},
                {"Txt_TxRembOrgChg", "20,5"},
                {"Txt_TxRembMajOrgChg", "25"},
                {"Txt_PrestServOrgChg", "0,01"}});
    }
    for (const char* start : {"20", "0", "10"}) {
      enterRow("Cmd_AjoutAbat", "Cmd_OKAbat",
               {{"Txt_DebAbatHOrgChg", start},
                {"Txt_FinAbatHOrgChg", std::string(start) + ",5"},
                {"Txt_PourcentAbatOrgChg", "12,5"}});
    }
    fill("Txt_DesFacture", "Prise en charge");
    toggle("Cac_AjusTarif");
    toggle("Cac_CoutGlobal");
    fill("Txt_CodeCptPrestationService", "7060000001");
  }
  void enterParticipation(Caller at = Caller::here()) {
    const auto trace = called("enterParticipation", at);
    front(3);
    set("Opt_Quotient");
    set("Opt_GestPartPourc");
    desktop_.answer(Answer::Yes);
    ASSERT_TRUE(press("Cmd_NouveauBareme"));
    desktop_.takeBoxes();
    ASSERT_TRUE(user_->type("01/02/2026"));
    for (int i = 12; i >= 0; --i) {
      const std::string from = std::to_string(i * 100);
      const std::string to = std::to_string(i * 100 + 100);
      enterRow("Cmd_AjoutPart", "Cmd_OKPart",
               {{"Txt_DebRevSeulOrgChg", from},
                {"Txt_FinRevSeulOrgChg", to},
                {"Txt_DebRevMenOrgChg", from},
                {"Txt_FinRevMenOrgChg", to},
                {"Txt_BaremCoursOrgChg", "1,25"}});
    }
  }
  void enterBordereau(Caller at = Caller::here()) {
    const auto trace = called("enterBordereau", at);
    front(4);
    set("Opt_RecapBordOrgChg");
    twice("Lst_ParamPossOrgChg", 1);
    twice("Lst_ParamPossOrgChg", 0);
    twice("Lst_ParamTriPos", 5);
    twice("Lst_ParamTriPos", 0);
    ASSERT_TRUE(user_->scroll(child<toolkit::ScrollBar>("Bdh_NbExemp"), 3));
    fill("Txt_CodeThesaurus", "TH");
    fill("Txt_IdentMagnetOrgChg", "IM");
  }
};

TEST_F(EnteredBody, EnteredOnSixPagesSavedAndLookedUpAgainShowsTheSame) {
  enterAll();
  const Shown entered = pages();
  ASSERT_TRUE(press("Cmd_OK"));
  expectNoBox();
  ASSERT_TRUE(store_.has("ORGPRISECHARGE", "042"));
  // The list had one body alone, which has come to hand; it is looked up by its code anew.
  control_->Vider_Donnees();
  lookUp("042");
  expectNoBox();
  EXPECT_EQ(state(), kExisting);
  EXPECT_EQ(pages(), entered);
}

TEST_F(EnteredBody, HasEveryAttributeOfItsPages) {
  enterAll();
  ASSERT_TRUE(press("Cmd_OK"));
  expectNoBox();
  const std::map<int, std::string> expected{
      {attribut::SigleOrgChg, "ENTIER"},
      {attribut::RaisonOrgChg, "Organisme entier"},
      {attribut::AdrComplement, "Étage 2"},
      {attribut::AdrNumero, "7"},
      {attribut::AdrNatureVoie, "R"},
      {attribut::AdrVoie, "de l'Œuvre"},
      {attribut::AdrLocalite, "Le Bourg"},
      {attribut::AdrCodePostal, "63000"},
      {attribut::AdrVille, "Clermont"},
      {attribut::AdrTelephone, "0400000001"},
      {attribut::AdrFax, "0400000002"},
      {attribut::AdrMail, "a@b.example"},
      {attribut::InterlocDossOrgChg, "Mme D"},
      {attribut::InterlocFactOrgChg, "M. F"},
      {attribut::PeriodFactOrgChg, "F"},
      {attribut::TypeOrgChg, "P"},
      {attribut::PlafondOrg, "2"},
      {attribut::RenouvOrgChg, "2"},
      {attribut::PieceRenouOrgChg, "RI" + kMark + "AI"},
      {attribut::DebitOrgChg, "4110000001"},
      {attribut::CreditOrgChg, "4110000002"},
      {attribut::AttribOrgChg, "H"},
      {attribut::DateRembOrgChg,
       stored("01/01/2026") + kMark + stored("01/01/2025") + kMark + stored("01/01/2024")},
      {attribut::TxRembOrgChg, "2050" + kMark + "2050" + kMark + "2050"},
      {attribut::TxRembMajOrgChg, "2500" + kMark + "2500" + kMark + "2500"},
      {attribut::PrestServOrgChg, "1" + kMark + "1" + kMark + "1"},
      {attribut::DebAbatHOrgChg, "0" + kMark + "1000" + kMark + "2000"},
      {attribut::FinAbatHOrgChg, "50" + kMark + "1050" + kMark + "2050"},
      {attribut::PourcentAbatOrgChg, "1250" + kMark + "1250" + kMark + "1250"},
      {attribut::BaremPrecOrgChg, std::string(12, store::kValueMark)},
      {attribut::DatBaremCours, stored("01/02/2026")},
      {attribut::Bareme, "Q"},
      {attribut::GestPartBenef, "%"},
      {attribut::Abonnement, "0"},
      {attribut::StatsOrgChg, "MU"},
      {attribut::DemAccordOrgChg, "1"},
      {attribut::TypeBordOrgChg, "R"},
      {attribut::Entite, "010"},
      {attribut::CodActSelect, "010P01" + kMark + "010P02"},
      {attribut::NbExemplOrgChg, "3"},
      {attribut::IdentMagnetOrgChg, "IM"},
      {attribut::IncidCompta, "0"},
      {attribut::GestionExclu, "1"},
      {attribut::LettresInfo, "1"},
      {attribut::AjusTarif, "1"},
      {attribut::CptPrestationService, "7060000001"},
      {attribut::CoutGlobal, "1"},
      {attribut::CpteProdAide, "7060000001"},
      {attribut::FactAnticip, "1"},
      {attribut::CodeThesaurus, "TH"},
      {attribut::DesFacture, "Prise en charge"},
      {attribut::ParamSelecOrgChg, "1" + kMark + "2"},
      {attribut::ParamTriSelect, "6" + kMark + "1"}};
  const store::DynamicArray record = store_.record("ORGPRISECHARGE", "042");
  for (int number = 1; number <= attribut::Dernier; ++number) {
    if (number >= attribut::DebRevSeulOrgChg && number <= attribut::BaremCoursOrgChg &&
        number != attribut::BaremPrecOrgChg) {
      EXPECT_EQ(record.DCount(number), 13) << bodyAttribute(number);
      continue;
    }
    const auto found = expected.find(number);
    EXPECT_EQ(record.get(number), found == expected.end() ? "" : found->second)
        << bodyAttribute(number);
  }
  for (int value = 1; value <= 13; ++value) {
    EXPECT_EQ(record.get(attribut::DebRevSeulOrgChg, value), std::to_string((value - 1) * 10000));
    EXPECT_EQ(record.get(attribut::FinRevSeulOrgChg, value), std::to_string(value * 10000));
    EXPECT_EQ(record.get(attribut::BaremCoursOrgChg, value), "125");
  }
}

TEST_F(EnteredBody, SavedAgainUnchangedKeepsItsText) {
  enterAll();
  ASSERT_TRUE(press("Cmd_OK"));
  const std::string text = store_.record("ORGPRISECHARGE", "042").text();
  control_->Vider_Donnees();
  lookUp("042");
  ASSERT_TRUE(press("Cmd_OK"));
  expectNoBox();
  EXPECT_PRED_FORMAT2(sameBody, store_.record("ORGPRISECHARGE", "042").text(), text);
  EXPECT_EQ(store_.calls(CallKind::DBWrite).size(), 3U);  // the counter, and the body twice
}

TEST_F(EnteredBody, LookedUpAndLeftAsksNothing) {
  enterAll();
  ASSERT_TRUE(press("Cmd_OK"));
  control_->Vider_Donnees();
  lookUp("042");
  store_.forgetCalls();
  ASSERT_TRUE(press("Cmd_Sortir"));
  expectNoBox();
  expectNothingWritten();
  EXPECT_TRUE(control_->W_Sortir());
}

// Clearing ----------------------------------------------------------------------------------------

TEST_F(EnteredBody, ViderDonneesClearsEveryPage) {
  const Shown empty = pages();
  control_->Vider_Donnees();
  const auto enabled = enabledNow();
  EXPECT_EQ(pages(), empty);
  enterAll();
  ASSERT_NE(pages(), empty);
  control_->Vider_Donnees();
  EXPECT_EQ(pages(), empty);
  EXPECT_EQ(enabledNow(), enabled);
  EXPECT_EQ(state(), kEmpty);
}

TEST_F(EnteredBody, EveryWayToAnEmptyScreenClearsEveryPage) {
  const Shown empty = pages();
  enterAll();
  desktop_.answer(Answer::Yes);
  ASSERT_TRUE(press("Cmd_Annuler"));
  EXPECT_EQ(pages(), empty);
  desktop_.takeBoxes();
  enterAll();
  ASSERT_TRUE(press("Cmd_OK"));
  control_->Vider_Donnees();
  EXPECT_EQ(pages(), empty);
  lookUp("042");
  ASSERT_NE(pages(), empty);
  lookUp("777");
  EXPECT_EQ(pages(), empty);
  desktop_.takeBoxes();
  lookUp("042");
  ASSERT_TRUE(press("Cmd_Annuler"));
  EXPECT_EQ(pages(), empty);
  lookUp("042");
  desktop_.answer(Answer::Yes);
  ASSERT_TRUE(press("Cmd_Supprimer"));
  EXPECT_EQ(pages(), empty);
}

TEST_F(EnteredBody, NothingOfItStaysInTheNextCreation) {
  ASSERT_TRUE(press("Cmd_Ajouter"));
  const Shown fresh = pages();
  const auto enabled = enabledNow();
  desktop_.answer(Answer::Yes);
  ASSERT_TRUE(press("Cmd_Annuler"));
  desktop_.takeBoxes();
  enterAll();
  ASSERT_TRUE(press("Cmd_OK"));
  control_->Vider_Donnees();
  ASSERT_TRUE(press("Cmd_Ajouter"));
  EXPECT_EQ(pages(), fresh);
  EXPECT_EQ(enabledNow(), enabled);
}

}  // namespace
}  // namespace behaviour
