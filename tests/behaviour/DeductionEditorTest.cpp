#include <algorithm>

#include "store/Conversions.h"
#include "store/Layouts.h"
#include "tests/behaviour/EditMode.h"
#include "tests/support/Seed.h"

namespace behaviour {
namespace {

using toolkit::Buttons;

constexpr const char* kVide =
    "Pour continuer, veuillez saisir les renseignements concernant l'abattement, sinon cliquer sur "
    "Annuler.";
constexpr const char* kCent = "Le pourcentage doit être inférieur à 100.";
constexpr const char* kObligatoires =
    "La tranche d'heures de fin ainsi que le pourcentage sont obligatoires.";
constexpr const char* kFin =
    "La tranche d'heures de fin doit être supérieure à la tranche d'heures de début.";
constexpr const char* kChevauchement =
    "Il y a chevauchement dans les tranches d'heures, veuillez les ressaisir.";

const Rows kStored{{"0,00", "10,00", "50,00"}, {"10,00", "20,00", "25,50"}};

class Deductions : public Coverage {
 protected:
  Deductions() {
    putDeductions(kStored);
    show();
  }
  TextBox& start() { return box("Txt_DebAbatHOrgChg"); }
  TextBox& end() { return box("Txt_FinAbatHOrgChg"); }
  TextBox& percentage() { return box("Txt_PourcentAbatOrgChg"); }
  void begin(const Row& row, Caller at = Caller::here()) {
    const auto trace = called("begin", at);
    ASSERT_TRUE(press("Cmd_AjoutAbat"));
    fillDeduction(row);
  }
  void expectRefusal(std::string_view message, TextBox& focus, Icon icon = Icon::Exclamation,
                     Caller at = Caller::here()) {
    const auto trace = called("expectRefusal", at);
    ASSERT_TRUE(user_->go(button("Cmd_OKAbat")));
    const Row before{start().text(), end().text(), percentage().text()};
    const Rows shown = deductions();
    ASSERT_TRUE(press("Cmd_OKAbat"));
    expectBox(message, icon);
    EXPECT_PRED_FORMAT1(hasFocus, focus) << message;
    EXPECT_TRUE(deductionOpen());
    EXPECT_PRED_FORMAT2(same, (Row{start().text(), end().text(), percentage().text()}), before);
    EXPECT_PRED_FORMAT2(same, deductions(), shown);
  }
  void expectAccepted(Caller at = Caller::here()) {
    const auto trace = called("expectAccepted", at);
    ASSERT_TRUE(press("Cmd_OKAbat"));
    expectNoBox();
    EXPECT_FALSE(deductionOpen());
  }
  void expectOverlap(Caller at = Caller::here()) {
    const auto trace = called("expectOverlap", at);
    const Rows shown = deductions();
    ASSERT_TRUE(press("Cmd_OKAbat"));
    expectBox(kChevauchement, Icon::Exclamation);
    EXPECT_TRUE(deductionOpen());
    EXPECT_PRED_FORMAT1(hasFocus, start());
    EXPECT_PRED_FORMAT2(same, (Row{start().text(), end().text(), percentage().text()}),
                        (Row{"", "", ""}));
    EXPECT_PRED_FORMAT2(same, deductions(), shown);
  }
  static Rows many(int count) {
    Rows rows;
    for (int i = 0; i < count; ++i) {
      rows.push_back({store::twoDecimals(i * 100L), store::twoDecimals(i * 100L + 100),
                      store::twoDecimals(i * 10L)});
    }
    return rows;
  }
};

TEST_F(Deductions, AreShownWithNoneSelected) {
  EXPECT_PRED_FORMAT2(same, deductions(), kStored);
  for (const char* name : {"Lst_DebAbatHOrgChg", "Lst_FinAbatHOrgChg", "Lst_PourcentAbatOrgChg"}) {
    EXPECT_EQ(list(name).listIndex(), -1) << name;
  }
}

// Edit mode ---------------------------------------------------------------------------------------

class DeductionsEditMode : public EditMode<Deductions> {
 protected:
  DeductionsEditMode()
      : EditMode(2, {{"Lst_DebAbatHOrgChg", true, false, false},
                     {"Lst_FinAbatHOrgChg", true, false, false},
                     {"Lst_PourcentAbatOrgChg", true, false, false},
                     {"Cmd_AjoutAbat", true, false, false},
                     {"Cdr_AttribOrgChg", true, false, false},
                     {"Cdr_TauxOrgChg", true, false, false},
                     {"Txt_CodeCptPrestationService", true, false, false},
                     {"Cbo_CptPrestationService", true, false, false},
                     {"Cdr_AbatOrgChg", true, true, true},
                     {"Bdv_AbatOrgChg", true, true, true},
                     {"Txt_DebAbatHOrgChg", false, true, true},
                     {"Txt_FinAbatHOrgChg", false, true, true},
                     {"Txt_PourcentAbatOrgChg", false, true, true},
                     {"Cmd_OKAbat", false, true, true},
                     {"Cmd_AnnulerAbat", false, true, true},
                     {"Cmd_SuppAbat", false, true, false}}) {}
  void expectListModeAgain(Caller at = Caller::here()) {
    expectListModeAgain(button("Cmd_AjoutAbat"), at);
  }
  void expectListModeAgain(const toolkit::Control& focus, Caller at = Caller::here()) {
    const auto trace = called("expectListModeAgain", at);
    expectLocks(&Lock::listMode);
    expectAsRemembered();
    EXPECT_PRED_FORMAT2(same, (Row{start().text(), end().text(), percentage().text()}),
                        (Row{"", "", ""}));
    EXPECT_PRED_FORMAT1(hasFocus, focus);
    EXPECT_EQ(state(), kExisting);
  }
};

TEST_F(DeductionsEditMode, LocksOneByOneWhileARowIsChanged) {
  expectLocks(&Lock::listMode);
  ASSERT_TRUE(openDeduction(1));
  expectLocks(&Lock::changing);
}

TEST_F(DeductionsEditMode, LocksOneByOneWhileARowIsAdded) {
  ASSERT_TRUE(press("Cmd_AjoutAbat"));
  expectLocks(&Lock::adding);
  EXPECT_PRED_FORMAT1(hasFocus, start());
}

TEST_F(DeductionsEditMode, TheUserReachesNothingElse) {
  ASSERT_TRUE(openDeduction(0));
  expectTheRestOutOfReach({"Cmd_AjoutTaux", "Cmd_AjoutAbat"});
  EXPECT_FALSE(user_->dblClick(list("Lst_DateRembOrgChg"), 0));
  EXPECT_FALSE(user_->click(option("Opt_MontantOrgChg")));
  EXPECT_TRUE(deductionOpen());
}

TEST_F(DeductionsEditMode, EndsByOK) {
  addDeduction({"20", "30", "10"});
  expectListModeAgain();
  ASSERT_TRUE(openDeduction(0));
  ASSERT_TRUE(press("Cmd_OKAbat"));
  expectListModeAgain(list("Lst_DebAbatHOrgChg"));
}

TEST_F(DeductionsEditMode, EndsByCancellingAChange) {
  ASSERT_TRUE(openDeduction(0));
  user_->fill(percentage(), "1");
  ASSERT_TRUE(press("Cmd_AnnulerAbat"));
  expectNoBox();
  expectListModeAgain();
  EXPECT_PRED_FORMAT2(same, deductions(), kStored);
}

TEST_F(DeductionsEditMode, EndsByCancellingAnAdditionWithYesAlone) {
  begin({"20", "30"});
  desktop_.answer(Answer::No);
  ASSERT_TRUE(press("Cmd_AnnulerAbat"));
  EXPECT_EQ(desktop_.beeps(), 1);
  expectBox(kQuitterCreation, Icon::Question, Buttons::YesNo);
  EXPECT_TRUE(deductionOpen());
  EXPECT_EQ(start().text(), "20,00");
  desktop_.answer(Answer::Yes);
  ASSERT_TRUE(press("Cmd_AnnulerAbat"));
  expectBox(kQuitterCreation, Icon::Question, Buttons::YesNo);
  expectListModeAgain();
  EXPECT_PRED_FORMAT2(same, deductions(), kStored);
}

TEST_F(DeductionsEditMode, EndsByADeletion) {
  ASSERT_TRUE(openDeduction(0));
  desktop_.answer(Answer::Yes);
  ASSERT_TRUE(press("Cmd_SuppAbat"));
  expectListModeAgain();
}

TEST_F(DeductionsEditMode, GivesACreationItsBarBackAsItWas) {
  control_->Vider_Donnees();
  ASSERT_TRUE(press("Cmd_Ajouter"));
  ASSERT_TRUE(user_->click(tabs(), 2));
  remember();
  ASSERT_TRUE(press("Cmd_AjoutAbat"));
  EXPECT_EQ(state(), "|");
  desktop_.answer(Answer::Yes);
  ASSERT_TRUE(press("Cmd_AnnulerAbat"));
  expectAsRemembered();
}

TEST_F(DeductionsEditMode, EndsWhenTheHostClearsOrShows) {
  for (const bool adding : {true, false}) {
    for (const int how : {0, 1, 2}) {
      show();
      remember();
      ASSERT_TRUE(adding ? press("Cmd_AjoutAbat") : openDeduction(0));
      user_->fill(percentage(), "99");
      if (how == 0) control_->Vider_Donnees();
      if (how == 1) control_->Afficher_Donnees();
      if (how == 2) control_->Afficher_Ong3();
      if (how == 0) {
        EXPECT_EQ(state(), kEmpty);
        EXPECT_TRUE(deductions().empty());
        lookUp("001");
      }
      expectAsRemembered();
      EXPECT_PRED_FORMAT2(same, deductions(), kStored);
      EXPECT_EQ(percentage().text(), "");
    }
  }
}

// The checks, in their order ----------------------------------------------------------------------

TEST_F(Deductions, Check1NothingTyped) {
  ASSERT_TRUE(press("Cmd_AjoutAbat"));
  expectRefusal(kVide, start(), Icon::Information);
}

TEST_F(Deductions, Check2APercentageAboveAHundredBeforeAMissingEnd) {
  begin({"", "", "101"});
  expectRefusal(kCent, percentage());
}

TEST_F(Deductions, Check2LooksAtTheIntegerPartAlone) {
  for (const char* accepted : {"100", "100,5", "100,99"}) {
    show();
    begin({"20", "30", accepted});
    expectAccepted();
  }
  for (const char* refused : {"101", "100,995", "1000"}) {
    show();
    begin({"20", "30", refused});
    expectRefusal(kCent, percentage());
  }
}

TEST_F(Deductions, Check3AMissingEndOrPercentageBeforeTheirOrder) {
  begin({"30", "", "10"});
  expectRefusal(kObligatoires, end());
  fillDeduction({"30", "20", ""});
  expectRefusal(kObligatoires, end());
  fillDeduction({"30", "", ""});
  expectRefusal(kObligatoires, end());
}

TEST_F(Deductions, Check4TheEndBelowTheStartBeforeAnOverlap) {
  begin({"5", "4,99", "10"});
  expectRefusal(kFin, end());
}

TEST_F(Deductions, Check4ComparesInSinglePrecision) {
  begin({"16777217", "16777216", "10"});
  expectAccepted();
}

TEST_F(Deductions, ARangeMayEndWhereItStarts) {
  begin({"30", "30", "10"});
  expectAccepted();
  EXPECT_PRED_FORMAT2(same, deductions()[2], (Row{"30,00", "30,00", "10,00"}));
}

TEST_F(Deductions, Check5AnEndWithinTheNewRange) {
  begin({"5", "15", "10"});
  expectOverlap();
  fillDeduction({"20", "25", "10"});
  expectAccepted();
}

TEST_F(Deductions, RangesMayTouch) {
  putDeductions({});
  show();
  addDeduction({"0", "10", "50"});
  addDeduction({"10", "20", "40"});
  expectNoBox();
  EXPECT_PRED_FORMAT2(same, deductions(),
                      (Rows{{"0,00", "10,00", "50,00"}, {"10,00", "20,00", "40,00"}}));
}

TEST_F(Deductions, OnlyTheEndOfAnExistingRangeIsLookedAt) {
  putDeductions({{"0,00", "20,00", "50,00"}});
  show();
  begin({"5", "15", "10"});
  expectAccepted();
  show();
  begin({"5", "20", "10"});
  expectAccepted();
  show();
  begin({"15", "25", "10"});
  expectOverlap();
}

TEST_F(Deductions, TheRowLeftOutIsTheOneSelectedAmongTheRates) {
  user_->click(list("Lst_DateRembOrgChg"), 0);
  begin({"5", "15", "10"});
  expectAccepted();
  EXPECT_EQ(deductions().size(), 3U);
  show();
  user_->click(list("Lst_DateRembOrgChg"), 1);
  begin({"5", "15", "10"});
  expectOverlap();
}

TEST_F(Deductions, ARowBeingChangedIsNotLeftOut) {
  ASSERT_TRUE(openDeduction(1));
  user_->fill(end(), "30");
  expectOverlap();
  ASSERT_TRUE(press("Cmd_AnnulerAbat"));
  ASSERT_TRUE(openDeduction(1));
  user_->fill(percentage(), "5");
  expectAccepted();
  EXPECT_PRED_FORMAT2(same, deductions()[1], (Row{"10,00", "20,00", "5,00"}));
}

// What is confirmed -------------------------------------------------------------------------------

TEST_F(Deductions, AnAdditionIsPlacedByItsStartAndSaved) {
  putDeductions({{"9,00", "10,00", "50,00"}, {"100,00", "110,00", "25,50"}});
  show();
  addDeduction({"20,5", "30", "12,34"});
  addDeduction({"", "5", "1"});
  expectNoBox();
  EXPECT_PRED_FORMAT2(same, deductions(),
                      (Rows{{"0,00", "5,00", "1,00"},
                            {"9,00", "10,00", "50,00"},
                            {"20,50", "30,00", "12,34"},
                            {"100,00", "110,00", "25,50"}}));
  expectNothingWritten();
  save();
  const std::string mark(1, store::kValueMark);
  EXPECT_EQ(attribute("001", attribut::DebAbatHOrgChg),
            "0" + mark + "900" + mark + "2050" + mark + "10000");
  EXPECT_EQ(attribute("001", attribut::FinAbatHOrgChg),
            "500" + mark + "1000" + mark + "3000" + mark + "11000");
  EXPECT_EQ(attribute("001", attribut::PourcentAbatOrgChg),
            "100" + mark + "5000" + mark + "1234" + mark + "2550");
}

TEST_F(Deductions, AnyRowMayBeChangedFromAnyList) {
  for (const char* name : {"Lst_DebAbatHOrgChg", "Lst_FinAbatHOrgChg", "Lst_PourcentAbatOrgChg"}) {
    show();
    ASSERT_TRUE(openDeduction(1, name));
    EXPECT_PRED_FORMAT2(same, (Row{start().text(), end().text(), percentage().text()}),
                        (Row{"10", "20", "25,5"}));
    user_->fill(percentage(), "30");
    expectAccepted();
    EXPECT_PRED_FORMAT2(same, deductions(), (Rows{kStored[0], {"10,00", "20,00", "30,00"}}));
  }
}

TEST_F(Deductions, AnEmptyEndOrPercentageIsWrittenAsZero) {
  const std::string mark(1, store::kValueMark);
  store_.set("ORGPRISECHARGE", "001", attribut::FinAbatHOrgChg, mark + "2000");
  store_.set("ORGPRISECHARGE", "001", attribut::PourcentAbatOrgChg, "5000" + mark);
  show();
  EXPECT_PRED_FORMAT2(same, deductions(), (Rows{{"0,00", "", "50,00"}, {"10,00", "20,00", ""}}));
  save();
  EXPECT_EQ(attribute("001", attribut::FinAbatHOrgChg), "0" + mark + "2000");
  EXPECT_EQ(attribute("001", attribut::PourcentAbatOrgChg), "5000" + mark + "0");
}

TEST_F(Deductions, ADeletionBeepsAndAsks) {
  ASSERT_TRUE(openDeduction(0));
  desktop_.answer(Answer::No);
  ASSERT_TRUE(press("Cmd_SuppAbat"));
  EXPECT_EQ(desktop_.beeps(), 1);
  expectBox(kSupprimerLigne, Icon::Question, Buttons::YesNo);
  EXPECT_TRUE(deductionOpen());
  EXPECT_PRED_FORMAT2(same, deductions(), kStored);
}

TEST_F(Deductions, ADeletionTakesTheRowOutOfAllAttributes) {
  ASSERT_TRUE(openDeduction(0));
  desktop_.answer(Answer::Yes);
  ASSERT_TRUE(press("Cmd_SuppAbat"));
  desktop_.takeBoxes();
  EXPECT_PRED_FORMAT2(same, deductions(), (Rows{kStored[1]}));
  EXPECT_EQ(list("Lst_DebAbatHOrgChg").listIndex(), -1);
  save();
  EXPECT_EQ(attribute("001", attribut::DebAbatHOrgChg), "1000");
  EXPECT_EQ(attribute("001", attribut::FinAbatHOrgChg), "2000");
  EXPECT_EQ(attribute("001", attribut::PourcentAbatOrgChg), "2550");
}

// Scroll bar and ring -----------------------------------------------------------------------------

TEST_F(Deductions, TheThirteenthRowShowsTheScrollBar) {
  const auto expectShown = [this](bool shown) {
    EXPECT_EQ(bar("Bdv_AbatOrgChg").visible(), shown);
    EXPECT_EQ(list("Lst_PourcentAbatOrgChg").place().width, shown ? 1215 : 975);
    EXPECT_EQ(percentage().place().width, shown ? 1215 : 975);
    EXPECT_EQ(bar("Bdv_AbatOrgChg").max(), list("Lst_DebAbatHOrgChg").listCount() - 1);
  };
  putDeductions(many(12));
  show();
  expectShown(false);
  addDeduction({"50", "60", "1"});
  expectShown(true);
  ASSERT_TRUE(openDeduction(12));
  desktop_.answer(Answer::Yes);
  ASSERT_TRUE(press("Cmd_SuppAbat"));
  expectShown(false);
  putDeductions(many(13));
  show();
  expectShown(true);
  show("002");
  expectShown(false);
}

TEST_F(Deductions, ListsAndScrollBarMoveTogether) {
  putDeductions(many(14));
  show();
  const auto expectRow = [this](int row) {
    for (const char* name :
         {"Lst_DebAbatHOrgChg", "Lst_FinAbatHOrgChg", "Lst_PourcentAbatOrgChg"}) {
      EXPECT_EQ(list(name).listIndex(), row) << name;
    }
    EXPECT_EQ(bar("Bdv_AbatOrgChg").value(), row);
  };
  int row = 0;
  for (const char* name : {"Lst_DebAbatHOrgChg", "Lst_FinAbatHOrgChg", "Lst_PourcentAbatOrgChg"}) {
    ASSERT_TRUE(user_->click(list(name), row += 4));
    expectRow(row);
  }
  for (const int scrolled : {13, 2, 0}) {
    ASSERT_TRUE(user_->scroll(bar("Bdv_AbatOrgChg"), scrolled));
    expectRow(scrolled);
  }
}

TEST_F(Deductions, TheRowBeingChangedIsRememberedWhileTheScrollBarMoves) {
  putDeductions(many(14));
  show();
  ASSERT_TRUE(openDeduction(3));
  ASSERT_TRUE(user_->scroll(bar("Bdv_AbatOrgChg"), 9));
  user_->fill(percentage(), "77");
  expectAccepted();
  Rows expected = many(14);
  expected[3][2] = "77,00";
  EXPECT_PRED_FORMAT2(same, deductions(), expected);
  ASSERT_TRUE(openDeduction(5));
  ASSERT_TRUE(user_->scroll(bar("Bdv_AbatOrgChg"), 1));
  desktop_.answer(Answer::Yes);
  ASSERT_TRUE(press("Cmd_SuppAbat"));
  expected.erase(expected.begin() + 5);
  EXPECT_PRED_FORMAT2(same, deductions(), expected);
  EXPECT_EQ(bar("Bdv_AbatOrgChg").value(), 0);
}

// Typing ------------------------------------------------------------------------------------------

TEST_F(Deductions, ZonesTakeDecimalKeysAndReformatWhenLeft) {
  ASSERT_TRUE(press("Cmd_AjoutAbat"));
  for (TextBox* zone : {&start(), &end(), &percentage()}) {
    TextBox& other = zone == &start() ? end() : start();
    for (const auto& [keys, shown] : std::vector<std::pair<std::string, const char*>>{
             {"12.5", "12,50"}, {"1 234,5a", "1234,50"}, {"", ""}}) {
      ASSERT_TRUE(user_->fill(*zone, keys));
      ASSERT_TRUE(user_->go(other));
      EXPECT_EQ(zone->text(), shown) << zone->name() << " " << keys;
    }
    ASSERT_TRUE(user_->fill(*zone, "1,2,3"));
    EXPECT_FALSE(user_->go(other));
    EXPECT_EQ(zone->text(), "1,2,3");
    EXPECT_TRUE(zone->hasFocus()) << zone->name();
    ASSERT_TRUE(user_->fill(*zone, ""));
  }
  expectNoBox();
}

TEST_F(Deductions, CancelWorksWhileANumberCannotBeRead) {
  ASSERT_TRUE(openDeduction(0));
  ASSERT_TRUE(user_->fill(end(), "-"));
  EXPECT_FALSE(press("Cmd_OKAbat"));
  ASSERT_TRUE(press("Cmd_AnnulerAbat"));
  expectNoBox();
  EXPECT_FALSE(deductionOpen());
}

TEST_F(Deductions, StoredNumbersWithDecimalsAreShownRoundedAndKept) {
  const std::string percentages = marked("1250.5|1250,4");
  putDeductions({{"0,00", "10,00", "1,00"}, {"10,00", "20,00", "1,00"}});
  store_.set("ORGPRISECHARGE", "001", attribut::PourcentAbatOrgChg, percentages);
  show();
  EXPECT_EQ(deductions()[0][2], "12,51");
  EXPECT_EQ(deductions()[1][2], "12,50");
  ASSERT_TRUE(openDeduction(0));
  for (TextBox* zone : {&start(), &end(), &percentage()}) ASSERT_TRUE(user_->go(*zone));
  ASSERT_TRUE(press("Cmd_OKAbat"));
  addDeduction({"-5", "0", "3"});
  save();
  EXPECT_EQ(attribute("001", attribut::PourcentAbatOrgChg), "300" + marked("|") + percentages);
}

// Consultation and host ---------------------------------------------------------------------------

TEST_F(Deductions, BelowLevelTwoADoubleClickOpensNothing) {
  for (const long level : {0L, 1L, 3L}) {
    level_->value = level;
    EXPECT_FALSE(openDeduction(0));
    EXPECT_FALSE(start().enabled());
  }
  expectNoBox();
  level_->fails = true;
  EXPECT_NO_THROW(user_->dblClick(list("Lst_FinAbatHOrgChg"), 1));
  EXPECT_FALSE(start().enabled());
}

class DeductionsHost : public DeductionsEditMode {};

TEST_F(DeductionsHost, MembersAreDeniedBelowLevelTwo) {
  level_->value = 1;
  EXPECT_THROW(control_->MasquerZonesAbat(), control::AccessDenied);
  EXPECT_THROW(control_->AfficherZonesAbat(), control::AccessDenied);
  EXPECT_THROW(control_->TriAbat(), control::AccessDenied);
  EXPECT_THROW(control_->DoubleClickAbat(), control::AccessDenied);
  expectAsRemembered();
}

TEST_F(DeductionsHost, MembersNeedARecordInHand) {
  control_->Vider_Donnees();
  EXPECT_THROW(control_->MasquerZonesAbat(), control::NotReady);
  EXPECT_THROW(control_->AfficherZonesAbat(), control::NotReady);
  EXPECT_THROW(control_->TriAbat(), control::NotReady);
  EXPECT_THROW(control_->DoubleClickAbat(), control::NotReady);
}

TEST_F(DeductionsHost, MasquerZonesAbatOpensTheSelectedRowWithEmptyZones) {
  user_->click(list("Lst_DebAbatHOrgChg"), 1);
  control_->MasquerZonesAbat();
  expectLocks(&Lock::changing);
  fillDeduction({"30", "40", "5"});
  ASSERT_TRUE(press("Cmd_OKAbat"));
  EXPECT_PRED_FORMAT2(same, deductions(), (Rows{kStored[0], {"30,00", "40,00", "5,00"}}));
}

TEST_F(DeductionsHost, MasquerZonesAbatWithoutASelectedRowIsNoAddition) {
  for (const char* leave : {"Cmd_AnnulerAbat", "Cmd_SuppAbat"}) {
    control_->MasquerZonesAbat();
    expectLocks(&Lock::changing);
    fillDeduction({"30", "40", "5"});
    ASSERT_TRUE(press("Cmd_OKAbat"));
    EXPECT_TRUE(deductionOpen());
    ASSERT_TRUE(press(leave));
    expectNoBox();
    expectListModeAgain();
    EXPECT_PRED_FORMAT2(same, deductions(), kStored);
  }
}

TEST_F(DeductionsHost, AfficherZonesAbatClosesAndEmpties) {
  begin({"1", "2", "3"});
  control_->AfficherZonesAbat();
  expectNoBox();
  expectListModeAgain();
}

TEST_F(DeductionsHost, DoubleClickAbatOpensTheSelectedRow) {
  control_->DoubleClickAbat();
  EXPECT_FALSE(deductionOpen());
  user_->click(list("Lst_FinAbatHOrgChg"), 1);
  control_->DoubleClickAbat();
  EXPECT_TRUE(deductionOpen());
  EXPECT_EQ(percentage().text(), "25,5");
}

TEST_F(DeductionsHost, TriAbatOrdersByStart) {
  putDeductions({kStored[1], kStored[0]});
  show();
  EXPECT_PRED_FORMAT2(same, deductions(), (Rows{kStored[1], kStored[0]}));
  control_->TriAbat();
  EXPECT_PRED_FORMAT2(same, deductions(), kStored);
}

TEST_F(DeductionsHost, TriAbatFollowsTheRowThatIsOpen) {
  putDeductions({kStored[1], kStored[0]});
  show();
  ASSERT_TRUE(openDeduction(0));
  control_->TriAbat();
  desktop_.answer(Answer::Yes);
  ASSERT_TRUE(press("Cmd_SuppAbat"));
  EXPECT_PRED_FORMAT2(same, deductions(), (Rows{kStored[0]}));
}

class DeductionsDesk : public Desk {};

TEST_F(DeductionsDesk, TriAbatAgainstAPlainReference) {
  testing_support::Random random(4201);
  std::uniform_int_distribution<int> any(0, 12);
  for (int round = 0; round < 300; ++round) {
    Rows rows(std::uniform_int_distribution<std::size_t>(0, 30)(random));
    int number = 0;
    for (Row& row : rows) {
      row = {store::twoDecimals(any(random) * 975L), store::twoDecimals(++number),
             number % 3 == 0 ? "" : store::twoDecimals(number)};
    }
    Rows expected;
    for (const Row& row : rows) {
      const auto later = std::find_if(expected.begin(), expected.end(), [&](const Row& placed) {
        return store::hundredths(placed[0]) > store::hundredths(row[0]);
      });
      expected.insert(later, row);
    }
    hand({}, rows);
    page_.abattements().TriAbat();
    ASSERT_PRED_FORMAT2(same, deductions(), expected);
    store::DynamicArray written;
    putRows(written, attribut::DebAbatHOrgChg, 3, expected);
    for (int attribute = attribut::DebAbatHOrgChg; attribute <= attribut::PourcentAbatOrgChg;
         ++attribute) {
      ASSERT_EQ(record().get(attribute), written.get(attribute));
    }
  }
}

}  // namespace
}  // namespace behaviour
