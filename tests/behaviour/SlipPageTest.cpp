// The slip parameters page: columns and their widths, their order, sorting, type of slip, copies,
// codes, and what this page writes for the management rules page.
#include <algorithm>
#include <cstdint>

#include "pages/Ong5.h"
#include "tests/behaviour/ControlTest.h"
#include "tests/behaviour/Snapshot.h"
#include "toolkit/AccessibleName.h"
#include "toolkit/Frame.h"
#include "toolkit/ScrollBar.h"

namespace behaviour {
namespace {

using toolkit::Label;
using toolkit::ScrollBar;

constexpr const char* kSansParametre =
    "Au moins un paramètre pour l'édition du bordereau doit être sélectionné.";
constexpr const char* kPasPrincipal = "Le type d'organisme doit être obligatoirement principal.";

std::string tropLarge(const std::string& total) {
  return "La taille cumulée des paramètres sélectionnés est de " + total +
         " caractères alors que la largeur de la page ne peut être supérieure à 130";
}

std::vector<long> dataOf(const ListBox& list) {
  std::vector<long> data;
  for (const toolkit::ListItem& line : list.items().all()) data.push_back(line.data);
  return data;
}

Lines selectionOf(const ListBox& list) {
  Lines lines;
  for (int line = 0; line < list.listCount(); ++line) {
    if (list.selected(line)) lines.push_back(list.list(line));
  }
  return lines;
}

// "Nom" is 30 wide, "Heures" 8, "Adresse" 60, "Commune" 27, "Dossier" 4, "Sexe" 1, "Rang" 2.
void fillParameters(testing_support::MemoryStore& store) {
  store.put("PARAMBORDORGCHG", "3", {"Adresse", "60"});
  store.put("PARAMBORDORGCHG", "4", {"Commune", "27"});
  store.put("PARAMBORDORGCHG", "5", {"Dossier", "4"});
  store.put("PARAMBORDORGCHG", "6", {"Sexe", "1"});
  store.put("PARAMBORDORGCHG", "7", {"Rang", "2"});
}

const std::string k129 = values({"1", "2", "3", "4", "5"});
const std::string k130 = values({"1", "2", "3", "4", "5", "6"});
const std::string k131 = values({"1", "2", "3", "4", "5", "7"});

class SlipPage : public ControlTest {
 protected:
  SlipPage() {
    fillThreeBodies(store_);
    fillParameters(store_);
    start();
  }
  // Shows body 001 with these slip parameters, this page in front.
  void show(std::string_view parameters = "1", Caller at = Caller::here()) {
    const auto trace = called("show", at);
    store_.set("ORGPRISECHARGE", "001", attribut::ParamSelecOrgChg, parameters);
    showStored();
  }
  void showStored(Caller at = Caller::here()) {
    const auto trace = called("showStored", at);
    if (!code().text().empty()) press("Cmd_Annuler");
    lookUp("001");
    user_->click(tabs(), kBordereau);
    store_.forgetCalls();
  }
  void create(Caller at = Caller::here()) {
    const auto trace = called("create", at);
    press("Cmd_Ajouter");
    user_->click(tabs(), kBordereau);
  }

  ListBox& possible() { return child<ListBox>("Lst_ParamPossOrgChg"); }
  ListBox& chosen() { return child<ListBox>("Lst_ParamSelecOrgChg"); }
  ListBox& widths() { return child<ListBox>("Lst_LongParam"); }
  ListBox& sorts() { return child<ListBox>("Lst_ParamTriPos"); }
  ListBox& sortsChosen() { return child<ListBox>("Lst_ParamTriSelect"); }
  Label& counter() { return child<Label>("Etq_NbCarSelect"); }
  TextBox& copies() { return box("Txt_NbExEmplOrgChg"); }
  ScrollBar& copiesBar() { return child<ScrollBar>("Bdh_NbExemp"); }

  // The user selects these lines, in this order: a click, then clicks with Ctrl.
  void select(ListBox& list, const Lines& lines, Caller at = Caller::here()) {
    const auto trace = called("select", at);
    bool first = true;
    for (const std::string& line : lines) {
      ASSERT_TRUE(user_->click(list, list.items().find(line), !first)) << line;
      first = false;
    }
  }
  void dblClick(ListBox& list, std::string_view line, Caller at = Caller::here()) {
    const auto trace = called("dblClick", at);
    ASSERT_TRUE(user_->dblClick(list, list.items().find(line))) << line;
  }
  bool orderEnabled(Caller at = Caller::here()) {
    const auto trace = called("orderEnabled", at);
    EXPECT_EQ(button("Cmd_HautBord").enabled(), button("Cmd_BasBord").enabled());
    return button("Cmd_HautBord").enabled();
  }
  std::string saved(int number) {
    press("Cmd_OK");
    expectNoBox();
    return attribute("001", number);
  }
  void expectRefused(std::string_view text, int tab, const toolkit::Control& focus,
                     Caller at = Caller::here()) {
    const auto trace = called("expectRefused", at);
    expectBox(text, Icon::Exclamation);
    EXPECT_EQ(tabs().tab(), tab);
    EXPECT_PRED_FORMAT1(hasFocus, focus);
    EXPECT_EQ(state(), kExisting);
    expectNothingWritten();
  }
};

// --- Possible parameters

TEST_F(SlipPage, PossibleParametersComeByLabelWithTheirIdentifiersAndWidths) {
  control_->Remplir_ParamsPoss();
  EXPECT_PRED_FORMAT2(same, linesOf(possible()),
                      (Lines{"Adresse", "Commune", "Dossier", "Heures", "Nom", "Rang", "Sexe"}));
  EXPECT_PRED_FORMAT2(same, dataOf(possible()), (std::vector<long>{3, 4, 5, 2, 1, 7, 6}));
  EXPECT_PRED_FORMAT2(same, linesOf(widths()), (Lines{"60", "27", "4", "8", "30", "2", "1"}));
  EXPECT_FALSE(widths().visible());
}

TEST_F(SlipPage, PossibleParametersAreReadBySentenceWithKeyLabelAndWidth) {
  control_->Remplir_ParamsPoss();
  ASSERT_EQ(store_.calls().size(), 1U);
  store::DynamicArray request;
  request.set(1, "SSELECT PARAMBORDORGCHG PAR 1");
  request.set(2, "PARAMBORDORGCHG");
  request.set(3, "0 1 2");
  EXPECT_EQ(store_.calls()[0].text, request.text());
}

TEST_F(SlipPage, PossibleParametersAreEmptyWhenThereAreNone) {
  for (const std::string& id : store_.ids("PARAMBORDORGCHG")) store_.erase("PARAMBORDORGCHG", id);
  control_->Remplir_ParamsPoss();
  EXPECT_EQ(possible().listCount(), 0);
  EXPECT_EQ(widths().listCount(), 0);
}

TEST_F(SlipPage, PossibleParametersThatCannotBeReadTellTheHostAndLeaveNone) {
  store_.fail(CallKind::ExecuteSentence, "PARAMBORDORGCHG");
  EXPECT_THROW(control_->Remplir_ParamsPoss(), store::StoreError);
  EXPECT_EQ(possible().listCount(), 0);
  EXPECT_EQ(widths().listCount(), 0);
}

TEST_F(SlipPage, PossibleParametersMayLackLabelOrWidthOrHoldMore) {
  store_.answer("SSELECT PARAMBORDORGCHG PAR 1",
                {{"8"}, {"1", "Nom"}, {"2", "Heures", "8", "de trop"}, {"", "", ""}});
  control_->Remplir_ParamsPoss();
  EXPECT_PRED_FORMAT2(same, linesOf(possible()), (Lines{"", "Nom", "Heures", ""}));
  EXPECT_PRED_FORMAT2(same, dataOf(possible()), (std::vector<long>{8, 1, 2, 0}));
  EXPECT_PRED_FORMAT2(same, linesOf(widths()), (Lines{"", "", "8", ""}));
}

// --- Adding

TEST_F(SlipPage, ADoubleClickAddsTheParameterWithItsIdentifier) {
  show();
  dblClick(possible(), "Heures");
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), (Lines{"Nom", "Heures"}));
  EXPECT_PRED_FORMAT2(same, dataOf(chosen()), (std::vector<long>{1, 2}));
  EXPECT_EQ(counter().caption(), "38/130");
}

TEST_F(SlipPage, AnAddedParameterStaysPossibleAndIsDeselected) {
  show();
  dblClick(possible(), "Heures");
  EXPECT_EQ(possible().listCount(), 7);
  EXPECT_PRED_FORMAT2(same, selectionOf(possible()), Lines{});
}

TEST_F(SlipPage, TheButtonAddsSeveralInTheOrderOfTheListNotOfTheClicks) {
  show();
  select(possible(), {"Sexe", "Adresse", "Dossier"});
  press("Cmd_DroiteBord");
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), (Lines{"Nom", "Adresse", "Dossier", "Sexe"}));
  EXPECT_PRED_FORMAT2(same, dataOf(chosen()), (std::vector<long>{1, 3, 5, 6}));
  EXPECT_PRED_FORMAT2(same, selectionOf(possible()), Lines{});
  EXPECT_EQ(counter().caption(), "95/130");
}

TEST_F(SlipPage, ARangeSelectedWithShiftIsAddedWhole) {
  show();
  user_->click(possible(), 1);
  user_->click(possible(), 3, false, true);
  press("Cmd_DroiteBord");
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), (Lines{"Nom", "Commune", "Dossier", "Heures"}));
}

TEST_F(SlipPage, ADoubleClickAddsItsLineAloneWhateverWasSelected) {
  show();
  select(possible(), {"Sexe", "Adresse"});
  dblClick(possible(), "Rang");
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), (Lines{"Nom", "Rang"}));
}

TEST_F(SlipPage, AParameterIsNotAddedTwice) {
  show();
  select(possible(), {"Nom", "Heures"});
  press("Cmd_DroiteBord");
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), (Lines{"Nom", "Heures"}));
  EXPECT_PRED_FORMAT2(same, selectionOf(possible()), Lines{});
  dblClick(possible(), "Heures");
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), (Lines{"Nom", "Heures"}));
  EXPECT_EQ(counter().caption(), "38/130");
}

TEST_F(SlipPage, LabelsAreComparedToTheLetter) {
  store_.put("PARAMBORDORGCHG", "8", {"nom", "5"});
  control_->Remplir_ParamsPoss();
  show();
  dblClick(possible(), "nom");
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), (Lines{"Nom", "nom"}));
  EXPECT_PRED_FORMAT2(same, dataOf(chosen()), (std::vector<long>{1, 8}));
}

TEST_F(SlipPage, ADisabledListAddsNothing) {
  show("");
  select(possible(), {"Heures"});
  possible().setEnabled(false);
  press("Cmd_DroiteBord");
  EXPECT_EQ(chosen().listCount(), 0);
  EXPECT_PRED_FORMAT2(same, selectionOf(possible()), Lines{"Heures"});
  EXPECT_FALSE(orderEnabled());
}

// --- Order buttons

TEST_F(SlipPage, ShowingEnablesTheOrderButtonsFromTwoParametersOn) {
  show("");
  EXPECT_FALSE(orderEnabled());
  show("1");
  EXPECT_FALSE(orderEnabled());
  show(values({"1", "2"}));
  EXPECT_TRUE(orderEnabled());
}

TEST_F(SlipPage, AddingEnablesTheOrderButtonsWhateverThereIs) {
  show("");
  dblClick(possible(), "Nom");
  EXPECT_TRUE(orderEnabled());
  show("");
  press("Cmd_DroiteBord");
  EXPECT_EQ(chosen().listCount(), 0);
  EXPECT_TRUE(orderEnabled());
}

TEST_F(SlipPage, RemovingKeepsTheOrderButtonsEnabledFromTwoParametersOn) {
  show(values({"1", "2", "3"}));
  dblClick(chosen(), "Nom");
  EXPECT_TRUE(orderEnabled());
  dblClick(chosen(), "Heures");
  EXPECT_FALSE(orderEnabled());
  dblClick(chosen(), "Adresse");
  EXPECT_FALSE(orderEnabled());
}

TEST_F(SlipPage, RemovingNothingSetsTheOrderButtonsAgain) {
  show("");
  dblClick(possible(), "Nom");
  press("Cmd_GaucheBord");
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), Lines{"Nom"});
  EXPECT_FALSE(orderEnabled());
}

// --- Removing

TEST_F(SlipPage, ADoubleClickRemovesAParameter) {
  show(values({"1", "2"}));
  dblClick(chosen(), "Nom");
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), Lines{"Heures"});
  EXPECT_PRED_FORMAT2(same, dataOf(chosen()), std::vector<long>{2});
  EXPECT_EQ(counter().caption(), "8/130");
  EXPECT_EQ(possible().listCount(), 7);
}

TEST_F(SlipPage, TheButtonRemovesSeveral) {
  show(k129);
  select(chosen(), {"Commune", "Heures", "Adresse"});
  press("Cmd_GaucheBord");
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), (Lines{"Nom", "Dossier"}));
  EXPECT_PRED_FORMAT2(same, dataOf(chosen()), (std::vector<long>{1, 5}));
  EXPECT_EQ(counter().caption(), "34/130");
}

TEST_F(SlipPage, NeighboursAreRemovedTogether) {
  show(k129);
  user_->click(chosen(), 0);
  user_->click(chosen(), 4, false, true);
  press("Cmd_GaucheBord");
  EXPECT_EQ(chosen().listCount(), 0);
  EXPECT_EQ(counter().caption(), "");
}

TEST_F(SlipPage, ARemovedParameterCanBeAddedAgain) {
  show(values({"1", "2"}));
  dblClick(chosen(), "Nom");
  dblClick(possible(), "Nom");
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), (Lines{"Heures", "Nom"}));
}

// --- Order

TEST_F(SlipPage, UpExchangesWithTheLineAboveAndTheHighlightFollows) {
  show(values({"1", "2", "3"}));
  select(chosen(), {"Adresse"});
  press("Cmd_HautBord");
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), (Lines{"Nom", "Adresse", "Heures"}));
  EXPECT_PRED_FORMAT2(same, dataOf(chosen()), (std::vector<long>{1, 3, 2}));
  EXPECT_PRED_FORMAT2(same, selectionOf(chosen()), Lines{"Adresse"});
  EXPECT_EQ(chosen().listIndex(), 1);
  press("Cmd_HautBord");
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), (Lines{"Adresse", "Nom", "Heures"}));
  EXPECT_PRED_FORMAT2(same, selectionOf(chosen()), Lines{"Adresse"});
}

TEST_F(SlipPage, DownExchangesWithTheLineBelowAndTheHighlightFollows) {
  show(values({"1", "2", "3"}));
  select(chosen(), {"Nom"});
  press("Cmd_BasBord");
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), (Lines{"Heures", "Nom", "Adresse"}));
  EXPECT_PRED_FORMAT2(same, dataOf(chosen()), (std::vector<long>{2, 1, 3}));
  EXPECT_PRED_FORMAT2(same, selectionOf(chosen()), Lines{"Nom"});
  press("Cmd_BasBord");
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), (Lines{"Heures", "Adresse", "Nom"}));
  EXPECT_EQ(chosen().listIndex(), 2);
}

TEST_F(SlipPage, AtTheEndsUpAndDownDoNothing) {
  show(values({"1", "2"}));
  select(chosen(), {"Nom"});
  press("Cmd_HautBord");
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), (Lines{"Nom", "Heures"}));
  EXPECT_PRED_FORMAT2(same, selectionOf(chosen()), Lines{"Nom"});
  select(chosen(), {"Heures"});
  press("Cmd_BasBord");
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), (Lines{"Nom", "Heures"}));
  EXPECT_PRED_FORMAT2(same, selectionOf(chosen()), Lines{"Heures"});
}

TEST_F(SlipPage, WithoutAHighlightUpAndDownDoNothing) {
  show(values({"1", "2"}));
  press("Cmd_HautBord");
  press("Cmd_BasBord");
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), (Lines{"Nom", "Heures"}));
  EXPECT_PRED_FORMAT2(same, selectionOf(chosen()), Lines{});
}

TEST_F(SlipPage, WithAnEmptyOrSingleListUpAndDownDoNothing) {
  show("");
  press("Cmd_DroiteBord");
  press("Cmd_HautBord");
  press("Cmd_BasBord");
  EXPECT_EQ(chosen().listCount(), 0);
  dblClick(possible(), "Nom");
  select(chosen(), {"Nom"});
  press("Cmd_HautBord");
  press("Cmd_BasBord");
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), Lines{"Nom"});
}

TEST_F(SlipPage, OfSeveralSelectedTheOneLastClickedMoves) {
  show(values({"1", "2", "3"}));
  select(chosen(), {"Nom", "Adresse"});
  press("Cmd_HautBord");
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), (Lines{"Nom", "Adresse", "Heures"}));
  EXPECT_PRED_FORMAT2(same, selectionOf(chosen()), (Lines{"Nom", "Adresse"}));
  press("Cmd_HautBord");
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), (Lines{"Adresse", "Nom", "Heures"}));
  EXPECT_PRED_FORMAT2(same, selectionOf(chosen()), (Lines{"Adresse", "Nom"}));
}

TEST_F(SlipPage, TheHighlightedParameterMovesWhereverTheLastClickWas) {
  show(values({"1", "2", "3"}));
  select(chosen(), {"Adresse", "Nom"});
  select(chosen(), {"Adresse"});
  user_->click(chosen(), 0, true);
  user_->click(chosen(), 0, true);
  EXPECT_PRED_FORMAT2(same, selectionOf(chosen()), Lines{"Adresse"});
  EXPECT_EQ(chosen().listIndex(), 0);
  press("Cmd_HautBord");
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), (Lines{"Nom", "Adresse", "Heures"}));
  EXPECT_PRED_FORMAT2(same, selectionOf(chosen()), Lines{"Adresse"});
  EXPECT_EQ(chosen().listIndex(), 1);
}

TEST_F(SlipPage, OfSeveralTheFirstMovesWhenTheLineLastClickedIsNoneOfThem) {
  show(values({"1", "2", "3", "4"}));
  select(chosen(), {"Heures", "Commune", "Nom"});
  user_->click(chosen(), 0, true);
  press("Cmd_BasBord");
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), (Lines{"Nom", "Adresse", "Heures", "Commune"}));
  EXPECT_PRED_FORMAT2(same, selectionOf(chosen()), (Lines{"Heures", "Commune"}));
}

TEST_F(SlipPage, TheMovedParameterStaysInView) {
  show(k131);
  chosen().setLinesInView(3);
  select(chosen(), {"Adresse"});
  press("Cmd_BasBord");
  EXPECT_EQ(chosen().topIndex(), 1);
  press("Cmd_BasBord");
  EXPECT_EQ(chosen().topIndex(), 2);
  for (int i = 0; i < 4; ++i) press("Cmd_HautBord");
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()),
                      (Lines{"Adresse", "Nom", "Heures", "Commune", "Dossier", "Rang"}));
  EXPECT_EQ(chosen().topIndex(), 0);
}

TEST_F(SlipPage, AfterARemovalTheNextLineIsInItsPlace) {
  show(values({"1", "2", "3"}));
  dblClick(chosen(), "Heures");
  EXPECT_EQ(chosen().list(chosen().listIndex()), "Adresse");
  EXPECT_PRED_FORMAT2(same, selectionOf(chosen()), Lines{});
  dblClick(chosen(), "Adresse");
  EXPECT_EQ(chosen().list(chosen().listIndex()), "Nom");
}

TEST_F(SlipPage, ADoubleClickBesideTheLinesDoesNothing) {
  show(values({"1", "2"}));
  select(possible(), {"Adresse"});
  EXPECT_FALSE(user_->dblClickBeside(possible()));
  select(chosen(), {"Nom"});
  EXPECT_FALSE(user_->dblClickBeside(chosen()));
  select(sorts(), {"Ville"});
  EXPECT_FALSE(user_->dblClickBeside(sorts()));
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), (Lines{"Nom", "Heures"}));
  EXPECT_PRED_FORMAT2(same, linesOf(sortsChosen()), Lines{});
  EXPECT_PRED_FORMAT2(same, selectionOf(chosen()), Lines{"Nom"});
}

TEST_F(SlipPage, InConsultationNothingMovesBetweenTheLists) {
  store_.set("ORGPRISECHARGE", "001", 62, "1");
  show(values({"1", "2"}));
  level_->value = 1;
  dblClick(possible(), "Adresse");
  press("Cmd_DroiteBord");
  dblClick(chosen(), "Nom");
  press("Cmd_GaucheBord");
  dblClick(sorts(), "Ville");
  press("Cmd_DroiteTri");
  dblClick(sortsChosen(), "Secteur");
  press("Cmd_GaucheTri");
  control_->Passage_A_Droite_Tri();
  control_->Passage_A_Gauche_Tri();
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), (Lines{"Nom", "Heures"}));
  EXPECT_PRED_FORMAT2(same, linesOf(sortsChosen()), Lines{"Secteur"});
  EXPECT_PRED_FORMAT2(same, selectionOf(possible()), Lines{"Adresse"});
  expectNoBox();
}

TEST_F(SlipPage, InConsultationTheOrderStays) {
  show(values({"1", "2"}));
  level_->value = 1;
  select(chosen(), {"Heures"});
  press("Cmd_HautBord");
  select(chosen(), {"Nom"});
  press("Cmd_BasBord");
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), (Lines{"Nom", "Heures"}));
}

TEST_F(SlipPage, TheOrderOnScreenIsTheOrderOfTheRecord) {
  show(values({"1", "2", "3"}));
  select(chosen(), {"Adresse"});
  press("Cmd_HautBord");
  EXPECT_EQ(saved(attribut::ParamSelecOrgChg), values({"1", "3", "2"}));
  showStored();
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), (Lines{"Nom", "Adresse", "Heures"}));
}

// --- Widths

// What the red says is said in words too.
TEST_F(SlipPage, AScreenReaderSaysThatTheSlipIsTooWide) {
  show(values({"1", "2"}));
  EXPECT_EQ(toolkit::accessibleName(counter()), counter().caption());
  show(k131);
  EXPECT_EQ(toolkit::accessibleName(counter()), "131/130, le bordereau est trop large");
  dblClick(chosen(), "Nom");
  EXPECT_EQ(toolkit::accessibleName(counter()), counter().caption());
  show(k131);
  press("Cmd_Annuler");
  EXPECT_EQ(toolkit::accessibleName(counter()), "");
}

TEST_F(SlipPage, TheCounterIsBlackUpTo130AndRedFrom131On) {
  show(k129);
  EXPECT_EQ(counter().caption(), "129/130");
  EXPECT_EQ(counter().color(), toolkit::kBlack);
  show(k130);
  EXPECT_EQ(counter().caption(), "130/130");
  EXPECT_EQ(counter().color(), toolkit::kBlack);
  show(k131);
  EXPECT_EQ(counter().caption(), "131/130");
  EXPECT_EQ(counter().color(), toolkit::kRed);
}

TEST_F(SlipPage, TheCounterFollowsWhatIsAddedAndRemoved) {
  show(k129);
  dblClick(possible(), "Sexe");
  EXPECT_EQ(counter().caption(), "130/130");
  EXPECT_EQ(counter().color(), toolkit::kBlack);
  dblClick(possible(), "Rang");
  EXPECT_EQ(counter().caption(), "132/130");
  EXPECT_EQ(counter().color(), toolkit::kRed);
  dblClick(chosen(), "Sexe");
  EXPECT_EQ(counter().caption(), "131/130");
  EXPECT_EQ(counter().color(), toolkit::kRed);
  dblClick(chosen(), "Rang");
  EXPECT_EQ(counter().caption(), "129/130");
  EXPECT_EQ(counter().color(), toolkit::kBlack);
}

TEST_F(SlipPage, TheCounterIsEmptyBelowOne) {
  show("");
  EXPECT_EQ(counter().caption(), "");
  show("6");
  EXPECT_EQ(counter().caption(), "1/130");
  dblClick(chosen(), "Sexe");
  EXPECT_EQ(counter().caption(), "");
}

TEST_F(SlipPage, AParameterWithoutWidthCountsNothing) {
  store_.put("PARAMBORDORGCHG", "8", {"Sans largeur"});
  control_->Remplir_ParamsPoss();
  show("8");
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), Lines{"Sans largeur"});
  EXPECT_EQ(counter().caption(), "");
  dblClick(possible(), "Nom");
  EXPECT_EQ(counter().caption(), "30/130");
  EXPECT_EQ(saved(attribut::ParamSelecOrgChg), values({"8", "1"}));
}

TEST_F(SlipPage, AWidthIsReadAsANumberAsFarAsItIsOne) {
  store_.put("PARAMBORDORGCHG", "8", {"Bizarre", "large"});
  store_.put("PARAMBORDORGCHG", "9", {"Presque", "12 car."});
  store_.put("PARAMBORDORGCHG", "10", {"Virgule", "7,9"});
  control_->Remplir_ParamsPoss();
  show("8");
  EXPECT_EQ(counter().caption(), "");
  show(values({"8", "9"}));
  EXPECT_EQ(counter().caption(), "12/130");
  show(values({"8", "9", "10"}));
  EXPECT_EQ(counter().caption(), "19/130");
}

TEST_F(SlipPage, ANegativeWidthCountsWhateverItsPlace) {
  store_.put("PARAMBORDORGCHG", "8", {"Moins", "-10"});
  control_->Remplir_ParamsPoss();
  show("8");
  EXPECT_EQ(counter().caption(), "");
  show(values({"1", "8"}));
  EXPECT_EQ(counter().caption(), "20/130");
  show(values({"8", "1"}));
  EXPECT_EQ(counter().caption(), "20/130");
}

TEST_F(SlipPage, WidthsThatNoPageHoldsAreTooLargeAllTheSame) {
  store_.put("PARAMBORDORGCHG", "8", {"Immense", "99999999999999999999"});
  store_.put("PARAMBORDORGCHG", "9", {"Plus encore", "2147483647"});
  control_->Remplir_ParamsPoss();
  show(values({"8", "9"}));
  EXPECT_EQ(counter().caption(), "32767/130");
  EXPECT_EQ(counter().color(), toolkit::kRed);
  press("Cmd_OK");
  expectRefused(tropLarge("32767"), kBordereau, chosen());
}

TEST_F(SlipPage, AWidthIsThatOfTheFirstParameterWithTheLabel) {
  store_.put("PARAMBORDORGCHG", "9", {"Nom", "5"});
  control_->Remplir_ParamsPoss();
  show("9");
  EXPECT_EQ(counter().caption(), "30/130");
}

TEST_F(SlipPage, AParameterWithoutLabelCountsNothing) {
  store_.put("PARAMBORDORGCHG", "8", {"", "50"});
  control_->Remplir_ParamsPoss();
  show(values({"1", "8"}));
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), (Lines{"Nom", ""}));
  EXPECT_EQ(counter().caption(), "30/130");
  EXPECT_EQ(saved(attribut::ParamSelecOrgChg), values({"1", "8"}));
}

TEST_F(SlipPage, TheCheckAddsUpTheWidthsAsTheyAreNow) {
  show(k130);
  store_.put("PARAMBORDORGCHG", "6", {"Sexe", "2"});
  control_->Remplir_ParamsPoss();
  press("Cmd_OK");
  expectRefused(tropLarge("131"), kBordereau, chosen());
}

TEST_F(SlipPage, TheHostCanHaveTheWidthAddedUpAgain) {
  screen::EditSession session;
  toolkit::Surface surface("Ctr_OrgPriseCharge");
  screen::Screen screen(surface);
  pages::Ong5 page({desktop_, screen, session});
  session.TheDatabase = store_.connect();
  page.Remplir_ParamsPoss();
  page.Long_ListeParam();
  EXPECT_EQ(session.longueurParams, 0);
  for (const char* label : {"Nom", "", "Adresse", "77"}) {
    screen.bordereau.Lst_ParamSelecOrgChg.addItem(label);
  }
  page.Long_ListeParam();
  EXPECT_EQ(session.longueurParams, 90);
  static_assert(std::is_same_v<decltype(session.longueurParams), std::int16_t>);
  EXPECT_NO_THROW(control_->Long_ListeParam());
}

// --- What a record may hold

TEST_F(SlipPage, AnIdentifierThatNoParameterHasIsShownAsItStands) {
  show(values({"1", "77", "2"}));
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), (Lines{"Nom", "77", "Heures"}));
  EXPECT_EQ(counter().caption(), "38/130");
  EXPECT_EQ(saved(attribut::ParamSelecOrgChg), values({"1", "77", "2"}));
}

TEST_F(SlipPage, AnIdentifierThatNoParameterHasIsKeptThroughChanges) {
  show(values({"1", "77", "2"}));
  select(chosen(), {"77"});
  press("Cmd_HautBord");
  dblClick(possible(), "Rang");
  EXPECT_EQ(saved(attribut::ParamSelecOrgChg), values({"77", "1", "2", "7"}));
}

TEST_F(SlipPage, AnIdentifierThatNoParameterHasGoesWhenItIsRemoved) {
  show(values({"1", "77", "2"}));
  dblClick(chosen(), "77");
  EXPECT_EQ(saved(attribut::ParamSelecOrgChg), values({"1", "2"}));
}

TEST_F(SlipPage, ATextThatBeginsWithANumberIsNotThatIdentifier) {
  show(values({"1A", "-1", "2"}));
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), (Lines{"1A", "-1", "Heures"}));
  dblClick(possible(), "Nom");
  EXPECT_EQ(saved(attribut::ParamSelecOrgChg), values({"1A", "-1", "2", "1"}));
}

TEST_F(SlipPage, AnIdentifierTwiceInTheRecordIsShownAndKeptTwice) {
  show(values({"1", "2", "1"}));
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), (Lines{"Nom", "Heures", "Nom"}));
  EXPECT_EQ(counter().caption(), "68/130");
  select(chosen(), {"Heures"});
  press("Cmd_BasBord");
  EXPECT_EQ(saved(attribut::ParamSelecOrgChg), values({"1", "1", "2"}));
}

TEST_F(SlipPage, OfTwoParametersWithOneLabelTheStoredOneIsKept) {
  store_.put("PARAMBORDORGCHG", "9", {"Nom", "5"});
  control_->Remplir_ParamsPoss();
  show(values({"9", "2"}));
  EXPECT_PRED_FORMAT2(same, dataOf(chosen()), (std::vector<long>{9, 2}));
  dblClick(possible(), "Nom");
  EXPECT_PRED_FORMAT2(same, dataOf(chosen()), (std::vector<long>{9, 2}));
  select(chosen(), {"Heures"});
  press("Cmd_HautBord");
  EXPECT_EQ(saved(attribut::ParamSelecOrgChg), values({"2", "9"}));
}

TEST_F(SlipPage, IdentifiersAreTexts) {
  store_.put("PARAMBORDORGCHG", "07", {"Zone", "1"});
  store_.put("PARAMBORDORGCHG", "1A", {"Zorro", "1"});
  store_.put("PARAMBORDORGCHG", "0", {"Zut", "1"});
  control_->Remplir_ParamsPoss();
  show(values({"1A", "2", "07", "7"}));
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), (Lines{"Zorro", "Heures", "Zone", "Rang"}));
  EXPECT_EQ(counter().caption(), "12/130");
  dblClick(possible(), "Zut");
  select(chosen(), {"Heures"});
  press("Cmd_HautBord");
  EXPECT_EQ(saved(61), values({"2", "1A", "07", "7", "0"}));
  show(values({"2"}));
  dblClick(possible(), "Zone");
  dblClick(possible(), "Zorro");
  control_->Remplir_ParamsPoss();
  EXPECT_EQ(saved(61), values({"2", "07", "1A"}));
}

TEST_F(SlipPage, AnIdentifierWithZerosInFrontIsAnotherOne) {
  show(values({"07", "2"}));
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), (Lines{"07", "Heures"}));
  dblClick(possible(), "Rang");
  EXPECT_EQ(saved(61), values({"07", "2", "7"}));
}

TEST_F(SlipPage, EmptyValuesInTheRecordAreKept) {
  show(values({"1", "", "2", ""}));
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), (Lines{"Nom", "", "Heures", ""}));
  EXPECT_EQ(counter().caption(), "38/130");
  EXPECT_EQ(saved(attribut::ParamSelecOrgChg), values({"1", "", "2", ""}));
}

TEST_F(SlipPage, EmptyFirstValuesAreNotShownAndAreKeptUntilTheListChanges) {
  store_.set("ORGPRISECHARGE", "001", 62, values({"", "6"}));
  show(values({"", "", "2"}));
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), Lines{"Heures"});
  EXPECT_PRED_FORMAT2(same, linesOf(sortsChosen()), Lines{"Ville"});
  EXPECT_EQ(saved(61), values({"", "", "2"}));
  EXPECT_EQ(attribute("001", 62), values({"", "6"}));
  showStored();
  dblClick(possible(), "Nom");
  dblClick(sorts(), "Secteur");
  EXPECT_EQ(saved(61), values({"2", "1"}));
  EXPECT_EQ(attribute("001", 62), values({"6", "1"}));
}

TEST_F(SlipPage, EmptyValuesAloneAreNoParameter) {
  show(values({"", ""}));
  EXPECT_EQ(chosen().listCount(), 0);
  press("Cmd_OK");
  expectRefused(kSansParametre, kBordereau, possible());
}

TEST_F(SlipPage, AFirstLineWithoutLabelCountsAsAnEmptyList) {
  store_.put("PARAMBORDORGCHG", "8", {"", "5"});
  control_->Remplir_ParamsPoss();
  show(values({"8", "2"}));
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), (Lines{"", "Heures"}));
  press("Cmd_OK");
  expectRefused(kSansParametre, kBordereau, possible());
}

TEST_F(SlipPage, ASavedRecordThatNothingChangedKeepsItsText) {
  store_.set("ORGPRISECHARGE", "001", attribut::NbExemplOrgChg, "");
  store_.set("ORGPRISECHARGE", "001", attribut::TypeBordOrgChg, "");
  store_.set("ORGPRISECHARGE", "001", attribut::IdentMagnetOrgChg, "A" + values({"", "B"}));
  store_.set("ORGPRISECHARGE", "001", attribut::CodeThesaurus, "T" + values({"", ""}));
  store_.set("ORGPRISECHARGE", "001", attribut::ParamTriSelect, values({"6", "", "9"}));
  const std::string before = store_.record("ORGPRISECHARGE", "001").text();
  showStored();
  press("Cmd_OK");
  expectNoBox();
  EXPECT_PRED_FORMAT2(sameBody, store_.record("ORGPRISECHARGE", "001").text(), before);
}

TEST_F(SlipPage, NothingIsLeftOfTheBodyBefore) {
  store_.set("ORGPRISECHARGE", "002", attribut::TypeBordOrgChg, "");
  store_.set("ORGPRISECHARGE", "002", attribut::NbExemplOrgChg, "");
  store_.set("ORGPRISECHARGE", "002", attribut::ParamSelecOrgChg, "");
  store_.set("ORGPRISECHARGE", "001", attribut::TypeBordOrgChg, "R");
  store_.set("ORGPRISECHARGE", "001", attribut::NbExemplOrgChg, "7");
  store_.set("ORGPRISECHARGE", "001", attribut::IdentMagnetOrgChg, "IDENT");
  store_.set("ORGPRISECHARGE", "001", attribut::CodeThesaurus, "THES");
  store_.set("ORGPRISECHARGE", "001", attribut::ParamTriSelect, "2");
  show(k131);
  select(possible(), {"Nom"});
  select(sorts(), {"Ville"});
  select(sortsChosen(), {"Numéro de dossier"});
  user_->fill(code(), "002");
  EXPECT_EQ(code().text(), "002");
  EXPECT_EQ(chosen().listCount(), 0);
  EXPECT_PRED_FORMAT2(same, selectionOf(possible()), Lines{});
  EXPECT_EQ(counter().caption(), "");
  EXPECT_EQ(counter().color(), toolkit::kBlack);
  EXPECT_FALSE(orderEnabled());
  EXPECT_EQ(sortsChosen().listCount(), 0);
  EXPECT_PRED_FORMAT2(same, selectionOf(sorts()), Lines{});
  EXPECT_FALSE(button("Cmd_DroiteTri").enabled());
  EXPECT_FALSE(button("Cmd_GaucheTri").enabled());
  for (const char* name : {"Opt_IndBordOrgChg", "Opt_RecapBordOrgChg", "Opt_MFPBordOrgChg"}) {
    EXPECT_FALSE(option(name).value()) << name;
  }
  EXPECT_EQ(copies().text(), "1");
  EXPECT_EQ(copiesBar().value(), 1);
  EXPECT_EQ(box("Txt_IdentMagnetOrgChg").text(), "");
  EXPECT_EQ(box("Txt_CodeThesaurus").text(), "");
}

TEST_F(SlipPage, ShowingABodyClicksNothing) {
  store_.set("ORGPRISECHARGE", "001", attribut::TypeBordOrgChg, "M");
  store_.set("ORGPRISECHARGE", "001", attribut::ParamTriSelect, values({"1", "2"}));
  show(k131);
  expectNoBox();
  EXPECT_FALSE(button("Cmd_DroiteTri").enabled());
  EXPECT_FALSE(button("Cmd_GaucheTri").enabled());
}

TEST_F(SlipPage, TheHostCanHaveThePageShownAgain) {
  show(values({"1", "2"}));
  dblClick(chosen(), "Nom");
  user_->fill(box("Txt_CodeThesaurus"), "T1");
  control_->Afficher_Ong5();
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), (Lines{"Nom", "Heures"}));
  EXPECT_EQ(counter().caption(), "38/130");
  EXPECT_EQ(box("Txt_CodeThesaurus").text(), "");
}

TEST_F(SlipPage, TheHostCanHaveThePageWritten) {
  show(values({"1", "2"}));
  dblClick(chosen(), "Nom");
  user_->fill(box("Txt_CodeThesaurus"), "T1");
  control_->Ecrire_Ong5();
  control_->Afficher_Ong5();
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), Lines{"Heures"});
  EXPECT_EQ(box("Txt_CodeThesaurus").text(), "T1");
  expectNothingWritten();
}

TEST_F(SlipPage, WrittenByTheHostItIsNotChecked) {
  show("");
  EXPECT_NO_THROW(control_->Ecrire_Ong5());
  expectNoBox();
}

// --- Sorting

TEST_F(SlipPage, TheSortParametersAreFixed) {
  show();
  EXPECT_PRED_FORMAT2(same, linesOf(sorts()),
                      (Lines{"Secteur", "Numéro de dossier", "Nom - prénom", "Nom patronymique",
                             "Période", "Ville"}));
  EXPECT_PRED_FORMAT2(same, dataOf(sorts()), (std::vector<long>{1, 2, 3, 4, 5, 6}));
}

TEST_F(SlipPage, AClickInASortListEnablesItsArrow) {
  store_.set("ORGPRISECHARGE", "001", attribut::ParamTriSelect, "2");
  show();
  EXPECT_FALSE(button("Cmd_DroiteTri").enabled());
  EXPECT_FALSE(button("Cmd_GaucheTri").enabled());
  select(sorts(), {"Ville"});
  EXPECT_TRUE(button("Cmd_DroiteTri").enabled());
  EXPECT_FALSE(button("Cmd_GaucheTri").enabled());
  select(sortsChosen(), {"Numéro de dossier"});
  EXPECT_TRUE(button("Cmd_GaucheTri").enabled());
}

TEST_F(SlipPage, AClickInTheChosenSortsEnablesTheirArrowAlone) {
  store_.set("ORGPRISECHARGE", "001", attribut::ParamTriSelect, "2");
  show();
  select(sortsChosen(), {"Numéro de dossier"});
  EXPECT_TRUE(button("Cmd_GaucheTri").enabled());
  EXPECT_FALSE(button("Cmd_DroiteTri").enabled());
}

TEST_F(SlipPage, SortParametersAreAddedInTheOrderOfTheList) {
  show();
  select(sorts(), {"Ville", "Secteur", "Période"});
  press("Cmd_DroiteTri");
  EXPECT_PRED_FORMAT2(same, linesOf(sortsChosen()), (Lines{"Secteur", "Période", "Ville"}));
  EXPECT_PRED_FORMAT2(same, selectionOf(sorts()), Lines{});
  EXPECT_EQ(sorts().listCount(), 6);
}

TEST_F(SlipPage, ASortParameterIsNotAddedTwice) {
  show();
  dblClick(sorts(), "Ville");
  dblClick(sorts(), "Ville");
  select(sorts(), {"Ville", "Secteur"});
  press("Cmd_DroiteTri");
  EXPECT_PRED_FORMAT2(same, linesOf(sortsChosen()), (Lines{"Ville", "Secteur"}));
  EXPECT_PRED_FORMAT2(same, selectionOf(sorts()), Lines{});
}

TEST_F(SlipPage, SortParametersAreRemovedByButtonAndDoubleClick) {
  store_.set("ORGPRISECHARGE", "001", attribut::ParamTriSelect, values({"6", "5", "4", "3"}));
  show();
  select(sortsChosen(), {"Ville", "Nom patronymique"});
  press("Cmd_GaucheTri");
  EXPECT_PRED_FORMAT2(same, linesOf(sortsChosen()), (Lines{"Période", "Nom - prénom"}));
  dblClick(sortsChosen(), "Période");
  EXPECT_PRED_FORMAT2(same, linesOf(sortsChosen()), Lines{"Nom - prénom"});
}

TEST_F(SlipPage, TheSortOrderIsKeptByTheirPlacesInTheList) {
  store_.set("ORGPRISECHARGE", "001", attribut::ParamTriSelect, values({"3", "5"}));
  show();
  EXPECT_PRED_FORMAT2(same, linesOf(sortsChosen()), (Lines{"Nom - prénom", "Période"}));
  dblClick(sorts(), "Secteur");
  EXPECT_EQ(saved(attribut::ParamTriSelect), values({"3", "5", "1"}));
  showStored();
  EXPECT_PRED_FORMAT2(same, linesOf(sortsChosen()), (Lines{"Nom - prénom", "Période", "Secteur"}));
}

TEST_F(SlipPage, ASortParameterThatDoesNotExistIsShownAsItStandsAndKept) {
  store_.set("ORGPRISECHARGE", "001", attribut::ParamTriSelect, values({"9", "secteur", "6"}));
  show();
  EXPECT_PRED_FORMAT2(same, linesOf(sortsChosen()), (Lines{"9", "secteur", "Ville"}));
  dblClick(sorts(), "Secteur");
  EXPECT_EQ(saved(attribut::ParamTriSelect), values({"9", "secteur", "6", "1"}));
  showStored();
  dblClick(sortsChosen(), "9");
  dblClick(sortsChosen(), "secteur");
  EXPECT_EQ(saved(attribut::ParamTriSelect), values({"6", "1"}));
}

TEST_F(SlipPage, TheHostCanMoveSortParameters) {
  show();
  select(sorts(), {"Ville", "Secteur"});
  control_->Passage_A_Droite_Tri();
  EXPECT_PRED_FORMAT2(same, linesOf(sortsChosen()), (Lines{"Secteur", "Ville"}));
  select(sortsChosen(), {"Secteur"});
  control_->Passage_A_Gauche_Tri();
  EXPECT_PRED_FORMAT2(same, linesOf(sortsChosen()), Lines{"Ville"});
}

// --- Type of slip

TEST_F(SlipPage, TheTypeOfSlipChangesNothingButItself) {
  const std::vector<std::string> types{"Opt_IndBordOrgChg", "Opt_RecapBordOrgChg",
                                       "Opt_MFPBordOrgChg"};
  show(k131);
  const Snapshot before = snapshotOf(control_->surface());
  for (const std::string& type : {types[1], types[2], types[0]}) {
    ASSERT_TRUE(user_->click(option(type)));
    for (const std::string& name : types) EXPECT_EQ(option(name).value(), name == type) << name;
    EXPECT_EQ(difference(before, snapshotOf(control_->surface()), {types.begin(), types.end()}),
              "");
    EXPECT_EQ(tabs().tab(), kBordereau);
    expectNoBox();
    expectNothingWritten();
  }
}

TEST_F(SlipPage, TheTypeOfSlipIsShownAndWritten) {
  const std::vector<std::pair<const char*, const char*>> types{
      {"I", "Opt_IndBordOrgChg"}, {"R", "Opt_RecapBordOrgChg"}, {"M", "Opt_MFPBordOrgChg"}};
  for (const auto& [stored, shown] : types) {
    for (const auto& [chosenCode, chosenName] : types) {
      store_.set("ORGPRISECHARGE", "001", attribut::TypeBordOrgChg, stored);
      show();
      for (const auto& [letter, name] : types) {
        EXPECT_EQ(option(name).value(), std::string_view(name) == shown) << stored << " " << letter;
      }
      user_->click(option(chosenName));
      EXPECT_EQ(saved(attribut::TypeBordOrgChg), chosenCode);
    }
  }
}

TEST_F(SlipPage, AnUnknownTypeOfSlipIsKeptUntilAnotherIsChosen) {
  store_.set("ORGPRISECHARGE", "001", attribut::TypeBordOrgChg, "X");
  show();
  EXPECT_EQ(saved(attribut::TypeBordOrgChg), "X");
  showStored();
  user_->click(option("Opt_RecapBordOrgChg"));
  EXPECT_EQ(saved(attribut::TypeBordOrgChg), "R");
}

// --- Copies

TEST_F(SlipPage, TheScrollBarGoesFrom1To9AndTheTextFollows) {
  show();
  EXPECT_EQ(copiesBar().min(), 1);
  EXPECT_EQ(copiesBar().max(), 9);
  for (const int copiesAsked : {2, 9, 20, 5, 1, 0, 7}) {
    ASSERT_TRUE(user_->scroll(copiesBar(), copiesAsked));
    const int taken = std::clamp(copiesAsked, 1, 9);
    EXPECT_EQ(copiesBar().value(), taken);
    EXPECT_EQ(copies().text(), std::to_string(taken));
  }
  EXPECT_EQ(saved(attribut::NbExemplOrgChg), "7");
}

TEST_F(SlipPage, ATypedDigitMovesTheScrollBar) {
  show();
  user_->fill(copies(), "4");
  EXPECT_EQ(copies().text(), "4");
  EXPECT_EQ(copiesBar().value(), 4);
  EXPECT_EQ(saved(attribut::NbExemplOrgChg), "4");
}

TEST_F(SlipPage, CopiesTakeNothingButADigitFrom1To9) {
  show();
  user_->fill(copies(), "6");
  for (const char* key : {"0", "a", "-", ",", " ", "é", "²"}) {
    user_->go(copies());
    copies().userSelect(0, 1);
    user_->type(key);
    EXPECT_EQ(copies().text(), "6") << key;
  }
  user_->type("12");
  EXPECT_EQ(copies().text(), "1");
  EXPECT_EQ(copiesBar().value(), 1);
}

TEST_F(SlipPage, EmptiedCopiesTakeTheScrollBarsOnLeaving) {
  store_.set("ORGPRISECHARGE", "001", attribut::NbExemplOrgChg, "3");
  show();
  user_->fill(copies(), "");
  EXPECT_EQ(copies().text(), "");
  EXPECT_EQ(copiesBar().value(), 3);
  user_->go(box("Txt_CodeThesaurus"));
  EXPECT_EQ(copies().text(), "3");
  EXPECT_EQ(saved(attribut::NbExemplOrgChg), "3");
}

TEST_F(SlipPage, PastedCopiesThatAreNoneGiveWayOnLeaving) {
  show();
  for (const char* pasted : {"0", "x"}) {
    user_->fill(copies(), "5");
    copies().userSelect(0, 1);
    user_->paste(pasted);
    EXPECT_EQ(copies().text(), pasted);
    user_->go(box("Txt_CodeThesaurus"));
    EXPECT_EQ(copies().text(), "5");
  }
}

TEST_F(SlipPage, EmptiedCopiesAreSavedAsTheScrollBarHasThem) {
  store_.set("ORGPRISECHARGE", "001", attribut::NbExemplOrgChg, "3");
  show();
  user_->fill(copies(), "");
  control_->Ecrire_Donnees();
  EXPECT_EQ(attribute("001", attribut::NbExemplOrgChg), "3");
}

TEST_F(SlipPage, ALargerNumberOfCopiesIsShownAndKeptUntilItIsChanged) {
  store_.set("ORGPRISECHARGE", "001", attribut::NbExemplOrgChg, "12");
  show();
  EXPECT_EQ(copies().text(), "12");
  EXPECT_EQ(copiesBar().value(), 9);
  user_->go(copies());
  user_->go(box("Txt_CodeThesaurus"));
  EXPECT_EQ(copies().text(), "12");
  EXPECT_EQ(saved(attribut::NbExemplOrgChg), "12");
  showStored();
  user_->scroll(copiesBar(), 8);
  EXPECT_EQ(copies().text(), "8");
  EXPECT_EQ(saved(attribut::NbExemplOrgChg), "8");
}

TEST_F(SlipPage, ALargerNumberOfCopiesSurvivesEmptyingAndLeavingTheField) {
  store_.set("ORGPRISECHARGE", "001", 48, "12");
  for (const bool backspaces : {false, true}) {
    show();
    ASSERT_TRUE(user_->go(copies()));
    copies().userSelect(backspaces ? 2 : 0, backspaces ? 0 : 2);
    user_->type(backspaces ? "\b\b" : "\b");
    EXPECT_EQ(copies().text(), "");
    user_->go(box("Txt_CodeThesaurus"));
    EXPECT_EQ(copies().text(), "12");
    EXPECT_EQ(copiesBar().value(), 9);
    EXPECT_EQ(saved(48), "12");
  }
  show();
  user_->fill(copies(), "");
  control_->Ecrire_Ong5();
  control_->Afficher_Ong5();
  EXPECT_EQ(copies().text(), "12");
}

TEST_F(SlipPage, ALargerNumberOfCopiesThatWasReplacedDoesNotComeBack) {
  store_.set("ORGPRISECHARGE", "001", 48, "12");
  show();
  user_->fill(copies(), "3");
  user_->go(box("Txt_CodeThesaurus"));
  user_->fill(copies(), "");
  user_->go(box("Txt_CodeThesaurus"));
  EXPECT_EQ(copies().text(), "3");
  EXPECT_EQ(saved(48), "3");
  store_.set("ORGPRISECHARGE", "001", 48, "12");
  showStored();
  user_->scroll(copiesBar(), 8);
  user_->fill(copies(), "");
  EXPECT_EQ(saved(48), "8");
}

TEST_F(SlipPage, ALargerNumberOfCopiesCanBeTypedOver) {
  store_.set("ORGPRISECHARGE", "001", attribut::NbExemplOrgChg, "12");
  show();
  user_->fill(copies(), "3");
  EXPECT_EQ(copies().text(), "3");
  EXPECT_EQ(copiesBar().value(), 3);
  EXPECT_EQ(saved(attribut::NbExemplOrgChg), "3");
}

TEST_F(SlipPage, StoredCopiesThatAreNoneAreKept) {
  for (const char* stored : {"0", "-4", "deux"}) {
    store_.set("ORGPRISECHARGE", "001", attribut::NbExemplOrgChg, stored);
    show();
    EXPECT_EQ(copies().text(), stored);
    EXPECT_EQ(copiesBar().value(), 1);
    EXPECT_EQ(saved(attribut::NbExemplOrgChg), stored);
  }
}

TEST_F(SlipPage, MissingCopiesAreShownAsOne) {
  store_.set("ORGPRISECHARGE", "001", attribut::NbExemplOrgChg, "");
  show();
  EXPECT_EQ(copies().text(), "1");
  EXPECT_EQ(copiesBar().value(), 1);
  user_->scroll(copiesBar(), 2);
  EXPECT_EQ(saved(attribut::NbExemplOrgChg), "2");
}

// --- Codes

TEST_F(SlipPage, ThesaurusAndServiceCodesAreShownAndWritten) {
  store_.set("ORGPRISECHARGE", "001", attribut::CodeThesaurus, "TH031");
  store_.set("ORGPRISECHARGE", "001", attribut::IdentMagnetOrgChg, "352656");
  show();
  EXPECT_EQ(box("Txt_CodeThesaurus").text(), "TH031");
  EXPECT_EQ(box("Txt_IdentMagnetOrgChg").text(), "352656");
  user_->fill(box("Txt_CodeThesaurus"), "th é");
  user_->fill(box("Txt_IdentMagnetOrgChg"), " 01 ");
  EXPECT_EQ(saved(attribut::CodeThesaurus), "th é");
  EXPECT_EQ(attribute("001", attribut::IdentMagnetOrgChg), " 01 ");
}

TEST_F(SlipPage, CodesWithMarksAreKeptUntilTheyAreChanged) {
  store_.set("ORGPRISECHARGE", "001", attribut::CodeThesaurus, values({"A", "B"}));
  store_.set("ORGPRISECHARGE", "001", attribut::IdentMagnetOrgChg, values({"1", "2"}));
  show();
  EXPECT_EQ(box("Txt_CodeThesaurus").text(), "AB");
  user_->fill(box("Txt_IdentMagnetOrgChg"), "3");
  EXPECT_EQ(saved(attribut::CodeThesaurus), values({"A", "B"}));
  EXPECT_EQ(attribute("001", attribut::IdentMagnetOrgChg), "3");
}

// --- What the management rules page shows and this page writes

TEST_F(SlipPage, BillingPeriodStatisticsAndRequestsAreWrittenByThisPage) {
  show();
  user_->click(tabs(), kRegles);
  user_->choose(combo("Cbo_PeriodFactOrgChg"), 1);
  user_->choose(combo("Cbo_StatsOrgChg"), 1);
  user_->click(child<CheckBox>("Cac_DemAccordOrgChg"));
  control_->Ecrire_Ong2();
  control_->Afficher_Ong2();
  EXPECT_EQ(combo("Cbo_PeriodFactOrgChg").text(), "Mensuelle");
  EXPECT_EQ(combo("Cbo_StatsOrgChg").text(), "");
  EXPECT_FALSE(child<CheckBox>("Cac_DemAccordOrgChg").value());
  user_->choose(combo("Cbo_PeriodFactOrgChg"), 1);
  user_->choose(combo("Cbo_StatsOrgChg"), 1);
  user_->click(child<CheckBox>("Cac_DemAccordOrgChg"));
  control_->Ecrire_Ong5();
  control_->Afficher_Ong2();
  EXPECT_EQ(combo("Cbo_PeriodFactOrgChg").text(), "Trimestrielle");
  EXPECT_EQ(combo("Cbo_StatsOrgChg").text(), "Mutuelle");
  EXPECT_TRUE(child<CheckBox>("Cac_DemAccordOrgChg").value());
}

TEST_F(SlipPage, EachBillingPeriodIsWrittenAsItsCode) {
  const char* codes[] = {"M", "T", "F"};
  for (const char* before : codes) {
    for (int line = 0; line < 3; ++line) {
      store_.set("ORGPRISECHARGE", "001", attribut::PeriodFactOrgChg, before);
      show();
      user_->click(tabs(), kRegles);
      user_->choose(combo("Cbo_PeriodFactOrgChg"), line);
      EXPECT_EQ(saved(attribut::PeriodFactOrgChg), codes[line]);
    }
  }
}

TEST_F(SlipPage, RequestsAreWrittenAs0Or1) {
  store_.set("ORGPRISECHARGE", "001", attribut::DemAccordOrgChg, "");
  show();
  EXPECT_EQ(saved(attribut::DemAccordOrgChg), "0");
  showStored();
  user_->click(tabs(), kRegles);
  user_->click(child<CheckBox>("Cac_DemAccordOrgChg"));
  EXPECT_EQ(saved(attribut::DemAccordOrgChg), "1");
}

TEST_F(SlipPage, AStatisticsCodeThatItsTableLostIsKeptUntilAnotherIsChosen) {
  store_.set("ORGPRISECHARGE", "001", attribut::StatsOrgChg, "ZZ");
  show();
  EXPECT_EQ(combo("Cbo_StatsOrgChg").text(), "");
  EXPECT_EQ(saved(attribut::StatsOrgChg), "ZZ");
  showStored();
  user_->click(tabs(), kRegles);
  user_->choose(combo("Cbo_StatsOrgChg"), 0);
  EXPECT_EQ(saved(attribut::StatsOrgChg), "CD");
}

TEST_F(SlipPage, AnEmptiedStatisticsCategoryEmptiesItsCode) {
  store_.set("ORGPRISECHARGE", "001", attribut::StatsOrgChg, "MU");
  show();
  EXPECT_EQ(combo("Cbo_StatsOrgChg").text(), "Mutuelle");
  user_->click(tabs(), kRegles);
  user_->fill(combo("Cbo_StatsOrgChg"), "");
  EXPECT_EQ(saved(attribut::StatsOrgChg), "");
}

// --- Checks

TEST_F(SlipPage, WithoutParameterIsRefused) {
  show("");
  user_->click(tabs(), kActivites);
  press("Cmd_OK");
  expectRefused(kSansParametre, kBordereau, possible());
}

TEST_F(SlipPage, MfpOfAComplementaryBodyIsRefusedOnTheRulesPage) {
  store_.set("ORGPRISECHARGE", "001", attribut::TypeOrgChg, "C");
  store_.set("ORGPRISECHARGE", "001", attribut::TypeBordOrgChg, "M");
  show();
  press("Cmd_OK");
  expectRefused(kPasPrincipal, kRegles, option("Opt_TypePrincipalOrgChg"));
  EXPECT_TRUE(option("Opt_TypeComplOrgChg").value());
}

TEST_F(SlipPage, MfpOfABodyWithoutTypeIsRefused) {
  store_.set("ORGPRISECHARGE", "001", attribut::TypeOrgChg, "");
  show();
  user_->click(option("Opt_MFPBordOrgChg"));
  press("Cmd_OK");
  expectRefused(kPasPrincipal, kRegles, option("Opt_TypePrincipalOrgChg"));
}

TEST_F(SlipPage, MfpOfAPrincipalBodyPasses) {
  show();
  user_->click(option("Opt_MFPBordOrgChg"));
  EXPECT_EQ(saved(attribut::TypeBordOrgChg), "M");
}

TEST_F(SlipPage, OtherSlipsOfAComplementaryBodyPass) {
  store_.set("ORGPRISECHARGE", "001", attribut::TypeOrgChg, "C");
  for (const char* name : {"Opt_IndBordOrgChg", "Opt_RecapBordOrgChg"}) {
    show();
    user_->click(option(name));
    press("Cmd_OK");
    expectNoBox();
    EXPECT_EQ(state(), kEmpty);
  }
}

TEST_F(SlipPage, TheTypeThatCountsIsTheOneOnScreen) {
  store_.set("ORGPRISECHARGE", "001", attribut::TypeBordOrgChg, "M");
  show();
  user_->click(tabs(), kRegles);
  user_->click(option("Opt_TypeComplOrgChg"));
  press("Cmd_OK");
  expectRefused(kPasPrincipal, kRegles, option("Opt_TypePrincipalOrgChg"));
  user_->click(option("Opt_TypePrincipalOrgChg"));
  press("Cmd_OK");
  expectNoBox();
  EXPECT_EQ(state(), kEmpty);
}

TEST_F(SlipPage, ALineOf130CharactersPassesAndOneOf131IsRefused) {
  for (const std::string& fits : {k129, k130}) {
    show(fits);
    EXPECT_EQ(saved(attribut::ParamSelecOrgChg), fits);
  }
  show(k131);
  user_->click(tabs(), 0);
  press("Cmd_OK");
  expectRefused(tropLarge("131"), kBordereau, chosen());
  select(chosen(), {"Rang"});
  press("Cmd_GaucheBord");
  EXPECT_EQ(saved(attribut::ParamSelecOrgChg), k129);
}

TEST_F(SlipPage, TheChecksComeInTheirOrder) {
  store_.set("ORGPRISECHARGE", "001", attribut::TypeOrgChg, "C");
  store_.set("ORGPRISECHARGE", "001", attribut::TypeBordOrgChg, "M");
  show("");
  press("Cmd_OK");
  expectRefused(kSansParametre, kBordereau, possible());
  show(k131);
  press("Cmd_OK");
  expectRefused(kPasPrincipal, kRegles, option("Opt_TypePrincipalOrgChg"));
  user_->click(tabs(), kBordereau);
  user_->click(option("Opt_IndBordOrgChg"));
  press("Cmd_OK");
  expectRefused(tropLarge("131"), kBordereau, chosen());
}

TEST_F(SlipPage, TheRulesPageIsCheckedBeforeAndTheActivitiesAfter) {
  show("");
  user_->click(tabs(), kRegles);
  user_->fill(combo("Cbo_RenouvOrgChg"), "");
  user_->click(tabs(), kActivites);
  user_->fill(box("Txt_Entite"), "");
  press("Cmd_OK");
  expectBox("Le déclenchement du renouvellement est obligatoire.", Icon::Exclamation);
  user_->choose(combo("Cbo_RenouvOrgChg"), 0);
  press("Cmd_OK");
  expectBox(kSansParametre, Icon::Exclamation);
  dblClick(possible(), "Nom");
  press("Cmd_OK");
  expectBox("L'organisme de prise en charge doit couvrir au moins une activité.",
            Icon::Exclamation);
  expectNothingWritten();
}

TEST_F(SlipPage, ARefusedPageWritesNothingIntoTheRecord) {
  store_.set("ORGPRISECHARGE", "001", attribut::CodeThesaurus, "AVANT");
  show();
  dblClick(chosen(), "Nom");
  user_->fill(box("Txt_CodeThesaurus"), "APRES");
  press("Cmd_OK");
  expectRefused(kSansParametre, kBordereau, possible());
  EXPECT_EQ(box("Txt_CodeThesaurus").text(), "APRES");
  control_->Afficher_Ong5();
  EXPECT_PRED_FORMAT2(same, linesOf(chosen()), Lines{"Nom"});
  EXPECT_EQ(box("Txt_CodeThesaurus").text(), "AVANT");
}

TEST_F(SlipPage, TheHostCanHaveItChecked) {
  show();
  EXPECT_TRUE(control_->Verif_Ong5());
  expectNoBox();
  dblClick(chosen(), "Nom");
  EXPECT_FALSE(control_->Verif_Ong5());
  expectRefused(kSansParametre, kBordereau, possible());
}

// --- Creation

TEST_F(SlipPage, ACreationStartsWithOneCopyAndNothingElse) {
  store_.set("ORGPRISECHARGE", "001", attribut::NbExemplOrgChg, "5");
  show(k131);
  press("Cmd_Annuler");
  create();
  EXPECT_EQ(chosen().listCount(), 0);
  EXPECT_EQ(counter().caption(), "");
  EXPECT_FALSE(orderEnabled());
  EXPECT_EQ(copies().text(), "1");
}

TEST_F(SlipPage, ANewBodyIsWrittenAsItWasEntered) {
  beginCreation();
  user_->click(tabs(), kBordereau);
  dblClick(possible(), "Nom");
  dblClick(sorts(), "Ville");
  user_->click(option("Opt_RecapBordOrgChg"));
  user_->fill(box("Txt_CodeThesaurus"), "TH1");
  user_->fill(box("Txt_IdentMagnetOrgChg"), "42");
  press("Cmd_OK");
  expectNoBox();
  EXPECT_EQ(attribute("004", attribut::TypeBordOrgChg), "R");
  EXPECT_EQ(attribute("004", attribut::NbExemplOrgChg), "1");
  EXPECT_EQ(attribute("004", attribut::IdentMagnetOrgChg), "42");
  EXPECT_EQ(attribute("004", attribut::CodeThesaurus), "TH1");
  EXPECT_EQ(attribute("004", attribut::ParamSelecOrgChg), values({"3", "1"}));
  EXPECT_EQ(attribute("004", attribut::ParamTriSelect), "6");
}

TEST_F(SlipPage, ANewBodyWithoutParameterIsRefusedAndDrawsNoCode) {
  beginCreation();
  user_->click(tabs(), kBordereau);
  dblClick(chosen(), "Adresse");
  press("Cmd_OK");
  expectBox(kSansParametre, Icon::Exclamation);
  EXPECT_EQ(tabs().tab(), kBordereau);
  EXPECT_EQ(state(), kCreating);
  expectNothingWritten();
}

}  // namespace
}  // namespace behaviour
