// Records and tables as no program of the suite should have left them: they are shown, left and
// saved, and what cannot be shown stays as it is.
#include <algorithm>
#include <array>
#include <set>

#include "store/Layouts.h"
#include "tests/behaviour/ControlTest.h"
#include "toolkit/Frame.h"

namespace behaviour {
namespace {

using store::DynamicArray;

constexpr const char* kBody = "001";

// "a|b" is two values.
class BadInput : public ControlTest {
 protected:
  BadInput() {
    fillThreeBodies(store_);
    store_.set("ORGPRISECHARGE", kBody, attribut::PieceRenouOrgChg, marked("AI|RI"));
    store_.set("ORGPRISECHARGE", kBody, attribut::StatsOrgChg, "CD");
    for (const int account : {attribut::DebitOrgChg, attribut::CreditOrgChg,
                              attribut::CptPrestationService, attribut::CpteProdAide}) {
      store_.set("ORGPRISECHARGE", kBody, account, "7060000000");
    }
    store_.put("PLANCOMPTABLE", "0107060000000", {"PRESTATIONS"});
  }
  DynamicArray body() { return store_.record("ORGPRISECHARGE", kBody); }

  void expectShown(Caller at = Caller::here()) {
    const auto trace = called("expectShown", at);
    lookUp(kBody);
    expectNoBox();
    EXPECT_EQ(code().text(), kBody);
    EXPECT_TRUE(button("Cmd_OK").usable());
    store_.forgetCalls();
  }
  void expectLeftWithoutAQuestion(Caller at = Caller::here()) {
    const auto trace = called("expectLeftWithoutAQuestion", at);
    press("Cmd_Sortir");
    expectNoBox();
    EXPECT_TRUE(control_->W_Sortir());
    control_->setW_Sortir(false);
    expectNothingWritten();
  }
  // Saved, or refused by a message with nothing written. True when it was saved.
  bool saves(Caller at = Caller::here()) {
    const auto trace = called("saves", at);
    const std::string before = body().text();
    store_.forgetCalls();
    press("Cmd_OK");
    const auto boxes = desktop_.takeBoxes();
    EXPECT_LE(boxes.size(), 1U);
    EXPECT_EQ(desktop_.pointer(), toolkit::Pointer::Normal);
    EXPECT_TRUE(control_->surface().enabled());
    const bool saved = state() == kEmpty;
    EXPECT_EQ(saved, boxes.empty());
    EXPECT_EQ(store_.calls(CallKind::DBWrite).size(), saved ? 1U : 0U);
    if (!saved) {
      EXPECT_EQ(boxes.front().icon, Icon::Exclamation);
      EXPECT_PRED_FORMAT2(sameBody, body().text(), before);
      press("Cmd_Annuler");
    }
    return saved;
  }
  // Shown, left, saved: the text of the record stays.
  void expectKept(Caller at = Caller::here()) {
    const auto trace = called("expectKept", at);
    const std::string before = body().text();
    expectShown();
    expectLeftWithoutAQuestion();
    EXPECT_TRUE(saves());
    EXPECT_PRED_FORMAT2(sameBody, body().text(), before);
  }
};

// --- Marks and other bytes in every attribute ----------------------------------------------------

// Attributes that a save writes by what the screen can show of them. All others stay.
const std::set<int> kNormalised{attribut::RenouvOrgChg,    attribut::PieceRenouOrgChg,
                                attribut::DemAccordOrgChg, attribut::IncidCompta,
                                attribut::GestionExclu,    attribut::LettresInfo,
                                attribut::FactAnticip,     attribut::Abonnement,
                                attribut::AjusTarif,       attribut::CoutGlobal};

// The attributes of one list: a save writes all of them by the rows that the list shows.
bool ofTheList(int attribute, int written) {
  constexpr std::array<std::pair<int, int>, 3> kLists{
      {{attribut::DateRembOrgChg, attribut::PrestServOrgChg},
       {attribut::DebAbatHOrgChg, attribut::PourcentAbatOrgChg},
       {attribut::DebRevSeulOrgChg, attribut::BaremCoursOrgChg}}};
  return std::any_of(kLists.begin(), kLists.end(), [&](const auto& list) {
    return attribute >= list.first && attribute <= list.second && written >= list.first &&
           written <= list.second;
  });
}

class OddText : public BadInput, public testing::WithParamInterface<const char*> {
 protected:
  // The odd text, with * for what the attribute held.
  std::string odd(int attribute) {
    std::string text = marked(GetParam());
    if (const auto star = text.find('*'); star != text.npos) {
      text.replace(star, 1, std::string(original_.get(attribute)));
    }
    return text;
  }
  void expectOddBody(int attribute, Caller at = Caller::here()) {
    const auto trace = called("expectOddBody", at);
    SCOPED_TRACE("odd attribute " + bodyAttribute(attribute));
    DynamicArray before = original_;
    before.set(attribute, odd(attribute));
    store_.put("ORGPRISECHARGE", kBody, before);
    expectShown();
    expectLeftWithoutAQuestion();
    if (!saves()) return;
    ++saved_;
    for (int i = 1; i <= 70; ++i) {
      if (i == attribute && kNormalised.contains(i)) continue;
      if (ofTheList(attribute, i)) continue;
      EXPECT_EQ(body().get(i), before.get(i)) << bodyAttribute(i);
    }
  }
  DynamicArray original_;
  int saved_ = 0;
};

TEST_P(OddText, IsShownLeftAndSavedInEveryAttribute) {
  store_.set("COMPTEUR", "999", store::compteur::InterfaceComptable, "O");
  start();
  original_ = body();
  for (int attribute = 1; attribute <= attribut::Dernier; ++attribute) expectOddBody(attribute);
  EXPECT_GT(saved_, 50);
}

INSTANTIATE_TEST_SUITE_P(Everywhere, OddText,
                         testing::Values("|", "*|", "|*", "*||*", "X|1|", "\"", "]", "-1",
                                         "99999999999999999999", "\xFF", "*\xC3", "\r\n"));

TEST_F(BadInput, ARecordOfMarksAloneIsShownAndRefused) {
  start();
  for (const char separator : {store::kAttributeMark, store::kValueMark}) {
    store_.put("ORGPRISECHARGE", kBody, DynamicArray(std::string(80, separator)));
    expectShown();
    expectLeftWithoutAQuestion();
    EXPECT_FALSE(saves());
  }
}

TEST_F(BadInput, AttributesBehindTheLastOneStay) {
  store_.set("ORGPRISECHARGE", kBody, 200, marked("loin|derrière"));
  start();
  expectKept();
}

TEST_F(BadInput, OddTextsInAllAttributesAtOnceAreShownAndLeft) {
  start();
  for (const char* text : {"|", "X|Y", "\xFF", "\"", "]"}) {
    DynamicArray odd;
    for (int i = 1; i <= attribut::Dernier; ++i) odd.set(i, marked(text));
    store_.put("ORGPRISECHARGE", kBody, odd);
    expectShown();
    expectLeftWithoutAQuestion();
    saves();
  }
}

// --- Code tables ---------------------------------------------------------------------------------

class BadTables : public BadInput {
 protected:
  void table(std::string_view name, const std::string& codes, const std::string& labels) {
    DynamicArray record;
    record.set(store::tables::Codes, marked(codes));
    record.set(store::tables::Libelles, marked(labels));
    store_.put("TABLES", name, record);
  }
};

TEST_F(BadTables, WithoutThemDocumentsGoAndTheCategoryStays) {
  store_.erase("TABLES", "PIECESRENOUV");
  store_.erase("TABLES", "STATORGCHG");
  start();
  expectShown();
  EXPECT_EQ(list("Lst_PiecePossibleOrgChg").listCount(), 0);
  EXPECT_EQ(combo("Cbo_StatsOrgChg").listCount(), 0);
  EXPECT_EQ(combo("Cbo_StatsOrgChg").text(), "");
  expectLeftWithoutAQuestion();
  EXPECT_TRUE(saves());
  EXPECT_EQ(attribute(kBody, attribut::PieceRenouOrgChg), "");
  EXPECT_EQ(attribute(kBody, attribut::StatsOrgChg), "CD");
}

TEST_F(BadTables, ACodeWithoutALabelIsNotShown) {
  table("PIECESRENOUV", "AI|RI", "Avis d'imposition");
  table("STATORGCHG", "MU|CD", "Mutuelle");
  start();
  expectShown();
  EXPECT_PRED_FORMAT2(same, linesOf(list("Lst_PiecePossibleOrgChg")),
                      std::vector<std::string>{"Avis d'imposition"});
  EXPECT_PRED_FORMAT2(same, linesOf(list("Lst_PieceRenouOrgChg")),
                      std::vector<std::string>{"Avis d'imposition"});
  EXPECT_EQ(combo("Cbo_StatsOrgChg").text(), "");
  expectLeftWithoutAQuestion();
  EXPECT_TRUE(saves());
  EXPECT_EQ(attribute(kBody, attribut::PieceRenouOrgChg), "AI");
  EXPECT_EQ(attribute(kBody, attribut::StatsOrgChg), "CD");
}

TEST_F(BadTables, ALabelWithoutACodeCanBeChosenAndIsNotWritten) {
  table("PIECESRENOUV", "AI|RI", "Avis d'imposition|Relevé d'identité|Sans code");
  table("STATORGCHG", "CD", "Conseil départemental|Sans code");
  start();
  expectShown();
  user_->click(tabs(), 1);
  EXPECT_TRUE(user_->dblClick(list("Lst_PiecePossibleOrgChg"), 2));
  EXPECT_EQ(linesOf(list("Lst_PieceRenouOrgChg")).back(), "Sans code");
  EXPECT_TRUE(user_->choose(combo("Cbo_StatsOrgChg"), 1));
  EXPECT_TRUE(saves());
  EXPECT_EQ(attribute(kBody, attribut::PieceRenouOrgChg), marked("AI|RI"));
  expectShown();
  EXPECT_EQ(list("Lst_PieceRenouOrgChg").listCount(), 2);
}

TEST_F(BadTables, EmptyCodesAndLabelsAreTheEndOfATable) {
  table("PIECESRENOUV", "AI||RI", "Avis d'imposition||Relevé d'identité");
  table("STATORGCHG", "||CD", "||Conseil départemental");
  start();
  expectShown();
  EXPECT_PRED_FORMAT2(same, linesOf(list("Lst_PieceRenouOrgChg")),
                      std::vector<std::string>{"Avis d'imposition"});
  EXPECT_EQ(combo("Cbo_StatsOrgChg").text(), "");
  expectLeftWithoutAQuestion();
  EXPECT_TRUE(saves());
  EXPECT_EQ(attribute(kBody, attribut::StatsOrgChg), "CD");
}

TEST_F(BadTables, TwoCodesUnderOneLabelAreNotMixedUpWhileUnchanged) {
  table("STATORGCHG", "XX|CD", "Conseil départemental|Conseil départemental");
  start();
  expectKept();
  EXPECT_EQ(attribute(kBody, attribut::StatsOrgChg), "CD");
}

TEST_F(BadTables, WithoutTheCounterRecordThereAreNoAccountsAndTheFirstFreeCodeIsGiven) {
  store_.erase("COMPTEUR", "999");
  start();
  expectKept();
  EXPECT_FALSE(box("Txt_DebitOrgChg").enabled());
  beginCreation();
  EXPECT_TRUE(press("Cmd_OK"));
  EXPECT_EQ(attribute("004", attribut::SigleOrgChg), "NEUF");
}

// --- Chart of accounts, entity, activities -------------------------------------------------------

class BadFiles : public BadInput {
 protected:
  void startWithAccounts() {
    store_.set("COMPTEUR", "999", store::compteur::InterfaceComptable, "O");
    start();
  }
};

TEST_F(BadFiles, ALabelWithQuotesIsShownFoundAndKept) {
  const std::string label = "AIDE \"A DOMICILE\" 'B'";
  store_.put("PLANCOMPTABLE", "0107060000000", {label});
  store_.put("PLANCOMPTABLE", "0107061000000", {"AUTRE"});
  startWithAccounts();
  expectKept();
  expectShown();
  user_->click(tabs(), 1);
  EXPECT_EQ(combo("Cbo_DebitOrgChg").text(), label);
  user_->fill(box("Txt_DebitOrgChg"), "7060\r");
  EXPECT_EQ(box("Txt_DebitOrgChg").text(), "7060000000");
  EXPECT_EQ(combo("Cbo_DebitOrgChg").text(), label);
  user_->fill(combo("Cbo_DebitOrgChg"), "aide");
  user_->press(toolkit::Key::Enter);
  EXPECT_TRUE(user_->choose(combo("Cbo_DebitOrgChg"), 0));
  EXPECT_EQ(box("Txt_DebitOrgChg").text(), "7060000000");
  expectNoBox();
}

TEST_F(BadFiles, ASearchForAQuoteIsSentAsItIsAndHarmsNothing) {
  startWithAccounts();
  expectShown();
  user_->click(tabs(), 1);
  store_.forgetCalls();
  user_->fill(combo("Cbo_DebitOrgChg"), "AIDE \"A");
  user_->press(toolkit::Key::Enter);
  ASSERT_EQ(store_.calls(CallKind::ExecuteSentence).size(), 1U);
  EXPECT_TRUE(store_.calls(CallKind::ExecuteSentence)[0].text.starts_with(
      "SSELECT PLANCOMPTABLE AVEC 1 = \"AIDE \"A]\" AND AVEC @ID = \"010]\" PAR 1"));
  expectBox("Aucune ventilation comptable commençant par AIDE \"A", Icon::Exclamation);
  EXPECT_EQ(combo("Cbo_DebitOrgChg").text(), "");
  // The store may refuse such a sentence, too.
  store_.fail(CallKind::ExecuteSentence, "", store::kBadSentence);
  user_->fill(combo("Cbo_DebitOrgChg"), "AIDE \"A");
  user_->press(toolkit::Key::Enter);
  expectNoBox();
  EXPECT_EQ(desktop_.pointer(), toolkit::Pointer::Normal);
  EXPECT_TRUE(control_->surface().enabled());
}

TEST_F(BadFiles, AnAccountWithoutALabelOrWithSeveralIsKept) {
  for (const char* label : {"", "UN|DEUX", "|"}) {
    store_.put("PLANCOMPTABLE", "0107060000000", {marked(label)});
    startWithAccounts();
    expectKept();
  }
}

TEST_F(BadFiles, AnEntityWithoutActivitiesIsKeptAndCanBeChosen) {
  store_.put("ASSOCIATION", "050", {"SANS ACTIVITES"});
  store_.set("ORGPRISECHARGE", kBody, attribut::Entite, "050");
  store_.set("ORGPRISECHARGE", kBody, attribut::CodActSelect, "");
  start();
  expectKept();
  expectShown();
  user_->click(tabs(), 5);
  user_->fill(box("Txt_Entite"), "010");
  user_->dblClick(list("Lst_Activite"), 0);
  user_->fill(box("Txt_Entite"), "050");
  EXPECT_EQ(list("Lst_Activite").listCount(), 0);
  EXPECT_EQ(list("Lst_ActSelect").listCount(), 0);
  press("Cmd_PasseDroit");
  press("Cmd_PasseGauche");
  EXPECT_TRUE(saves());
  EXPECT_EQ(attribute(kBody, attribut::CodActSelect), "");
}

TEST_F(BadFiles, AnEntityWithoutANameIsKeptThoughItsChecksRefuseIt) {
  store_.put("ASSOCIATION", "010", {""});
  start();
  expectShown();
  expectLeftWithoutAQuestion();
  EXPECT_FALSE(saves());
}

TEST_F(BadFiles, AnEntityThatIsGoneIsKeptThoughItsChecksRefuseIt) {
  store_.erase("ASSOCIATION", "010");
  start();
  expectShown();
  EXPECT_EQ(box("Txt_Entite").text(), "010");
  EXPECT_EQ(combo("Cbo_Entite").text(), "");
  expectLeftWithoutAQuestion();
  EXPECT_FALSE(saves());
}

TEST_F(BadFiles, ActivitiesOfUnknownTypesAndWithoutLabelsAreKept) {
  for (const char* type : {"", "Z", "é", "PM", "P|M", "\xFF"}) {
    SCOPED_TRACE(type);
    DynamicArray activity;
    activity.set(store::activites::CodAssoActivite, "010");
    activity.set(store::activites::TypeActivite, marked(type));
    store_.put("ACTIVITES", "010P01", activity);
    start();
    expectKept();
  }
}

TEST_F(BadFiles, CoveredActivitiesThatAreGoneAreKept) {
  store_.erase("ACTIVITES", "010P01");
  start();
  expectKept();
  store_.set("ORGPRISECHARGE", kBody, attribut::CodActSelect, marked("|010P01||"));
  expectKept();
}

// --- Slip parameters -----------------------------------------------------------------------------

TEST_F(BadFiles, SlipParametersWithoutAWidthOrALabelAreKept) {
  store_.put("PARAMBORDORGCHG", "1", {"Nom"});
  store_.put("PARAMBORDORGCHG", "2", {"", "8"});
  store_.put("PARAMBORDORGCHG", "3", {"Large", "large"});
  store_.put("PARAMBORDORGCHG", "4", {"Négatif", "-5"});
  store_.put("PARAMBORDORGCHG", "CINQ", {"Cinq", "5"});
  store_.put("PARAMBORDORGCHG", "0", {"Zéro", "5"});
  store_.put("PARAMBORDORGCHG", "6", DynamicArray());
  store_.set("ORGPRISECHARGE", kBody, attribut::ParamSelecOrgChg, marked("1|2|3|4|CINQ|0|6|99"));
  start();
  expectKept();
}

TEST_F(BadFiles, AParameterWithoutAWidthCountsForNothing) {
  store_.put("PARAMBORDORGCHG", "1", {"Nom"});
  start();
  expectShown();
  EXPECT_EQ(child<toolkit::Label>("Etq_NbCarSelect").caption(), "");
  user_->click(tabs(), 4);
  user_->dblClick(list("Lst_ParamPossOrgChg"), list("Lst_ParamPossOrgChg").items().find("Heures"));
  EXPECT_EQ(child<toolkit::Label>("Etq_NbCarSelect").caption(), "8/130");
}

TEST_F(BadFiles, WidthsBeyondAllMeasureAreRefused) {
  store_.put("PARAMBORDORGCHG", "1", {"Nom", "99999999999999999999"});
  start();
  expectShown();
  expectLeftWithoutAQuestion();
  EXPECT_FALSE(saves());
}

TEST_F(BadFiles, WithoutAnySlipParameterTheOnesChosenAreKept) {
  for (const std::string& id : store_.ids("PARAMBORDORGCHG")) store_.erase("PARAMBORDORGCHG", id);
  start();
  expectKept();
}

// --- Pay period ----------------------------------------------------------------------------------

TEST_F(BadFiles, WithoutAReadablePayPeriodAllAgreementsThatAreNotClosedCount) {
  store_.put("ACCORD", "00001001", {kBody, "00001", "", "", "1", "2"});
  start();
  const std::vector<std::string> unreadable{"", "2026", "202613", "juin 26", marked("|202601")};
  for (const std::string& period : unreadable) {
    SCOPED_TRACE(period);
    store_.put("PERIODESPAIE", "1", {period});
    if (period.empty()) store_.erase("PERIODESPAIE", "1");
    expectKept();
    expectShown();
    user_->click(tabs(), 1);
    user_->click(child<toolkit::OptionButton>("Opt_PlafMensOrgChg"));
    const std::string before = body().text();
    press("Cmd_OK");
    const auto boxes = desktop_.takeBoxes();
    ASSERT_PRED_FORMAT2(boxCount, boxes, 1U);
    EXPECT_TRUE(boxes[0].text.starts_with("La modification de la gestion du plafond"));
    EXPECT_PRED_FORMAT2(sameBody, body().text(), before);
    press("Cmd_Annuler");
  }
}

// --- Everything at once --------------------------------------------------------------------------

TEST_F(BadFiles, AStoreOfBodiesAloneShowsLeavesAndCreates) {
  for (const char* file : {"TABLES", "COMPTEUR", "PARAMBORDORGCHG", "ASSOCIATION", "ACTIVITES",
                           "PLANCOMPTABLE", "PERIODESPAIE", "NATUREVOIE"}) {
    for (const std::string& id : store_.ids(file)) store_.erase(file, id);
  }
  start();
  expectShown();
  expectLeftWithoutAQuestion();
  EXPECT_FALSE(saves());
  press("Cmd_Ajouter");
  EXPECT_EQ(state(), kCreating);
  press("Cmd_OK");
  expectBox("Le sigle de l'organisme de prise en charge est obligatoire.", Icon::Exclamation);
}

}  // namespace
}  // namespace behaviour
