#include <algorithm>
#include <functional>

#include "store/Conversions.h"
#include "store/Layouts.h"
#include "tests/behaviour/EditMode.h"
#include "tests/behaviour/ScaleTest.h"
#include "tests/support/Seed.h"

namespace behaviour {
namespace {

using toolkit::Buttons;

const Rows kThree{{"0,00", "500,00", "0,00", "800,00", "1,50", "1,60"},
                  {"500,00", "900,00", "800,00", "1400,00", "2,50", "2,75"},
                  {"900,00", "2000,00", "1400,00", "3000,00", "4,00", "4,25"}};

// Showing and writing -----------------------------------------------------------------------------

class ScalePage : public Scale {
 protected:
  bool set(std::string_view name) { return option(name).value(); }
  // Shows the body 001 with that attribute, saves it unchanged, and gives the attribute back.
  std::string roundTrip(int number, std::string_view text) {
    store_.set("ORGPRISECHARGE", "001", number, text);
    show();
    save();
    return attribute("001", number);
  }
};

TEST_F(ScalePage, ShowsRowsDatesAndOptions) {
  EXPECT_PRED_FORMAT2(same, rows(), kThree);
  EXPECT_PRED_FORMAT2(same, selected(), std::vector<int>(6, -1));
  EXPECT_EQ(previous().text(), "01/01/2025");
  EXPECT_EQ(current().text(), "01/01/2026");
  EXPECT_TRUE(set("Opt_Ressource"));
  EXPECT_TRUE(set("Opt_GestPartMont"));
  EXPECT_FALSE(child<CheckBox>("Cac_Abonnement").value());
}

TEST_F(ScalePage, ShowsEachCodeAsItsOption) {
  struct {
    int attribute;
    const char* code;
    const char* option;
    const char* other;
  } const codes[] = {{attribut::Bareme, "Q", "Opt_Quotient", "Opt_Ressource"},
                     {attribut::Bareme, "R", "Opt_Ressource", "Opt_Quotient"},
                     {attribut::GestPartBenef, "M", "Opt_GestPartMont", "Opt_GestPartPourc"},
                     {attribut::GestPartBenef, "%", "Opt_GestPartPourc", "Opt_GestPartMont"}};
  for (const auto& line : codes) {
    store_.set("ORGPRISECHARGE", "001", line.attribute, line.code);
    show();
    EXPECT_TRUE(set(line.option)) << line.code;
    EXPECT_FALSE(set(line.other)) << line.code;
  }
}

TEST_F(ScalePage, WritesEachOptionAsItsCode) {
  struct {
    const char* option;
    int attribute;
    const char* code;
  } const options[] = {{"Opt_Quotient", 40, "Q"},
                       {"Opt_Ressource", 40, "R"},
                       {"Opt_GestPartPourc", 41, "%"},
                       {"Opt_GestPartMont", 41, "M"}};
  for (const auto& line : options) {
    show();
    ASSERT_TRUE(user_->click(option(line.option)));
    save();
    EXPECT_EQ(attribute("001", line.attribute), line.code) << line.option;
  }
}

TEST_F(ScalePage, ACodeThatIsNoneSetsNoOptionAndIsKept) {
  store_.set("ORGPRISECHARGE", "001", attribut::Bareme, "X");
  store_.set("ORGPRISECHARGE", "001", attribut::GestPartBenef, "m");
  show();
  for (const char* name :
       {"Opt_Quotient", "Opt_Ressource", "Opt_GestPartMont", "Opt_GestPartPourc"}) {
    EXPECT_FALSE(set(name)) << name;
  }
  EXPECT_EQ(caption("Etq_Montant"), "% au");
  save();
  EXPECT_EQ(attribute("001", attribut::Bareme), "X");
  EXPECT_EQ(attribute("001", attribut::GestPartBenef), "m");
}

TEST_F(ScalePage, ReadsTheSubscriptionAsAFlagAndWritesItAs0Or1) {
  EXPECT_EQ(roundTrip(42, "1"), "1");
  EXPECT_EQ(roundTrip(42, "0"), "0");
  EXPECT_EQ(roundTrip(42, ""), "0");
  show();
  ASSERT_TRUE(user_->click(child<CheckBox>("Cac_Abonnement")));
  save();
  EXPECT_EQ(attribute("001", attribut::Abonnement), "1");
}

TEST_F(ScalePage, SavingUnchangedKeepsTheRecordsText) {
  for (const char* body : {"001", "002", "003"}) {
    const std::string before = store_.record("ORGPRISECHARGE", body).text();
    show(body);
    ASSERT_TRUE(press("Cmd_OK"));
    expectNoBox();
    show(body);
    ASSERT_TRUE(press("Cmd_OK"));
    for (int number = attribut::DebRevSeulOrgChg; number <= attribut::Abonnement; ++number) {
      EXPECT_EQ(attribute(body, number), store::DynamicArray(before).get(number))
          << body << " " << bodyAttribute(number);
    }
  }
}

TEST_F(ScalePage, ValuesThatCannotBeReadAreShownAndKept) {
  const std::string mark(1, store::kValueMark);
  const std::string odd = "abc" + mark + "1,2,5" + mark + "0150";
  for (const int number : {attribut::BaremPrecOrgChg, attribut::BaremCoursOrgChg})
    EXPECT_EQ(roundTrip(number, odd), odd) << bodyAttribute(number);
  show();
  EXPECT_EQ(rows()[0][4], "abc");
  EXPECT_EQ(rows()[1][5], "1,2,5");
  EXPECT_EQ(rows()[2][5], "1,50");
  EXPECT_EQ(roundTrip(attribut::DatBaremPrec, "hier"), "hier");
  show();
  EXPECT_EQ(previous().text(), "hier");
  EXPECT_EQ(roundTrip(attribut::DatBaremPrec, "21000.5"), "21000.5");
  EXPECT_EQ(roundTrip(attribut::DatBaremCours, "21186,75"), "21186,75");
}

TEST_F(ScalePage, ValuesThatCannotBeReadStayWhenAnotherRowChanges) {
  const std::string mark(1, store::kValueMark);
  store_.set("ORGPRISECHARGE", "001", attribut::BaremPrecOrgChg, "abc" + mark + "?" + mark + "400");
  show();
  ASSERT_TRUE(open(2));
  user_->fill(box("Txt_BaremCoursOrgChg"), "5");
  ASSERT_TRUE(press("Cmd_OKPart"));
  save();
  EXPECT_EQ(attribute("001", attribut::BaremPrecOrgChg), "abc" + mark + "?" + mark + "400");
  EXPECT_EQ(attribute("001", attribut::BaremCoursOrgChg), "160" + mark + "275" + mark + "500");
}

TEST_F(ScalePage, StoredNumbersWithDecimalsAreShownRoundedAndKept) {
  const std::string odd = marked("1250.5|1250,4|-0.5");
  EXPECT_EQ(roundTrip(attribut::BaremCoursOrgChg, odd), odd);
  show();
  EXPECT_PRED_FORMAT2(same, (Row{rows()[0][5], rows()[1][5], rows()[2][5]}),
                      (Row{"12,51", "12,50", "-0,01"}));
}

TEST_F(ScalePage, StoredNumbersWithDecimalsAreKeptInRowsThatHaveMoved) {
  store_.set("ORGPRISECHARGE", "001", attribut::BaremCoursOrgChg, marked("160.5|275,4|425.5"));
  show();
  beginScale("01022026");
  add({"-5", "0", "-5", "0", "1"});
  ASSERT_TRUE(open(3, "Lst_BaremCoursOrgChg"));
  ASSERT_TRUE(press("Cmd_OKPart"));
  control_->TriBareme();
  control_->Ecrire_Ong4();
  save();
  EXPECT_EQ(attribute("001", attribut::BaremPrecOrgChg), marked("|160.5|275,4|425.5"));
  EXPECT_EQ(attribute("001", attribut::BaremCoursOrgChg), marked("100|160.5|275,4|425.5"));
  show();
  ASSERT_TRUE(open(0));
  desktop_.answer(Answer::Yes);
  ASSERT_TRUE(press("Cmd_SuppPart"));
  ASSERT_TRUE(open(0));
  user_->fill(box("Txt_BaremCoursOrgChg"), "5");
  ASSERT_TRUE(press("Cmd_OKPart"));
  desktop_.takeBoxes();
  store_.forgetCalls();
  save();
  EXPECT_EQ(attribute("001", attribut::BaremPrecOrgChg), marked("160.5|275,4|425.5"));
  EXPECT_EQ(attribute("001", attribut::BaremCoursOrgChg), marked("500|275,4|425.5"));
}

TEST_F(ScalePage, AnEmptyCurrentParticipationCountsAndIsWrittenAs0) {
  const std::string mark(1, store::kValueMark);
  store_.set("ORGPRISECHARGE", "001", attribut::BaremCoursOrgChg, "160" + mark + mark);
  show();
  EXPECT_EQ(rows()[1][5], "");
  EXPECT_TRUE(control_->Verif_Ong4());
  EXPECT_EQ(rows()[1][5], "0,00");
  EXPECT_EQ(rows()[2][5], "0,00");
  show();
  save();
  EXPECT_EQ(attribute("001", attribut::BaremCoursOrgChg), "160" + mark + "0" + mark + "0");
}

TEST_F(ScalePage, AnEmptyCurrentParticipationIsCountedEvenWhenTheCheckFails) {
  const std::string mark(1, store::kValueMark);
  store_.set("ORGPRISECHARGE", "001", attribut::BaremCoursOrgChg, mark + mark + "425");
  store_.set("ORGPRISECHARGE", "001", attribut::DatBaremCours, "");
  show();
  EXPECT_FALSE(control_->Verif_Ong4());
  EXPECT_EQ(rows()[0][5], "0,00");
}

TEST_F(ScalePage, AttributesOfUnequalLengthsShowAsManyRowsAsTheLongestOne) {
  store_.set("ORGPRISECHARGE", "001", attribut::BaremPrecOrgChg, "150");
  show();
  EXPECT_EQ(rows().size(), 3U);
  EXPECT_EQ(rows()[2][4], "");
  save();
  EXPECT_EQ(store_.record("ORGPRISECHARGE", "001").DCount(attribut::BaremPrecOrgChg), 3);
}

TEST_F(ScalePage, ShowingAnotherBodyLeavesNothingOfTheOneBefore) {
  ASSERT_TRUE(user_->click(child<CheckBox>("Cac_Abonnement")));
  lookUp("002");
  EXPECT_TRUE(rows().empty());
  EXPECT_EQ(previous().text() + current().text(), "");
  EXPECT_FALSE(child<CheckBox>("Cac_Abonnement").value());
  lookUp("003");
  EXPECT_PRED_FORMAT2(same, rows(), (Rows{{"0,00", "1000,00", "0,00", "1500,00", "", "10,00"}}));
  EXPECT_EQ(current().text(), "01/07/2025");
  EXPECT_FALSE(set("Opt_GestPartMont"));
}

// From 0,00 to 999,99, a quarter of the values in the brackets of each kind and in each
// participation.
TEST_F(ScalePage, HundredthsNeverDrift) {
  for (int from = 0; from < 25000; from += 1000) {
    Rows many;
    for (int number = from; number < from + 1000; ++number) {
      many.push_back({store::twoDecimals(number), store::twoDecimals(number + 1),
                      store::twoDecimals(number + 25000), store::twoDecimals(number + 25001),
                      store::twoDecimals(number + 50000), store::twoDecimals(number + 75000)});
    }
    putScale("001", many, "", "01/01/2026");
    const std::string before = store_.record("ORGPRISECHARGE", "001").text();
    show();
    ASSERT_PRED_FORMAT2(same, rows(), many);
    save();
    ASSERT_PRED_FORMAT2(sameBody, store_.record("ORGPRISECHARGE", "001").text(), before);
  }
}

// Captions ----------------------------------------------------------------------------------------

TEST_F(ScalePage, TheHeadFollowsTheMode) {
  EXPECT_EQ(caption("Etq_Montant"), "Montant au");
  ASSERT_TRUE(user_->click(option("Opt_GestPartPourc")));
  EXPECT_EQ(caption("Etq_Montant"), "% au");
  ASSERT_TRUE(user_->click(option("Opt_GestPartMont")));
  EXPECT_EQ(caption("Etq_Montant"), "Montant au");
  show("003");
  EXPECT_EQ(caption("Etq_Montant"), "% au");
  show("001");
  EXPECT_EQ(caption("Etq_Montant"), "Montant au");
}

TEST_F(ScalePage, TheHeadFollowsAModeThatAnotherPageSets) {
  show("003");
  ASSERT_TRUE(user_->click(tabs(), 1));
  ASSERT_TRUE(user_->click(option("Opt_TypeComplOrgChg")));
  ASSERT_TRUE(user_->click(option("Opt_TypePrincipalOrgChg")));
  EXPECT_TRUE(set("Opt_GestPartMont"));
  EXPECT_EQ(caption("Etq_Montant"), "Montant au");
}

TEST_F(ScalePage, TheFrameNamesWhoTakesPart) {
  EXPECT_EQ(caption("Cdr_ParticipBenef"), "Participation bénéficiaire");
  ASSERT_TRUE(user_->click(tabs(), 1));
  ASSERT_TRUE(user_->click(option("Opt_TypeComplOrgChg")));
  EXPECT_EQ(caption("Cdr_ParticipBenef"), "Participation organisme");
  EXPECT_TRUE(set("Opt_GestPartMont"));
  ASSERT_TRUE(user_->click(tabs(), 3));
  ASSERT_TRUE(user_->click(option("Opt_GestPartPourc")));
  ASSERT_TRUE(user_->click(tabs(), 1));
  ASSERT_TRUE(user_->click(option("Opt_TypePrincipalOrgChg")));
  EXPECT_EQ(caption("Cdr_ParticipBenef"), "Participation bénéficiaire");
  EXPECT_TRUE(set("Opt_GestPartMont"));
  EXPECT_EQ(caption("Etq_Montant"), "Montant au");
  store_.set("ORGPRISECHARGE", "002", attribut::TypeOrgChg, "C");
  show("002");
  EXPECT_EQ(caption("Cdr_ParticipBenef"), "Participation organisme");
  control_->Vider_Donnees();
  EXPECT_EQ(caption("Cdr_ParticipBenef"), "Participation bénéficiaire");
}

// The lists move as one ---------------------------------------------------------------------------

class ScaleLists : public Scale {
 protected:
  toolkit::ScrollBar& bar() { return child<toolkit::ScrollBar>("Bdv_Bareme"); }
  static Rows many(int count) {
    Rows rows;
    for (int i = 0; i < count; ++i) {
      rows.push_back({store::twoDecimals(i * 100LL), store::twoDecimals(i * 100LL + 100),
                      store::twoDecimals(i * 200LL), store::twoDecimals(i * 200LL + 200),
                      store::twoDecimals(i), store::twoDecimals(i + 1)});
    }
    return rows;
  }
};

TEST_F(ScaleLists, AClickInAnyListSelectsTheRowInAllAndMovesTheScrollBar) {
  putScale("001", many(20), "", "01/01/2026");
  show();
  int row = 3;
  for (const char* name : kScaleLists) {
    ASSERT_TRUE(user_->click(list(name), row));
    EXPECT_PRED_FORMAT2(same, selected(), std::vector<int>(6, row)) << name;
    EXPECT_EQ(bar().value(), row) << name;
    row = (row * 7 + 5) % 20;
  }
}

TEST_F(ScaleLists, TheScrollBarSelectsItsRowInAll) {
  putScale("001", many(20), "", "01/01/2026");
  show();
  for (const int row : {5, 19, 0}) {
    ASSERT_TRUE(user_->scroll(bar(), row));
    EXPECT_PRED_FORMAT2(same, selected(), std::vector<int>(6, row));
  }
}

TEST_F(ScaleLists, TheWheelOverAnyListScrollsAll) {
  putScale("001", many(20), "", "01/01/2026");
  show();
  int top = 1;
  for (const char* name : kScaleLists) {
    ASSERT_TRUE(user_->scroll(list(name), top));
    Lines shown;
    Lines expected;
    for (const char* each : kScaleLists) {
      shown.push_back(each + (" from row " + std::to_string(list(each).topIndex())));
      expected.push_back(each + (" from row " + std::to_string(top)));
    }
    EXPECT_PRED_FORMAT2(same, shown, expected) << "scrolled: " << name;
    ++top;
  }
}

TEST_F(ScaleLists, TheThirteenthRowShowsTheScrollBarAndWidensTheLastColumn) {
  for (const int count : {0, 1, 12, 13, 60}) {
    putScale("001", many(count), "", "01/01/2026");
    show();
    const bool shown = count > 12;
    EXPECT_EQ(bar().visible(), shown) << count;
    EXPECT_EQ(bar().max(), count - 1) << count;
    EXPECT_EQ(bar().value(), 0) << count;
    EXPECT_EQ(list("Lst_BaremCoursOrgChg").place().width, shown ? 1215 : 975) << count;
    EXPECT_EQ(box("Txt_BaremCoursOrgChg").place().width, shown ? 1215 : 975) << count;
  }
}

TEST_F(ScaleLists, TheScrollBarComesAndGoesWithTheThirteenthRow) {
  putScale("001", many(12), "", "01/01/2026");
  show();
  beginScale();
  add({"12", "13", "24", "26", "3"});
  EXPECT_EQ(rows().size(), 13U);
  EXPECT_TRUE(bar().visible());
  EXPECT_EQ(list("Lst_BaremCoursOrgChg").place().width, 1215);
  ASSERT_TRUE(open(12, "Lst_BaremCoursOrgChg"));
  desktop_.answer(Answer::Yes);
  ASSERT_TRUE(press("Cmd_SuppPart"));
  EXPECT_EQ(rows().size(), 12U);
  EXPECT_FALSE(bar().visible());
  EXPECT_EQ(list("Lst_BaremCoursOrgChg").place().width, 975);
}

TEST_F(ScaleLists, ShowingAndDeletingLeaveNoRowSelectedAndTheScrollBarAtItsStart) {
  putScale("001", many(20), "", "01/01/2026");
  show();
  ASSERT_TRUE(open(7));
  desktop_.answer(Answer::Yes);
  ASSERT_TRUE(press("Cmd_SuppPart"));
  EXPECT_PRED_FORMAT2(same, selected(), std::vector<int>(6, -1));
  EXPECT_EQ(bar().value(), 0);
  ASSERT_TRUE(user_->scroll(bar(), 9));
  control_->Afficher_Ong4();
  EXPECT_PRED_FORMAT2(same, selected(), std::vector<int>(6, -1));
  EXPECT_EQ(bar().value(), 0);
}

// Edit mode ---------------------------------------------------------------------------------------

class ScaleEditMode : public EditMode<Scale> {
 protected:
  ScaleEditMode()
      : EditMode(3, {{"Lst_DebRevSeulOrgChg", true, false, false},
                     {"Lst_FinRevSeulOrgChg", true, false, false},
                     {"Lst_DebRevMenOrgChg", true, false, false},
                     {"Lst_FinRevMenOrgChg", true, false, false},
                     {"Lst_BaremPrecOrgChg", true, false, false},
                     {"Lst_BaremCoursOrgChg", true, false, false},
                     {"Cmd_NouveauBareme", true, false, false},
                     {"Cdr_Bareme", true, false, false},
                     {"Cdr_GestionParticipBenef", true, false, false},
                     {"Cac_Abonnement", true, false, false},
                     {"Cdr_ParticipBenef", true, true, true},
                     {"Bdv_Bareme", true, true, true},
                     {"Txt_DatBaremPrec", false, false, false},
                     {"Txt_DatBaremCours", false, false, false},
                     {"Cmd_AjoutPart", false, false, false},
                     {"Txt_DebRevSeulOrgChg", false, true, true},
                     {"Txt_FinRevSeulOrgChg", false, true, true},
                     {"Txt_DebRevMenOrgChg", false, true, true},
                     {"Txt_FinRevMenOrgChg", false, true, true},
                     {"Txt_BaremCoursOrgChg", false, true, true},
                     {"Cmd_OKPart", false, true, true},
                     {"Cmd_AnnulerPart", false, true, true},
                     {"Cmd_SuppPart", false, true, false}}) {}
  void expectListModeAgain(Caller at = Caller::here()) {
    const auto trace = called("expectListModeAgain", at);
    expectAsRemembered();
    EXPECT_PRED_FORMAT2(same, zones(), Row(5));
    EXPECT_EQ(state(), kExisting);
  }
};

TEST_F(ScaleEditMode, LocksOneByOneWhileARowIsChanged) {
  expectLocks(&Lock::listMode);
  ASSERT_TRUE(open(0));
  expectLocks(&Lock::changing);
  ASSERT_TRUE(press("Cmd_AnnulerPart"));
  expectLocks(&Lock::listMode);
}

TEST_F(ScaleEditMode, LocksOneByOneWhileARowIsAdded) {
  show("002");
  ASSERT_TRUE(enabled("Cmd_AjoutPart"));
  ASSERT_TRUE(press("Cmd_AjoutPart"));
  expectLocks(&Lock::adding);
  EXPECT_PRED_FORMAT1(hasFocus, box("Txt_DebRevSeulOrgChg"));
  EXPECT_PRED_FORMAT2(same, zones(), Row(5));
}

TEST_F(ScaleEditMode, UnderANewScaleTheDateIsLockedAndOpenedAgain) {
  beginScale("01022026");
  ASSERT_TRUE(enabled("Txt_DatBaremCours"));
  remember();
  ASSERT_TRUE(open(1, "Lst_BaremCoursOrgChg"));
  EXPECT_FALSE(enabled("Txt_DatBaremCours"));
  EXPECT_FALSE(enabled("Cmd_NouveauBareme"));
  ASSERT_TRUE(press("Cmd_OKPart"));
  expectListModeAgain();
  EXPECT_PRED_FORMAT1(hasFocus, list("Lst_BaremCoursOrgChg"));
}

TEST_F(ScaleEditMode, TheUserReachesNothingElse) {
  ASSERT_TRUE(open(0));
  expectTheRestOutOfReach({"Cmd_AjoutPart", "Cmd_NouveauBareme"});
  EXPECT_FALSE(user_->click(option("Opt_GestPartPourc")));
  EXPECT_FALSE(user_->click(child<CheckBox>("Cac_Abonnement")));
  EXPECT_FALSE(user_->dblClick(list("Lst_FinRevMenOrgChg"), 1));
  EXPECT_TRUE(rowOpen());
  EXPECT_TRUE(store_.calls().empty());
}

TEST_F(ScaleEditMode, EndsByOKOfAChange) {
  ASSERT_TRUE(open(0));
  ASSERT_TRUE(press("Cmd_OKPart"));
  expectNoBox();
  expectListModeAgain();
  EXPECT_PRED_FORMAT2(same, rows(), kThree);
}

TEST_F(ScaleEditMode, EndsByOKOfAnAdditionWithTheFocusOnItsButton) {
  show("002");
  remember();
  add({"0", "100", "0", "200", "1"});
  expectListModeAgain();
  EXPECT_PRED_FORMAT1(hasFocus, button("Cmd_AjoutPart"));
}

TEST_F(ScaleEditMode, EndsByCancellingAChangeWithoutAQuestion) {
  ASSERT_TRUE(open(2));
  fillZones({"1", "2", "3", "4", "5"});
  ASSERT_TRUE(press("Cmd_AnnulerPart"));
  expectNoBox();
  EXPECT_EQ(desktop_.beeps(), 0);
  expectListModeAgain();
  EXPECT_PRED_FORMAT2(same, rows(), kThree);
}

TEST_F(ScaleEditMode, EndsByCancellingAnAdditionWithYes) {
  show("002");
  remember();
  ASSERT_TRUE(press("Cmd_AjoutPart"));
  fillZones({"1", "2"});
  desktop_.answer(Answer::Yes);
  ASSERT_TRUE(press("Cmd_AnnulerPart"));
  EXPECT_EQ(desktop_.beeps(), 1);
  expectBox(kQuitterCreation, Icon::Question, Buttons::YesNo);
  expectListModeAgain();
  EXPECT_PRED_FORMAT1(hasFocus, button("Cmd_AjoutPart"));
  EXPECT_TRUE(rows().empty());
}

TEST_F(ScaleEditMode, StaysWhenCancellingAnAdditionIsAnsweredNo) {
  show("002");
  ASSERT_TRUE(press("Cmd_AjoutPart"));
  fillZones({"1", "2"});
  desktop_.answer(Answer::No);
  ASSERT_TRUE(press("Cmd_AnnulerPart"));
  expectBox(kQuitterCreation, Icon::Question, Buttons::YesNo);
  expectLocks(&Lock::adding);
  EXPECT_PRED_FORMAT2(same, zones(), (Row{"1,00", "2,00", "", "", ""}));
}

TEST_F(ScaleEditMode, DeletingAsksAfterABeep) {
  ASSERT_TRUE(open(1));
  desktop_.answer(Answer::No);
  ASSERT_TRUE(press("Cmd_SuppPart"));
  EXPECT_EQ(desktop_.beeps(), 1);
  expectBox(kSupprimerLigne, Icon::Question, Buttons::YesNo);
  EXPECT_TRUE(rowOpen());
  EXPECT_PRED_FORMAT2(same, rows(), kThree);
  desktop_.answer(Answer::Yes);
  ASSERT_TRUE(press("Cmd_SuppPart"));
  expectBox(kSupprimerLigne, Icon::Question, Buttons::YesNo);
  expectListModeAgain();
  EXPECT_PRED_FORMAT2(same, rows(), (Rows{kThree[0], kThree[2]}));
}

TEST_F(ScaleEditMode, NothingReachesTheStoreBeforeTheBodyIsSaved) {
  ASSERT_TRUE(open(1));
  desktop_.answer(Answer::Yes);
  ASSERT_TRUE(press("Cmd_SuppPart"));
  expectNothingWritten();
  control_->Vider_Donnees();
  lookUp("001");
  EXPECT_PRED_FORMAT2(same, rows(), kThree);
}

TEST_F(ScaleEditMode, EndsWhenTheHostClearsOrShows) {
  for (const int how : {0, 1, 2, 3, 4}) {
    show();
    remember();
    ASSERT_TRUE(open(2));
    user_->fill(box("Txt_BaremCoursOrgChg"), "99");
    if (how == 0) control_->Vider_Donnees();
    if (how == 1) control_->Afficher_Donnees();
    if (how == 2) control_->Afficher_Ong4();
    if (how == 3) control_->Affiche_Bareme();
    if (how == 4) control_->AfficherZonesBareme();
    if (how == 0) {
      EXPECT_EQ(state(), kEmpty);
      EXPECT_TRUE(rows().empty());
      lookUp("001");
    }
    expectListModeAgain();
    EXPECT_PRED_FORMAT2(same, rows(), kThree);
  }
}

TEST_F(ScaleEditMode, ARowThatTheHostHasTakenAwayIsNotReplaced) {
  beginScale();
  add({"2000", "3000", "3000", "4000", "5"});
  ASSERT_TRUE(open(3, "Lst_BaremCoursOrgChg"));
  control_->Affiche_Bareme();
  EXPECT_FALSE(press("Cmd_OKPart"));
  EXPECT_PRED_FORMAT2(same, rows(), kThree);
}

TEST_F(ScaleEditMode, BelowLevel2ADoubleClickOpensNothing) {
  level_->value = 1;
  for (const char* name : kScaleLists) EXPECT_FALSE(open(1, name)) << name;
  EXPECT_PRED_FORMAT2(same, selected(), std::vector<int>(6, 1));
  EXPECT_PRED_FORMAT2(same, zones(), Row(5));
  level_->value = 2;
  EXPECT_TRUE(open(1));
}

TEST_F(ScaleEditMode, AConsultationHasNoneOfItsButtons) {
  level_->value = 1;
  control_->Init();
  lookUp("001");
  ASSERT_TRUE(user_->click(tabs(), 3));
  for (const char* name : {"Cmd_AjoutPart", "Cmd_OKPart", "Cmd_SuppPart", "Cmd_NouveauBareme"}) {
    EXPECT_FALSE(button(name).visible()) << name;
    EXPECT_FALSE(press(name)) << name;
  }
}

// Rows --------------------------------------------------------------------------------------------

class ScaleRows : public Scale {};

TEST_F(ScaleRows, ADoubleClickEndsQuietlyWhenTheRightsCannotBeRead) {
  level_->fails = true;
  for (const char* name : kScaleLists) {
    EXPECT_NO_THROW(user_->dblClick(list(name), 0)) << name;
    EXPECT_FALSE(rowOpen()) << name;
  }
  expectNoBox();
}

TEST_F(ScaleRows, ADoubleClickInAnyListOpensItsRowReadyToBeTypedOver) {
  for (const char* name : kScaleLists) {
    ASSERT_TRUE(open(1, name)) << name;
    EXPECT_PRED_FORMAT2(same, zones(), (Row{"500", "900", "800", "1400", "2,75"}));
    EXPECT_PRED_FORMAT1(hasFocus, box("Txt_DebRevSeulOrgChg"));
    ASSERT_TRUE(press("Cmd_AnnulerPart"));
  }
}

TEST_F(ScaleRows, AChangeKeepsThePreviousParticipation) {
  ASSERT_TRUE(open(1));
  fillZones({"500", "850,5", "800", "1300", "3"});
  ASSERT_TRUE(press("Cmd_OKPart"));
  EXPECT_PRED_FORMAT2(same, rows()[1],
                      (Row{"500,00", "850,50", "800,00", "1300,00", "2,50", "3,00"}));
}

TEST_F(ScaleRows, AnAdditionHasNoPreviousParticipation) {
  show("002");
  add({"0", "100", "0", "200", "1"});
  EXPECT_PRED_FORMAT2(same, rows(), (Rows{{"0,00", "100,00", "0,00", "200,00", "", "1,00"}}));
}

TEST_F(ScaleRows, AreKeptInOrderOfTheirStartsReadAsNumbers) {
  show("002");
  add({"1000", "2000", "1000", "2000", "3"});
  add({"99,5", "1000", "99", "1000", "2"});
  add({"-5", "99,5", "0", "99", "1"});
  EXPECT_PRED_FORMAT2(same, rows(),
                      (Rows{{"-5,00", "99,50", "0,00", "99,00", "", "1,00"},
                            {"99,50", "1000,00", "99,00", "1000,00", "", "2,00"},
                            {"1000,00", "2000,00", "1000,00", "2000,00", "", "3,00"}}));
}

TEST_F(ScaleRows, OKReplacesTheRowThatWasOpenedWhateverTheScrollBarDidMeanwhile) {
  ASSERT_TRUE(open(0));
  ASSERT_FALSE(child<toolkit::ScrollBar>("Bdv_Bareme").usable());
  Rows many;
  for (int i = 0; i < 20; ++i) {
    many.push_back({store::twoDecimals(i * 100LL), store::twoDecimals(i * 100LL + 100),
                    store::twoDecimals(i * 100LL), store::twoDecimals(i * 100LL + 100), "",
                    "1,00"});
  }
  putScale("001", many, "", "01/01/2026");
  for (const bool deleting : {false, true}) {
    show();
    ASSERT_TRUE(open(4));
    ASSERT_TRUE(user_->scroll(child<toolkit::ScrollBar>("Bdv_Bareme"), 15));
    EXPECT_PRED_FORMAT2(same, selected(), std::vector<int>(6, 15));
    user_->fill(box("Txt_BaremCoursOrgChg"), "7");
    if (deleting) desktop_.answer(Answer::Yes);
    ASSERT_TRUE(press(deleting ? "Cmd_SuppPart" : "Cmd_OKPart"));
    Rows expected = many;
    if (deleting) expected.erase(expected.begin() + 4);
    if (!deleting) expected[4][5] = "7,00";
    EXPECT_PRED_FORMAT2(same, rows(), expected);
  }
}

struct Typed {
  const char* keys;
  const char* shown;
};

TEST_F(ScaleRows, NumbersAsUsersTypeThem) {
  show("002");
  ASSERT_TRUE(press("Cmd_AjoutPart"));
  const Typed typed[] = {{"12,5", "12,50"},
                         {"12.5", "12,50"},
                         {"1 234,50", "1234,50"},
                         {"-3", "-3,00"},
                         {"0,005", "0,01"},
                         {"a1b", "1,00"},
                         {"1234567890123", "1234567890123,00"}};
  for (std::size_t i = 0; i < std::size(kScaleZones); ++i) {
    TextBox& zone = box(kScaleZones[i]);
    TextBox& other = box(kScaleZones[(i + 1) % std::size(kScaleZones)]);
    for (const Typed& line : typed) {
      user_->fill(zone, line.keys);
      ASSERT_TRUE(user_->go(other));
      EXPECT_EQ(zone.text(), line.shown) << zone.name() << " " << line.keys;
    }
    for (const char* none : {",", "1,2,3", "123456789012345"}) {
      ASSERT_TRUE(user_->fill(zone, none));
      EXPECT_FALSE(user_->go(other)) << none;
      EXPECT_FALSE(press("Cmd_OKPart"));
      EXPECT_EQ(zone.text(), none);
      EXPECT_PRED_FORMAT1(hasFocus, zone) << zone.name();
    }
    ASSERT_TRUE(user_->fill(zone, ""));
  }
  expectNoBox();
}

TEST_F(ScaleRows, CancelWorksWhileANumberCannotBeRead) {
  ASSERT_TRUE(open(1));
  ASSERT_TRUE(user_->fill(box("Txt_FinRevSeulOrgChg"), "1,2,3"));
  ASSERT_TRUE(press("Cmd_AnnulerPart"));
  expectNoBox();
  EXPECT_FALSE(rowOpen());
  EXPECT_PRED_FORMAT2(same, rows(), kThree);
}

TEST_F(ScaleRows, ABracketThatCannotBeReadStaysWhenAParticipationIsEntered) {
  const std::string starts = marked("abc|50000|90000");
  store_.set("ORGPRISECHARGE", "001", 32, starts);
  show();
  beginScale("01022026");
  ASSERT_TRUE(open(0, "Lst_BaremCoursOrgChg"));
  EXPECT_EQ(box("Txt_DebRevSeulOrgChg").text(), "abc");
  user_->fill(box("Txt_BaremCoursOrgChg"), "5");
  ASSERT_TRUE(press("Cmd_OKPart"));
  expectNoBox();
  EXPECT_FALSE(rowOpen());
  EXPECT_PRED_FORMAT2(same, rows()[0], (Row{"abc", "500,00", "0,00", "800,00", "1,60", "5,00"}));
  save();
  EXPECT_EQ(attribute("001", 32), starts);
}

// The order against a plain reference: an insertion sort that never passes an equal start.
TEST_F(ScaleRows, TriBaremeAgainstAReferenceOnRandomRows) {
  testing_support::Random random(20260129);
  for (int round = 0; round < 300; ++round) {
    Rows shuffled;
    const int count = static_cast<int>(random() % 25);
    for (int i = 0; i < count; ++i) {
      Row row;
      for (std::size_t column = 0; column < kScaleColumns; ++column) {
        row.push_back(store::twoDecimals(static_cast<int>(random() % 8) * 2500LL - 5000));
      }
      row[5] = store::twoDecimals(i);
      shuffled.push_back(row);
    }
    Rows expected;
    for (const Row& row : shuffled) {
      auto place = expected.end();
      while (place != expected.begin() &&
             *store::hundredths((*(place - 1))[0]) > *store::hundredths(row[0])) {
        --place;
      }
      expected.insert(place, row);
    }
    putScale("001", shuffled, "", "01/01/2026");
    show();
    ASSERT_PRED_FORMAT2(same, rows(), shuffled);
    control_->TriBareme();
    ASSERT_PRED_FORMAT2(same, rows(), expected) << round;
  }
}

TEST_F(ScaleRows, AnOpenRowIsFollowedWhenTheHostSorts) {
  const Rows sorted{{"0,00", "500,00", "0,00", "800,00", "", "1,00"},
                    {"500,00", "900,00", "800,00", "1400,00", "", "2,00"},
                    {"900,00", "2000,00", "1400,00", "3000,00", "", "3,00"}};
  for (const bool deleting : {false, true}) {
    putScale("001", {sorted[2], sorted[0], sorted[1]}, "", "01/01/2026");
    show();
    ASSERT_TRUE(open(0));
    control_->TriBareme();
    EXPECT_PRED_FORMAT2(same, rows(), sorted);
    EXPECT_TRUE(rowOpen());
    EXPECT_PRED_FORMAT2(same, zones(), (Row{"900", "2000", "1400", "3000", "3"}));
    if (deleting) desktop_.answer(Answer::Yes);
    if (!deleting) user_->fill(box("Txt_BaremCoursOrgChg"), "9");
    ASSERT_TRUE(press(deleting ? "Cmd_SuppPart" : "Cmd_OKPart"));
    Rows expected = sorted;
    if (deleting) expected.pop_back();
    if (!deleting) expected[2][5] = "9,00";
    EXPECT_PRED_FORMAT2(same, rows(), expected);
  }
}

// Adding is open where a scale may be entered -----------------------------------------------------

class ScaleAdding : public Scale {};

TEST_F(ScaleAdding, IsClosedForABodyThatHasAScale) {
  EXPECT_FALSE(enabled("Cmd_AjoutPart"));
  show("003");
  EXPECT_FALSE(enabled("Cmd_AjoutPart"));
}

TEST_F(ScaleAdding, IsOpenUntilAFirstScaleHasBeenSaved) {
  show("002");
  EXPECT_TRUE(enabled("Cmd_AjoutPart"));
  add({"0", "100", "0", "200", "1"});
  add({"100", "200", "200", "300", "2"});
  EXPECT_TRUE(enabled("Cmd_AjoutPart"));
  ASSERT_TRUE(press("Cmd_OK"));
  expectBox("La date du barème en cours est obligatoire.", Icon::Exclamation);
  EXPECT_PRED_FORMAT1(hasFocus, current());
  ASSERT_TRUE(user_->type("01022026"));
  save();
  EXPECT_EQ(attribute("002", attribut::DatBaremCours), stored("01/02/2026"));
  show("002");
  EXPECT_EQ(rows().size(), 2U);
  EXPECT_FALSE(enabled("Cmd_AjoutPart"));
  EXPECT_FALSE(current().enabled());
}

TEST_F(ScaleAdding, IsOpenInACreation) {
  control_->Vider_Donnees();
  ASSERT_TRUE(press("Cmd_Ajouter"));
  EXPECT_TRUE(enabled("Cmd_NouveauBareme"));
  EXPECT_FALSE(current().enabled());
  ASSERT_TRUE(user_->click(tabs(), 3));
  for (int i = 0; i < 3; ++i) {
    add({std::to_string(i), std::to_string(i + 1), "0", "1", "1"});
    EXPECT_TRUE(enabled("Cmd_AjoutPart"));
  }
  EXPECT_EQ(rows().size(), 3U);
}

TEST_F(ScaleAdding, IsOpenUnderANewScaleAndClosedWhenItIsCancelled) {
  beginScale();
  EXPECT_TRUE(enabled("Cmd_AjoutPart"));
  add({"2000", "3000", "3000", "4000", "6"});
  EXPECT_TRUE(enabled("Cmd_AjoutPart"));
  EXPECT_PRED_FORMAT1(hasFocus, button("Cmd_AjoutPart"));
  ASSERT_TRUE(press("Cmd_NouveauBareme"));
  EXPECT_FALSE(enabled("Cmd_AjoutPart"));
}

TEST_F(ScaleAdding, OpensWhenTheLastRowIsDeleted) {
  show("003");
  ASSERT_TRUE(open(0));
  desktop_.answer(Answer::Yes);
  ASSERT_TRUE(press("Cmd_SuppPart"));
  EXPECT_TRUE(rows().empty());
  EXPECT_TRUE(enabled("Cmd_AjoutPart"));
  EXPECT_PRED_FORMAT1(hasFocus, button("Cmd_AjoutPart"));
}

// New scale ---------------------------------------------------------------------------------------

constexpr const char* kClosedByANewScale[] = {"Lst_DebRevSeulOrgChg", "Lst_FinRevSeulOrgChg",
                                              "Lst_DebRevMenOrgChg", "Lst_FinRevMenOrgChg",
                                              "Lst_BaremPrecOrgChg"};

class NewScale : public Scale {
 protected:
  bool newScale(Caller at = Caller::here()) {
    const auto trace = called("newScale", at);
    const std::string shown = caption("Cmd_NouveauBareme");
    EXPECT_TRUE(shown == "Nouveau barè&me" || shown == "Annuler barè&me") << shown;
    return shown == "Annuler barè&me";
  }
  void expectClosed(bool closed, Caller at = Caller::here()) {
    const auto trace = called("expectClosed", at);
    for (const char* name : kClosedByANewScale) EXPECT_EQ(enabled(name), !closed) << name;
    EXPECT_TRUE(enabled("Lst_BaremCoursOrgChg"));
  }
};

TEST_F(NewScale, IsAskedForWithoutABeep) {
  desktop_.answer(Answer::No);
  ASSERT_TRUE(press("Cmd_NouveauBareme"));
  expectBox(kNouveauBaremeQuestion, Icon::Question, Buttons::YesNo);
  EXPECT_EQ(desktop_.beeps(), 0);
}

TEST_F(NewScale, AnsweredNoChangesNothing) {
  const auto before = enabledBelow(control_->surface());
  desktop_.answer(Answer::No);
  ASSERT_TRUE(press("Cmd_NouveauBareme"));
  EXPECT_PRED_FORMAT2(same, enabledBelow(control_->surface()), before);
  EXPECT_PRED_FORMAT2(same, rows(), kThree);
  EXPECT_EQ(previous().text(), "01/01/2025");
  EXPECT_EQ(current().text(), "01/01/2026");
  EXPECT_FALSE(newScale());
}

TEST_F(NewScale, TheCurrentScaleBecomesThePreviousOneAndStaysAsStartingValues) {
  beginScale();
  EXPECT_EQ(previous().text(), "01/01/2026");
  EXPECT_EQ(current().text(), "");
  EXPECT_TRUE(current().enabled());
  EXPECT_PRED_FORMAT1(hasFocus, current());
  Rows expected = kThree;
  for (Row& row : expected) row[4] = row[5];
  EXPECT_PRED_FORMAT2(same, rows(), expected);
  expectClosed(true);
  EXPECT_TRUE(newScale());
  EXPECT_FALSE(previous().enabled());
}

TEST_F(NewScale, OfARowOnlyTheCurrentParticipationIsEntered) {
  beginScale("01022026");
  for (const char* name : kClosedByANewScale) EXPECT_FALSE(open(1, name)) << name;
  ASSERT_TRUE(open(1, "Lst_BaremCoursOrgChg"));
  EXPECT_PRED_FORMAT2(same, zones(), (Row{"500", "900", "800", "1400", "2,75"}));
  EXPECT_PRED_FORMAT1(hasFocus, box("Txt_BaremCoursOrgChg"));
  for (const int zone : {0, 1, 2, 3}) EXPECT_FALSE(box(kScaleZones[zone]).enabled()) << zone;
  ASSERT_TRUE(user_->fill(box("Txt_BaremCoursOrgChg"), "3"));
  ASSERT_TRUE(press("Cmd_OKPart"));
  EXPECT_PRED_FORMAT2(same, rows()[1],
                      (Row{"500,00", "900,00", "800,00", "1400,00", "2,75", "3,00"}));
  expectClosed(true);
}

TEST_F(NewScale, IsSaved) {
  const std::string mark(1, store::kValueMark);
  beginScale("01022026");
  ASSERT_TRUE(open(0, "Lst_BaremCoursOrgChg"));
  ASSERT_TRUE(user_->fill(box("Txt_BaremCoursOrgChg"), "1,7"));
  ASSERT_TRUE(press("Cmd_OKPart"));
  const store::DynamicArray before = store_.record("ORGPRISECHARGE", "001");
  save();
  for (int number = attribut::DebRevSeulOrgChg; number <= attribut::FinRevMenOrgChg; ++number) {
    EXPECT_EQ(attribute("001", number), before.get(number)) << bodyAttribute(number);
  }
  EXPECT_EQ(attribute("001", attribut::BaremPrecOrgChg), "160" + mark + "275" + mark + "425");
  EXPECT_EQ(attribute("001", attribut::BaremCoursOrgChg), "170" + mark + "275" + mark + "425");
  EXPECT_EQ(attribute("001", attribut::DatBaremPrec), stored("01/01/2026"));
  EXPECT_EQ(attribute("001", attribut::DatBaremCours), stored("01/02/2026"));
  EXPECT_FALSE(newScale());
}

TEST_F(NewScale, ARowAddedUnderItCanBeCorrectedWhole) {
  beginScale("01022026");
  add({"2000", "3000", "3000", "4000", "6"});
  add({"-5", "0", "-5", "0", "1"});
  ASSERT_TRUE(open(4, "Lst_BaremCoursOrgChg"));
  EXPECT_PRED_FORMAT2(same, zones(), (Row{"2000", "3000", "3000", "4000", "6"}));
  EXPECT_PRED_FORMAT1(hasFocus, box("Txt_DebRevSeulOrgChg"));
  fillZones({"2000", "2500", "3000", "3500", "5"});
  ASSERT_TRUE(press("Cmd_OKPart"));
  EXPECT_PRED_FORMAT2(same, rows()[4],
                      (Row{"2000,00", "2500,00", "3000,00", "3500,00", "", "5,00"}));
  ASSERT_TRUE(open(0, "Lst_BaremCoursOrgChg"));
  for (const char* zone : kScaleZones) EXPECT_TRUE(box(zone).enabled()) << zone;
  ASSERT_TRUE(press("Cmd_AnnulerPart"));
  ASSERT_TRUE(open(1, "Lst_BaremCoursOrgChg"));
  for (const int zone : {0, 1, 2, 3}) EXPECT_FALSE(box(kScaleZones[zone]).enabled()) << zone;
}

// Rows and a date that have never been saved are no scale to keep.
TEST_F(NewScale, WithoutAScaleBeforeThePreviousOneStaysEmpty) {
  show("002");
  add({"0", "100", "0", "200", "1"});
  ASSERT_TRUE(press("Cmd_OK"));
  expectBox("La date du barème en cours est obligatoire.", Icon::Exclamation);
  ASSERT_TRUE(user_->type("01012026"));
  beginScale("01022026");
  EXPECT_EQ(previous().text(), "");
  EXPECT_PRED_FORMAT2(same, rows(), (Rows{{"0,00", "100,00", "0,00", "200,00", "", "1,00"}}));
  save();
  EXPECT_EQ(attribute("002", attribut::BaremPrecOrgChg) + attribute("002", attribut::DatBaremPrec),
            "");
  EXPECT_EQ(attribute("002", attribut::DatBaremCours), stored("01/02/2026"));
}

TEST_F(NewScale, CancelledRestoresWhetherRowsMayBeAdded) {
  show("003");
  beginScale();
  ASSERT_TRUE(open(0, "Lst_BaremCoursOrgChg"));
  desktop_.answer(Answer::Yes);
  ASSERT_TRUE(press("Cmd_SuppPart"));
  EXPECT_TRUE(rows().empty());
  ASSERT_TRUE(press("Cmd_NouveauBareme"));
  EXPECT_EQ(rows().size(), 1U);
  EXPECT_FALSE(enabled("Cmd_AjoutPart"));
  show("002");
  beginScale();
  ASSERT_TRUE(press("Cmd_NouveauBareme"));
  EXPECT_TRUE(enabled("Cmd_AjoutPart"));
}

TEST_F(NewScale, CancelledPutsEverythingBackAndTheRecordsText) {
  const std::string mark(1, store::kValueMark);
  store_.set("ORGPRISECHARGE", "001", attribut::BaremPrecOrgChg, "abc" + mark + mark + "0400");
  store_.set("ORGPRISECHARGE", "001", attribut::DatBaremPrec, "hier");
  show();
  const Rows shown = rows();
  const std::string text = store_.record("ORGPRISECHARGE", "001").text();
  beginScale("01022026");
  add({"2000", "3000", "3000", "4000", "6"});
  ASSERT_TRUE(open(0, "Lst_BaremCoursOrgChg"));
  desktop_.answer(Answer::Yes);
  ASSERT_TRUE(press("Cmd_SuppPart"));
  desktop_.takeBoxes();
  ASSERT_TRUE(press("Cmd_NouveauBareme"));
  expectNoBox();
  EXPECT_PRED_FORMAT2(same, rows(), shown);
  EXPECT_EQ(previous().text(), "hier");
  EXPECT_EQ(current().text(), "01/01/2026");
  EXPECT_FALSE(current().enabled());
  EXPECT_FALSE(newScale());
  save();
  EXPECT_PRED_FORMAT2(sameBody, store_.record("ORGPRISECHARGE", "001").text(), text);
}

TEST_F(NewScale, CancelledKeepsWhatWasChangedBeforeIt) {
  ASSERT_TRUE(open(0));
  user_->fill(box("Txt_BaremCoursOrgChg"), "9");
  ASSERT_TRUE(press("Cmd_OKPart"));
  const Rows changed = rows();
  beginScale();
  ASSERT_TRUE(press("Cmd_NouveauBareme"));
  EXPECT_PRED_FORMAT2(same, rows(), changed);
}

TEST_F(NewScale, CancelledLeavesTheListsClosedUntilTheNextDisplayOrClearing) {
  for (const int how : {0, 1, 2}) {
    show();
    beginScale();
    ASSERT_TRUE(press("Cmd_NouveauBareme"));
    expectClosed(true);
    if (how == 0) lookUp("001");
    if (how == 1) control_->Afficher_Ong4();
    if (how == 2) control_->Vider_Donnees();
    expectClosed(false);
  }
}

TEST_F(NewScale, CancelledLetsARowBeChangedWholeAgain) {
  beginScale();
  ASSERT_TRUE(press("Cmd_NouveauBareme"));
  ASSERT_TRUE(open(0, "Lst_BaremCoursOrgChg"));
  for (const char* zone : kScaleZones) EXPECT_TRUE(box(zone).enabled()) << zone;
}

TEST_F(NewScale, MayBeStartedAgainOnceCancelled) {
  beginScale();
  ASSERT_TRUE(press("Cmd_NouveauBareme"));
  beginScale("01032026");
  EXPECT_TRUE(newScale());
  EXPECT_EQ(previous().text(), "01/01/2026");
  save();
  EXPECT_EQ(attribute("001", attribut::DatBaremCours), stored("01/03/2026"));
}

TEST_F(NewScale, OfABodyWithoutAScaleHasNothingToMove) {
  show("002");
  beginScale("01022026");
  EXPECT_EQ(previous().text(), "");
  add({"0", "100", "0", "200", "1"});
  save();
  EXPECT_EQ(attribute("002", attribut::BaremPrecOrgChg), "");
  EXPECT_EQ(attribute("002", attribut::BaremCoursOrgChg), "100");
  EXPECT_EQ(attribute("002", attribut::DatBaremCours), stored("01/02/2026"));
}

TEST_F(NewScale, EndsWithTheBodyInHand) {
  struct {
    const char* how;
    std::function<void()> deed;
  } const ends[] = {{"saved", [this] { save(); }},
                    {"cancelled", [this] { ASSERT_TRUE(press("Cmd_Annuler")); }},
                    {"another body", [this] { lookUp("003"); }},
                    {"no body", [this] { lookUp("777"); }},
                    {"the host clears", [this] { control_->Vider_Donnees(); }},
                    {"the host shows", [this] { control_->Afficher_Donnees(); }},
                    {"the host saves",
                     [this] {
                       desktop_.answer(Answer::No);
                       control_->Ecrire_Donnees();
                     }},
                    {"deleted", [this] {
                       desktop_.answer(Answer::Yes);
                       ASSERT_TRUE(press("Cmd_Supprimer"));
                     }}};
  for (const auto& end : ends) {
    putScale("001", kThree, "01/01/2025", "01/01/2026");
    completeBody(store_, "001");
    store_.set("ORGPRISECHARGE", "001", attribut::SigleOrgChg, "DOMUS");
    store_.set("ORGPRISECHARGE", "001", attribut::RaisonOrgChg, "Domus Mutuelle");
    show();
    beginScale("01022026");
    ASSERT_TRUE(newScale()) << end.how;
    end.deed();
    desktop_.takeBoxes();
    EXPECT_FALSE(newScale()) << end.how;
    EXPECT_FALSE(current().enabled()) << end.how;
    expectClosed(false);
    // The flag has gone with it: the button asks again.
    lookUp("003");
    ASSERT_TRUE(user_->click(tabs(), 3));
    desktop_.answer(Answer::No);
    ASSERT_TRUE(press("Cmd_NouveauBareme"));
    expectBox(kNouveauBaremeQuestion, Icon::Question, Buttons::YesNo);
  }
}

TEST_F(NewScale, SurvivesARefusedSaveAndAFailingOne) {
  beginScale();
  ASSERT_TRUE(press("Cmd_OK"));
  expectBox("La date du barème en cours est obligatoire.", Icon::Exclamation);
  EXPECT_TRUE(newScale());
  expectClosed(true);
  ASSERT_TRUE(user_->type("01022026"));
  store_.fail(CallKind::DBWrite);
  ASSERT_TRUE(press("Cmd_OK"));
  EXPECT_TRUE(newScale());
  store_.stopFailing();
  store_.forgetCalls();
  save();
  EXPECT_FALSE(newScale());
}

TEST_F(NewScale, SurvivesACancelledCreationThatIsKept) {
  control_->Vider_Donnees();
  ASSERT_TRUE(press("Cmd_Ajouter"));
  ASSERT_TRUE(user_->click(tabs(), 3));
  beginScale("01022026");
  desktop_.answer(Answer::No);
  ASSERT_TRUE(press("Cmd_Annuler"));
  EXPECT_TRUE(newScale());
  EXPECT_EQ(current().text(), "01/02/2026");
  desktop_.answer(Answer::Yes);
  ASSERT_TRUE(press("Cmd_Annuler"));
  EXPECT_FALSE(newScale());
}

// The date ----------------------------------------------------------------------------------------

TEST_F(NewScale, ItsDateIsTypedWithAnySeparatorAndCompletedOnLeaving) {
  for (const char* typed : {"1.2.2026", "1-2-26", "010226", "01022026", "1x2x26", "0102"}) {
    show();
    beginScale(typed);
    ASSERT_TRUE(user_->go(list("Lst_BaremCoursOrgChg")));
    EXPECT_EQ(current().text(), "01/02/2026") << typed;
  }
}

TEST_F(NewScale, ADateThatIsNoneStaysAsTyped) {
  beginScale("31022026");
  ASSERT_TRUE(user_->go(list("Lst_BaremCoursOrgChg")));
  expectNoBox();
  EXPECT_EQ(current().text(), "31022026");
}

// What a host calls -------------------------------------------------------------------------------

class ScaleMembers : public Scale {
 protected:
  std::vector<std::function<void()>> changing() {
    control::Ctr_OrgPriseCharge& control = *control_;
    return {[&] { control.Affiche_Bareme(); }, [&] { control.AfficherZonesBareme(); },
            [&] { control.TriBareme(); }, [&] { control.Ecrire_Ong4(); }};
  }
};

TEST_F(ScaleMembers, AreDeniedBelowLevel2) {
  level_->value = 1;
  for (const auto& member : changing()) EXPECT_THROW(member(), control::AccessDenied);
  EXPECT_PRED_FORMAT2(same, rows(), kThree);
  EXPECT_NO_THROW(control_->Afficher_Ong4());
  EXPECT_NO_THROW(control_->Verif_Ong4());
}

TEST_F(ScaleMembers, AreNotReadyWithoutARecordInHand) {
  control_->Vider_Donnees();
  for (const auto& member : changing()) EXPECT_THROW(member(), control::NotReady);
  EXPECT_NO_THROW(control_->Afficher_Ong4());
  EXPECT_TRUE(control_->Verif_Ong4());
}

TEST_F(ScaleMembers, AreNotReadyBeforeInit) {
  control::Ctr_OrgPriseCharge fresh(desktop_);
  EXPECT_THROW(fresh.Affiche_Bareme(), control::NotReady);
  EXPECT_THROW(fresh.AfficherZonesBareme(), control::NotReady);
  EXPECT_THROW(fresh.TriBareme(), control::NotReady);
  EXPECT_THROW(fresh.Afficher_Ong4(), control::NotReady);
  EXPECT_THROW(fresh.Ecrire_Ong4(), control::NotReady);
  EXPECT_THROW(fresh.Verif_Ong4(), control::NotReady);
}

TEST_F(ScaleMembers, AfficheBaremeRefillsTheListsFromTheRecordAlone) {
  ASSERT_TRUE(user_->click(child<CheckBox>("Cac_Abonnement")));
  ASSERT_TRUE(open(0));
  desktop_.answer(Answer::Yes);
  ASSERT_TRUE(press("Cmd_SuppPart"));
  control_->Affiche_Bareme();
  EXPECT_PRED_FORMAT2(same, rows(), kThree);
  EXPECT_TRUE(child<CheckBox>("Cac_Abonnement").value());
}

TEST_F(ScaleMembers, AfficheBaremeShowsWhatEcrireOng4HasWritten) {
  ASSERT_TRUE(open(0));
  desktop_.answer(Answer::Yes);
  ASSERT_TRUE(press("Cmd_SuppPart"));
  control_->Ecrire_Ong4();
  control_->Affiche_Bareme();
  EXPECT_PRED_FORMAT2(same, rows(), (Rows{kThree[1], kThree[2]}));
  expectNothingWritten();
}

TEST_F(ScaleMembers, EcrireOng4DoesNotCheck) {
  store_.set("ORGPRISECHARGE", "001", attribut::DatBaremCours, "");
  show();
  control_->Ecrire_Ong4();
  expectNoBox();
}

TEST_F(ScaleMembers, AfficherZonesBaremeEmptiesTheZonesAndLeavesTheRows) {
  ASSERT_TRUE(open(1));
  user_->fill(box("Txt_BaremCoursOrgChg"), "99");
  control_->AfficherZonesBareme();
  EXPECT_FALSE(rowOpen());
  EXPECT_PRED_FORMAT2(same, zones(), Row(5));
  EXPECT_PRED_FORMAT2(same, rows(), kThree);
  EXPECT_EQ(state(), kExisting);
  control_->AfficherZonesBareme();
  EXPECT_EQ(state(), kExisting);
}

}  // namespace
}  // namespace behaviour
