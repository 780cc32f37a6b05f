#include <functional>

#include "pages/Ong4.h"
#include "store/Conversions.h"
#include "store/Layouts.h"
#include "tests/behaviour/ScaleTest.h"
#include "tests/support/Seed.h"

namespace behaviour {
namespace {

constexpr const char* kDebutSeul = "Le barème de début pour personne seule est obligatoire.";
constexpr const char* kFinSeul = "Le barème de fin pour personne seule est obligatoire.";
constexpr const char* kDebutMenage = "Le barème de début pour ménage est obligatoire.";
constexpr const char* kOrdreSeul =
    "La tranche de début de revenus pour personne seule doit être inférieure à la tranche de fin.";
constexpr const char* kOrdreMenage =
    "La tranche de début de revenus pour ménage doit être inférieure à la tranche de fin.";
constexpr const char* kFinMenage = "Le barème de fin pour ménage est obligatoire.";
constexpr const char* kMontantEnCours = "Le montant du barème en cours est obligatoire.";

constexpr const char* kDateObligatoire = "La date du barème en cours est obligatoire.";
constexpr const char* kDateIncorrecte =
    "La date du barème en cours est incorrecte, veuillez la ressaisir.";
constexpr const char* kDateTropTot =
    "La date du barème en cours doit être supérieure à la date de barème précédent.";
constexpr const char* kRuptureSeul =
    "Il n'y a pas enchaînement dans les tranches de revenus des personnes seules.";
constexpr const char* kRuptureMenage =
    "Il n'y a pas enchaînement dans les tranches de revenus des ménages.";
constexpr const char* kAbonnement =
    "L'abonnement et le côut global (onglet 'Prise en charge') ne peuvent pas être activés en même "
    "temps.";
constexpr const char* kModeChange =
    "La modification de la gestion de la participation bénéficiaire n'est pas possible car il "
    "existe des accords actifs pour cet organisme.\r\nMerci de contacter VALDRIS si votre volonté "
    "est de changer le mode de gestion de cet organisme.";

// The row's checks --------------------------------------------------------------------------------

class ScaleRowChecks : public Scale {
 protected:
  ScaleRowChecks() {
    show("002");
    EXPECT_TRUE(press("Cmd_AjoutPart"));
  }
  // The check refuses what the zones hold: its box, its focus, editor and entries kept.
  void expectRefusal(const Row& typed, std::string_view message, std::string_view focus) {
    fillZones(typed);
    ASSERT_TRUE(press("Cmd_OKPart"));
    expectBox(message, Icon::Exclamation);
    EXPECT_PRED_FORMAT1(hasFocus, box(focus)) << message;
    EXPECT_TRUE(rowOpen());
    EXPECT_TRUE(rows().empty());
    for (std::size_t i = 0; i < typed.size(); ++i) {
      const auto number = store::hundredths(typed[i]);
      EXPECT_EQ(zones()[i], number ? store::twoDecimals(*number) : "") << kScaleZones[i];
    }
  }
  void expectAccepted(const Row& typed) {
    fillZones(typed);
    ASSERT_TRUE(press("Cmd_OKPart"));
    expectNoBox();
    EXPECT_FALSE(rowOpen());
    EXPECT_EQ(rows().size(), 1U);
  }
};

TEST_F(ScaleRowChecks, ComeInTheirOrder) {
  const char* const focus[] = {"Txt_DebRevSeulOrgChg", "Txt_FinRevSeulOrgChg",
                               "Txt_DebRevMenOrgChg", "Txt_FinRevMenOrgChg",
                               "Txt_BaremCoursOrgChg"};
  expectRefusal({"", "", "", "", ""}, kDebutSeul, focus[0]);
  expectRefusal({"5", "", "", "", ""}, kFinSeul, focus[1]);
  expectRefusal({"5", "4", "", "", ""}, kDebutMenage, focus[2]);
  expectRefusal({"5", "4", "5", "", ""}, kOrdreSeul, focus[0]);
  expectRefusal({"5", "4", "5", "4", ""}, kOrdreSeul, focus[0]);
  expectRefusal({"5", "6", "5", "4", ""}, kOrdreMenage, focus[2]);
  expectRefusal({"5", "6", "5", "", ""}, kFinMenage, focus[3]);
  expectRefusal({"5", "6", "5", "6", ""}, kMontantEnCours, focus[4]);
  expectAccepted({"5", "6", "5", "6", "0"});
}

// Every way to fill or leave empty the zones, with brackets that rise, stand still or fall.
TEST_F(ScaleRowChecks, ForEveryEntryTheFirstThatFailsSpeaks) {
  const Row texts{"", "100", "200"};
  for (int choice = 0; choice < 243; ++choice) {
    const Row typed{texts[static_cast<std::size_t>(choice % 3)],
                    texts[static_cast<std::size_t>(choice / 3 % 3)],
                    texts[static_cast<std::size_t>(choice / 9 % 3)],
                    texts[static_cast<std::size_t>(choice / 27 % 3)],
                    texts[static_cast<std::size_t>(choice / 81 % 3)]};
    const std::pair<bool, const char*> table[] = {
        {typed[0].empty(), kDebutSeul},
        {typed[1].empty(), kFinSeul},
        {typed[2].empty(), kDebutMenage},
        {typed[0] >= typed[1], kOrdreSeul},
        {!typed[3].empty() && typed[2] >= typed[3], kOrdreMenage},
        {typed[3].empty(), kFinMenage},
        {typed[4].empty(), kMontantEnCours}};
    const char* expected = nullptr;
    for (const auto& [fails, message] : table) {
      if (fails && !expected) expected = message;
    }
    ASSERT_TRUE(rowOpen() || press("Cmd_AjoutPart"));
    fillZones(typed);
    ASSERT_TRUE(press("Cmd_OKPart"));
    if (expected) {
      expectBox(expected, Icon::Exclamation);
    } else {
      expectNoBox();
    }
    EXPECT_EQ(rowOpen(), expected != nullptr) << choice;
  }
}

TEST_F(ScaleRowChecks, CompareNumbersNotTexts) {
  expectRefusal({"1000", "200", "0", "1", "1"}, kOrdreSeul, "Txt_DebRevSeulOrgChg");
  expectRefusal({"200", "1000", "1000", "200", "1"}, kOrdreMenage, "Txt_DebRevMenOrgChg");
  expectAccepted({"200", "1000", "-5", "-4,99", "0"});
}

TEST_F(ScaleRowChecks, RefuseABracketWhoseStartEqualsItsEnd) {
  expectRefusal({"100", "100,00", "0", "1", "1"}, kOrdreSeul, "Txt_DebRevSeulOrgChg");
  expectRefusal({"0", "100", "7", "7", "1"}, kOrdreMenage, "Txt_DebRevMenOrgChg");
}

TEST_F(ScaleRowChecks, TellACentApartInLargeIncomes) {
  expectAccepted({"9999999,98", "9999999,99", "123456789,01", "123456789,02", "1"});
}

TEST_F(ScaleRowChecks, ABlankIsNotEmpty) {
  fillZones({"0", "100", "0", "200"});
  ASSERT_TRUE(user_->go(box("Txt_BaremCoursOrgChg")));
  ASSERT_TRUE(user_->paste(" "));
  ASSERT_TRUE(press("Cmd_OKPart"));
  expectNoBox();
  EXPECT_PRED_FORMAT2(same, rows(), (Rows{{"0,00", "100,00", "0,00", "200,00", "", "0,00"}}));
}

TEST_F(ScaleRowChecks, APastedBlankCountsAs0SoThatTheDateIsAskedFor) {
  fillZones({"", "100", "", "200", "1"});
  for (const char* start : {"Txt_DebRevSeulOrgChg", "Txt_DebRevMenOrgChg"}) {
    ASSERT_TRUE(user_->go(box(start)));
    ASSERT_TRUE(user_->paste(" "));
  }
  ASSERT_TRUE(press("Cmd_OKPart"));
  expectNoBox();
  EXPECT_PRED_FORMAT2(same, rows(), (Rows{{"0,00", "100,00", "0,00", "200,00", "", "1,00"}}));
  ASSERT_TRUE(press("Cmd_OK"));
  expectBox(kDateObligatoire, Icon::Exclamation);
}

TEST_F(ScaleRowChecks, HoldForAChangeTooAndKeepTheRow) {
  show("001");
  const Rows before = rows();
  ASSERT_TRUE(open(1));
  fillZones({"900", "500"});
  ASSERT_TRUE(press("Cmd_OKPart"));
  expectBox(kOrdreSeul, Icon::Exclamation);
  EXPECT_TRUE(rowOpen());
  EXPECT_PRED_FORMAT2(same, rows(), before);
  ASSERT_TRUE(press("Cmd_AnnulerPart"));
  EXPECT_PRED_FORMAT2(same, rows(), before);
}

// The page's checks -------------------------------------------------------------------------------

class ScaleChecks : public Scale {
 protected:
  // 001 with these rows and dates, on screen with the first page in front.
  void put(const Rows& rows, std::string_view previous, std::string_view current) {
    store_.set("ORGPRISECHARGE", "001", attribut::GestPartBenef, "M");
    putScale("001", rows, previous, current);
    show();
    EXPECT_TRUE(user_->click(tabs(), 0));
  }
  // Saving is refused: its box, the page in front, the focus, nothing written.
  void expectRefusal(std::string_view message, std::string_view focus,
                     Icon icon = Icon::Exclamation) {
    store_.forgetCalls();
    ASSERT_TRUE(press("Cmd_OK"));
    expectBox(message, icon);
    EXPECT_EQ(tabs().tab(), 3) << message;
    EXPECT_PRED_FORMAT1(hasFocus, *control_->surface().find(focus)) << message;
    expectNothingWritten();
    EXPECT_EQ(state(), kExisting);
    EXPECT_FALSE(control_->Verif_Ong4());
    expectBox(message, icon);
  }
  const Rows chained_{{"0,00", "500,00", "0,00", "800,00", "1,00", "1,50"},
                      {"500,00", "900,00", "800,00", "1400,00", "2,00", "2,50"},
                      {"900,00", "1500,00", "1400,00", "2000,00", "3,00", "3,50"}};
};

TEST_F(ScaleChecks, Check1AScaleWithoutItsDate) {
  put(chained_, "01/01/2026", "");
  expectRefusal(kDateObligatoire, "Txt_DatBaremCours");
}

TEST_F(ScaleChecks, Check1OpensTheDateSoThatItCanBeEntered) {
  put(chained_, "01/01/2026", "");
  EXPECT_FALSE(current().enabled());
  expectRefusal(kDateObligatoire, "Txt_DatBaremCours");
  ASSERT_TRUE(user_->type("02012026"));
  save();
  EXPECT_EQ(attribute("001", attribut::DatBaremCours), stored("02/01/2026"));
  show();
  EXPECT_FALSE(current().enabled());
}

TEST_F(ScaleChecks, WithoutRowsAnEmptyDatePasses) {
  put({}, "01/01/2026", "");
  save();
}

TEST_F(ScaleChecks, WithoutRowsADateIsCheckedAllTheSame) {
  put({}, "01/01/2026", "01/01/2026");
  expectRefusal(kDateTropTot, "Txt_DatBaremCours");
}

TEST_F(ScaleChecks, Check2ADateThatIsNone) {
  for (const char* stands : {"31/02/2026", "hier", " ", "01/01/26"}) {
    put(chained_, "01/01/2026", "");
    store_.set("ORGPRISECHARGE", "001", attribut::DatBaremCours, stands);
    show();
    expectRefusal(kDateIncorrecte, "Txt_DatBaremCours");
  }
}

TEST_F(ScaleChecks, Check2OfADateThatTheUserTypes) {
  put(chained_, "", "01/01/2026");
  ASSERT_TRUE(user_->click(tabs(), 3));
  beginScale("31022026");
  expectRefusal(kDateIncorrecte, "Txt_DatBaremCours");
}

TEST_F(ScaleChecks, Check3ADateThatIsNotAfterThePreviousOne) {
  put(chained_, "01/01/2026", "01/01/2026");
  expectRefusal(kDateTropTot, "Txt_DatBaremCours");
  put(chained_, "01/01/2026", "31/12/2025");
  expectRefusal(kDateTropTot, "Txt_DatBaremCours");
  put(chained_, "01/01/2026", "02/01/2026");
  save();
}

TEST_F(ScaleChecks, Check3IsLeftOutWithoutAPreviousDate) {
  put(chained_, "", "01/01/1990");
  save();
}

TEST_F(ScaleChecks, Check3OfANewScale) {
  put(chained_, "01/01/2025", "01/01/2026");
  ASSERT_TRUE(user_->click(tabs(), 3));
  beginScale("01012026");
  expectRefusal(kDateTropTot, "Txt_DatBaremCours");
  EXPECT_EQ(caption("Cmd_NouveauBareme"), "Annuler barè&me");
}

TEST_F(ScaleChecks, Check4SelectsTheFirstRowThatBreaksTheChainOfSinglePersons) {
  Rows broken = chained_;
  broken[1][0] = "501,00";
  broken[2][0] = "901,00";
  broken[1][2] = "801,00";
  put(broken, "", "01/01/2026");
  expectRefusal(kRuptureSeul, "Lst_DebRevSeulOrgChg");
  EXPECT_PRED_FORMAT2(same, selected(), std::vector<int>(6, 1));
  broken = chained_;
  broken[2][0] = "901,00";
  put(broken, "", "01/01/2026");
  expectRefusal(kRuptureSeul, "Lst_DebRevSeulOrgChg");
  EXPECT_PRED_FORMAT2(same, selected(), std::vector<int>(6, 2));
}

TEST_F(ScaleChecks, Check5SelectsTheFirstRowThatBreaksTheChainOfHouseholds) {
  Rows broken = chained_;
  broken[2][2] = "1400,01";
  put(broken, "", "01/01/2026");
  expectRefusal(kRuptureMenage, "Lst_DebRevMenOrgChg");
  EXPECT_PRED_FORMAT2(same, selected(), std::vector<int>(6, 2));
}

TEST_F(ScaleChecks, TheChainComparesTexts) {
  const std::string mark(1, store::kValueMark);
  put({chained_[0], chained_[1]}, "", "01/01/2026");
  store_.set("ORGPRISECHARGE", "001", attribut::DebRevSeulOrgChg, "0" + mark + "500.");
  store_.set("ORGPRISECHARGE", "001", attribut::FinRevSeulOrgChg, "50000" + mark + "90000");
  show();
  EXPECT_EQ(rows()[1][0], "500.");
  expectRefusal(kRuptureSeul, "Lst_DebRevSeulOrgChg");
  store_.set("ORGPRISECHARGE", "001", attribut::DebRevSeulOrgChg, "0" + mark + "abc");
  store_.set("ORGPRISECHARGE", "001", attribut::FinRevSeulOrgChg, "abc" + mark + "90000");
  show();
  save();
}

TEST_F(ScaleChecks, ARowThatIsDeletedBreaksTheChain) {
  put(chained_, "", "01/01/2026");
  ASSERT_TRUE(user_->click(tabs(), 3));
  ASSERT_TRUE(open(1));
  desktop_.answer(Answer::Yes);
  ASSERT_TRUE(press("Cmd_SuppPart"));
  desktop_.takeBoxes();
  expectRefusal(kRuptureSeul, "Lst_DebRevSeulOrgChg");
}

TEST_F(ScaleChecks, UnderANewScaleABrokenChainGivesTheFocusToTheListThatIsOpen) {
  put(chained_, "", "01/01/2026");
  ASSERT_TRUE(user_->click(tabs(), 3));
  beginScale("01022026");
  add({"1600", "1700", "2000", "2100", "5"});
  expectRefusal(kRuptureSeul, "Lst_BaremCoursOrgChg");
  EXPECT_PRED_FORMAT2(same, selected(), std::vector<int>(6, 3));
}

TEST_F(ScaleChecks, Check6SubscriptionAndGlobalCost) {
  put(chained_, "", "01/01/2026");
  ASSERT_TRUE(user_->click(tabs(), 2));
  ASSERT_TRUE(user_->click(child<CheckBox>("Cac_CoutGlobal")));
  ASSERT_TRUE(user_->click(tabs(), 3));
  ASSERT_TRUE(user_->click(child<CheckBox>("Cac_Abonnement")));
  expectRefusal(kAbonnement, "Cac_Abonnement");
  ASSERT_TRUE(user_->click(child<CheckBox>("Cac_Abonnement")));
  save();
  EXPECT_EQ(attribute("001", attribut::CoutGlobal), "1");
}

// The guard on active agreements ------------------------------------------------------------------

class ScaleGuard : public ScaleChecks {
 protected:
  ScaleGuard() { store_.put("PERIODESPAIE", "1", {"202601"}); }
  // 21500 is a day of the year 2026.
  void agreement(std::string_view body, std::string_view end = "21500",
                 std::string_view closed = "") {
    store_.put("ACCORD", "A1", {body, "", "", "", "20000", end});
    store_.set("ACCORD", "A1", store::accord::ClotureAcc, closed);
  }
  // 001, principal, read in that mode, on screen with the first page in front.
  void putMode(std::string_view mode) {
    put(chained_, "", "01/01/2026");
    store_.set("ORGPRISECHARGE", "001", attribut::GestPartBenef, mode);
    show();
  }
  void choose(const char* name) {
    ASSERT_TRUE(user_->click(tabs(), 3));
    ASSERT_TRUE(user_->click(option(name)));
    ASSERT_TRUE(user_->click(tabs(), 0));
  }
  std::size_t searches() {
    std::size_t found = 0;
    for (const auto& call : store_.calls(CallKind::ExecuteSentence)) {
      if (call.file == "ACCORD") ++found;
    }
    return found;
  }
};

TEST_F(ScaleGuard, Check7FromAmountToPercentage) {
  agreement("001");
  putMode("M");
  choose("Opt_GestPartPourc");
  expectRefusal(kModeChange, "Opt_GestPartPourc", Icon::Information);
  EXPECT_EQ(attribute("001", attribut::GestPartBenef), "M");
}

TEST_F(ScaleGuard, Check7FromPercentageToAmount) {
  agreement("001");
  putMode("%");
  choose("Opt_GestPartMont");
  expectRefusal(kModeChange, "Opt_GestPartMont", Icon::Information);
  EXPECT_EQ(attribute("001", attribut::GestPartBenef), "%");
}

TEST_F(ScaleGuard, Check7OfAModeThatAnotherPageHasSet) {
  agreement("001");
  putMode("%");
  ASSERT_TRUE(user_->click(tabs(), 1));
  ASSERT_TRUE(user_->click(option("Opt_TypeComplOrgChg")));
  ASSERT_TRUE(user_->click(option("Opt_TypePrincipalOrgChg")));
  expectRefusal(kModeChange, "Opt_GestPartMont", Icon::Information);
}

TEST_F(ScaleGuard, BacksOutWhenTheModeIsPutBack) {
  agreement("001");
  putMode("M");
  choose("Opt_GestPartPourc");
  expectRefusal(kModeChange, "Opt_GestPartPourc", Icon::Information);
  choose("Opt_GestPartMont");
  save();
}

TEST_F(ScaleGuard, LooksForAgreementsOnlyWhenTheModeChanges) {
  agreement("001");
  putMode("M");
  choose("Opt_GestPartPourc");
  choose("Opt_GestPartMont");
  save();
  EXPECT_EQ(searches(), 0U);
}

TEST_F(ScaleGuard, WithoutActiveAgreementsTheModeMayChange) {
  struct {
    const char* body;
    const char* end;
    const char* closed;
  } const others[] = {{"002", "21500", ""}, {"001", "21185", ""}, {"001", "21500", "O"}};
  for (const auto& other : others) {
    agreement(other.body, other.end, other.closed);
    putMode("M");
    choose("Opt_GestPartPourc");
    save();
    EXPECT_EQ(attribute("001", attribut::GestPartBenef), "%");
    EXPECT_EQ(searches(), 1U);
  }
}

TEST_F(ScaleGuard, ARecordReadWithoutAModeMayTakeOne) {
  agreement("001");
  for (const char* mode : {"", "X"}) {
    putMode(mode);
    choose("Opt_GestPartPourc");
    save();
    EXPECT_EQ(attribute("001", attribut::GestPartBenef), "%");
  }
}

TEST_F(ScaleGuard, ComesLast) {
  agreement("001");
  Rows broken = chained_;
  broken[1][2] = "801,00";
  put(broken, "01/01/2026", "");
  choose("Opt_GestPartPourc");
  ASSERT_TRUE(user_->click(tabs(), 2));
  ASSERT_TRUE(user_->click(child<CheckBox>("Cac_CoutGlobal")));
  ASSERT_TRUE(user_->click(tabs(), 3));
  ASSERT_TRUE(user_->click(child<CheckBox>("Cac_Abonnement")));
  expectRefusal(kDateObligatoire, "Txt_DatBaremCours");
  ASSERT_TRUE(user_->fill(current(), "31022026"));
  expectRefusal(kDateIncorrecte, "Txt_DatBaremCours");
  ASSERT_TRUE(user_->fill(current(), "01012026"));
  expectRefusal(kDateTropTot, "Txt_DatBaremCours");
  ASSERT_TRUE(user_->fill(current(), "02012026"));
  expectRefusal(kRuptureMenage, "Lst_DebRevMenOrgChg");
  ASSERT_TRUE(open(1));
  ASSERT_TRUE(user_->fill(box("Txt_DebRevMenOrgChg"), "800"));
  ASSERT_TRUE(press("Cmd_OKPart"));
  expectRefusal(kAbonnement, "Cac_Abonnement");
  EXPECT_EQ(searches(), 0U);
  ASSERT_TRUE(user_->click(child<CheckBox>("Cac_Abonnement")));
  expectRefusal(kModeChange, "Opt_GestPartPourc", Icon::Information);
}

TEST_F(ScaleGuard, AStoreThatFailsRefusesTheSaveWithoutABox) {
  agreement("001");
  putMode("M");
  choose("Opt_GestPartPourc");
  store_.fail(CallKind::ExecuteSentence, "ACCORD");
  ASSERT_TRUE(press("Cmd_OK"));
  expectNoBox();
  expectNothingWritten();
  EXPECT_EQ(state(), kExisting);
  EXPECT_THROW(control_->Verif_Ong4(), store::StoreError);
}

// Any sequence of deeds ---------------------------------------------------------------------------

// What the page is told to be, in plain terms: the rows, the dates, and what a new scale keeps.
struct Model {
  Rows rows;
  std::string previous;
  std::string current;
  bool newScale = false;
  bool closed = false;  // the lists that a new scale has closed
  bool dateOpen = false;
  bool first = true;  // a first scale is being entered
  // Rows of a scale, and its date, were shown from the record.
  bool hadRows = false;
  bool hadDate = false;
  // Those added under the new scale, among the rows in the order of these.
  std::vector<char> added;
  Rows keptRows;
  bool keptFirst = true;
  std::string keptPrevious;
  std::string keptCurrent;

  void shown(const Rows& now, const std::string& before, const std::string& from) {
    *this = Model();
    rows = now;
    previous = before;
    current = from;
    first = now.empty();
    hadRows = !now.empty();
    hadDate = !from.empty();
    added.assign(rows.size(), 0);
  }
  void add(const Row& row) {
    rows.push_back(row);
    added.push_back(newScale ? 1 : 0);
    sort();
  }
  void erase(int line) {
    rows.erase(rows.begin() + line);
    added.erase(added.begin() + line);
  }
  bool bracketsClosed(int line) const {
    return newScale && added[static_cast<std::size_t>(line)] == 0;
  }
  // The place after all starts that are not greater.
  void sort() {
    Rows placed;
    std::vector<char> marks;
    for (std::size_t i = 0; i < rows.size(); ++i) {
      auto place = static_cast<std::ptrdiff_t>(placed.size());
      while (place > 0 && *store::hundredths(placed[static_cast<std::size_t>(place - 1)][0]) >
                              *store::hundredths(rows[i][0])) {
        --place;
      }
      placed.insert(placed.begin() + place, rows[i]);
      marks.insert(marks.begin() + place, added[i]);
    }
    rows = placed;
    added = marks;
  }
  void begin() {
    keptRows = rows;
    keptFirst = first;
    keptPrevious = previous;
    keptCurrent = current;
    added.assign(rows.size(), 0);
    if (hadRows) {
      for (Row& row : rows) row[4] = row[5];
    }
    if (hadRows || hadDate) previous = current;
    current.clear();
    newScale = closed = dateOpen = true;
  }
  void cancel() {
    rows = keptRows;
    added.assign(rows.size(), 0);
    first = keptFirst;
    previous = keptPrevious;
    current = keptCurrent;
    newScale = dateOpen = false;
  }
  bool mayAdd() {
    first = first || rows.empty();
    return newScale || first;
  }
  // What the page's check says first; "" when it accepts.
  std::string refusal() const {
    if (current.empty()) {
      if (!rows.empty()) return kDateObligatoire;
    } else {
      const auto day = store::dayOfText(current);
      if (!day) return kDateIncorrecte;
      if (!previous.empty() && *day <= *store::dayOfText(previous)) return kDateTropTot;
    }
    for (const std::size_t start : {0U, 2U}) {
      for (std::size_t i = 1; i < rows.size(); ++i) {
        if (rows[i][start] != rows[i - 1][start + 1]) {
          return start == 0 ? kRuptureSeul : kRuptureMenage;
        }
      }
    }
    return "";
  }
};

class ScaleSequences : public Scale {
 protected:
  ScaleSequences() { lookedUp("001"); }

  int any(int below) { return static_cast<int>(random_() % static_cast<unsigned>(below)); }
  bool chance(int percent) { return any(100) < percent; }

  void lookedUp(const std::string& body) {
    body_ = body;
    const store::DynamicArray record = store_.record("ORGPRISECHARGE", body);
    Rows rows;
    for (int value = 1; value <= record.DCount(attribut::DebRevSeulOrgChg); ++value) {
      Row row;
      for (int column = 0; column < 6; ++column) {
        row.push_back(
            store::shownHundredths(record.get(attribut::DebRevSeulOrgChg + column, value)));
      }
      rows.push_back(row);
    }
    model_.shown(rows, store::textOfDay(record.get(attribut::DatBaremPrec)),
                 store::textOfDay(record.get(attribut::DatBaremCours)));
  }
  void lookUpAny() {
    const std::string body = "00" + std::to_string(1 + any(3));
    lookUp(body);
    ASSERT_TRUE(user_->click(tabs(), 3));
    lookedUp(body);
  }
  // A row that often starts where the last one ends, as users go on.
  Row anyRow() {
    const long long start = model_.rows.empty() || chance(30)
                                ? any(12) * 10000LL
                                : *store::hundredths(model_.rows.back()[1]);
    const long long household = model_.rows.empty() || chance(30)
                                    ? any(12) * 10000LL
                                    : *store::hundredths(model_.rows.back()[3]);
    return {store::twoDecimals(start), store::twoDecimals(start + (1 + any(4)) * 10000LL),
            store::twoDecimals(household), store::twoDecimals(household + (1 + any(4)) * 10000LL),
            store::twoDecimals(any(3000))};
  }
  void refuseFirst() {
    if (!chance(25)) return;
    user_->fill(box("Txt_BaremCoursOrgChg"), "");
    ASSERT_TRUE(press("Cmd_OKPart"));
    expectBox(kMontantEnCours, Icon::Exclamation);
    ASSERT_TRUE(rowOpen());
  }
  void scrollMeanwhile() {
    auto& bar = child<toolkit::ScrollBar>("Bdv_Bareme");
    if (bar.visible() && chance(50)) user_->scroll(bar, any(bar.max() + 1));
  }

  void addOne() {
    if (!model_.mayAdd()) {
      ASSERT_FALSE(press("Cmd_AjoutPart"));
      return;
    }
    ASSERT_TRUE(press("Cmd_AjoutPart"));
    const Row row = anyRow();
    fillZones(row);
    refuseFirst();
    scrollMeanwhile();
    if (chance(20)) {
      desktop_.answer(Answer::No);
      ASSERT_TRUE(press("Cmd_AnnulerPart"));
      desktop_.answer(Answer::Yes);
      ASSERT_TRUE(press("Cmd_AnnulerPart"));
      return;
    }
    ASSERT_TRUE(user_->fill(box("Txt_BaremCoursOrgChg"), row[4]));
    ASSERT_TRUE(press("Cmd_OKPart"));
    model_.add({row[0], row[1], row[2], row[3], "", row[4]});
  }
  // Opens a row; a list that is closed opens none.
  int openAny() {
    if (model_.rows.empty()) return -1;
    const int row = any(static_cast<int>(model_.rows.size()));
    const char* name = kScaleLists[any(6)];
    const bool closed = model_.closed && std::string_view(name) != "Lst_BaremCoursOrgChg";
    EXPECT_EQ(open(row, name), !closed);
    return closed ? -1 : row;
  }
  void changeOne() {
    const int line = openAny();
    if (line < 0) return;
    Row& row = model_.rows[static_cast<std::size_t>(line)];
    const Row typed = anyRow();
    const bool bracketsClosed = model_.bracketsClosed(line);
    if (bracketsClosed) {
      for (int i = 0; i < 4; ++i) ASSERT_FALSE(user_->fill(box(kScaleZones[i]), "1"));
    } else {
      fillZones(typed);
    }
    refuseFirst();
    scrollMeanwhile();
    if (chance(20)) {
      ASSERT_TRUE(press("Cmd_AnnulerPart"));
      return;
    }
    ASSERT_TRUE(user_->fill(box("Txt_BaremCoursOrgChg"), typed[4]));
    ASSERT_TRUE(press("Cmd_OKPart"));
    if (!bracketsClosed) std::copy(typed.begin(), typed.begin() + 4, row.begin());
    row[5] = typed[4];
    model_.sort();
  }
  void deleteOne() {
    const int line = openAny();
    if (line < 0) return;
    scrollMeanwhile();
    desktop_.answer(Answer::No);
    ASSERT_TRUE(press("Cmd_SuppPart"));
    ASSERT_TRUE(rowOpen());
    desktop_.answer(Answer::Yes);
    ASSERT_TRUE(press("Cmd_SuppPart"));
    model_.erase(line);
  }
  void newOrCancelledScale() {
    if (model_.newScale) {
      ASSERT_TRUE(press("Cmd_NouveauBareme"));
      model_.cancel();
      return;
    }
    const bool wanted = chance(80);
    desktop_.answer(wanted ? Answer::Yes : Answer::No);
    ASSERT_TRUE(press("Cmd_NouveauBareme"));
    if (wanted) model_.begin();
  }
  void typeDate() {
    const std::string date = store::textOfDay(21000L + any(600));
    ASSERT_EQ(user_->fill(current(), date), model_.dateOpen);
    if (model_.dateOpen) model_.current = date;
  }
  void saveIt() {
    const std::string refusal = model_.refusal();
    const bool asks = refusal.empty() && asksAboutAgreements();
    if (asks) desktop_.answer(Answer::No);
    ASSERT_TRUE(press("Cmd_OK"));
    if (!refusal.empty()) {
      expectBox(refusal, Icon::Exclamation);
      const bool dateRefused =
          refusal == kDateObligatoire || refusal == kDateIncorrecte || refusal == kDateTropTot;
      model_.dateOpen = model_.dateOpen || dateRefused;
      return;
    }
    if (asks) {
      expectBox(questionBareme(model_.current), Icon::Exclamation, toolkit::Buttons::YesNo);
    } else {
      expectNoBox();
    }
    ++saved_;
    expectWritten(store_.record("ORGPRISECHARGE", body_));
    lookUpAny();
  }
  void step() {
    switch (any(12)) {
      case 0:
      case 1:
      case 2:
        return addOne();
      case 3:
      case 4:
        return changeOne();
      case 5:
        return deleteOne();
      case 6:
        return newOrCancelledScale();
      case 7:
        return typeDate();
      case 8:
        control_->TriBareme();
        return model_.sort();
      case 9:
        return chance(25) ? lookUpAny() : saveIt();
      case 10:
        control_->Ecrire_Ong4();
        control_->Affiche_Bareme();
        model_.first = model_.rows.empty();
        model_.hadRows = !model_.rows.empty();
        model_.added.assign(model_.rows.size(), 0);
        return zerosForEmpty();
      default:
        return saveIt();
    }
  }
  // Written and shown again, an empty current participation is 0.
  void zerosForEmpty() {
    for (Row& row : model_.rows) {
      if (row[5].empty()) row[5] = "0,00";
    }
  }

  void expectWritten(const store::DynamicArray& record) {
    for (int column = 0; column < 6; ++column) {
      std::string expected;
      for (std::size_t i = 0; i < model_.rows.size(); ++i) {
        if (i > 0) expected += store::kValueMark;
        expected += stored(model_.rows[i][static_cast<std::size_t>(column)]);
      }
      ASSERT_EQ(record.get(attribut::DebRevSeulOrgChg + column), expected)
          << attribut::DebRevSeulOrgChg + column;
    }
    ASSERT_EQ(record.get(attribut::DatBaremPrec), stored(model_.previous));
    ASSERT_EQ(record.get(attribut::DatBaremCours), stored(model_.current));
  }
  void expectAsTold() {
    ASSERT_PRED_FORMAT2(same, rows(), model_.rows);
    ASSERT_EQ(previous().text(), model_.previous);
    const std::string typed = store::completeDate(current().text(), 2026);
    ASSERT_EQ(current().hasFocus() ? typed : current().text(), model_.current);
    ASSERT_EQ(caption("Cmd_NouveauBareme"),
              model_.newScale ? "Annuler barè&me" : "Nouveau barè&me");
    const auto lines = selected();
    ASSERT_PRED_FORMAT2(same, lines, std::vector<int>(6, lines.front()));
    ASSERT_EQ(child<toolkit::ScrollBar>("Bdv_Bareme").max(),
              static_cast<int>(model_.rows.size()) - 1);
    ASSERT_EQ(child<toolkit::ScrollBar>("Bdv_Bareme").visible(), model_.rows.size() > 12);
    // Every lock has been given back.
    ASSERT_EQ(state(), kExisting);
    for (int tab = 0; tab < tabs().tabs(); ++tab) ASSERT_TRUE(tabs().tabEnabled(tab)) << tab;
    for (const char* name : kScaleLists) {
      const bool always = std::string_view(name) == "Lst_BaremCoursOrgChg";
      ASSERT_EQ(enabled(name), always || !model_.closed) << name;
    }
    for (const char* name : {"Cdr_Bareme", "Cdr_GestionParticipBenef", "Cac_Abonnement",
                             "Cmd_NouveauBareme", "Cbo_SigleOrgChg"}) {
      ASSERT_TRUE(enabled(name)) << name;
    }
    ASSERT_EQ(enabled("Txt_DatBaremCours"), model_.dateOpen);
    ASSERT_EQ(enabled("Cmd_AjoutPart"), model_.mayAdd());
    ASSERT_PRED_FORMAT2(same, zones(), Row(5));
    for (const char* name : kScaleZones) ASSERT_FALSE(enabled(name)) << name;
  }

  testing_support::Random random_{4404};
  Model model_;
  std::string body_;
  int saved_ = 0;
};

TEST_F(ScaleSequences, LeaveThePageAsAPlainModelSays) {
  for (int i = 0; i < 3000; ++i) {
    step();
    ASSERT_FALSE(HasFatalFailure()) << i;
    desktop_.clearJournal();
    expectAsTold();
    ASSERT_FALSE(HasFatalFailure()) << i;
    if (i % 50 == 0) store_.forgetCalls();
  }
  EXPECT_GT(saved_, 50);
}

// The page on a desk of its own, where the record in hand can be read after each step.
class ScaleDesk : public testing::Test {
 protected:
  struct FullRights : screen::RightsEntry {
    long Level() override { return 2; }
  };
  struct HandedRecord : store::Record {
    HandedRecord() : Record(store::NewDynamicArray(), true) {}
    void DBWrite() override {}
  };
  ScaleDesk() {
    desktop_.follow([this] { return &user_; });
    session_.pret = true;
    session_.DroitOrgChg = std::make_shared<FullRights>();
    page_.lier(screen::Handlers(session_));
    hand({});
    screen_.Ong_OrgPriseChg.setTab(screen::kParticipation);
  }
  void hand(const Rows& rows) {
    session_.RecOrgChg = std::make_unique<HandedRecord>();
    putRows(session_.RecOrgChg->fields(), kFirstScaleAttribute, kScaleColumns, rows);
    page_.Afficher_Ong4();
    model_.shown(rows, "", "");
  }
  // What the page would leave in the record now, which stays as it is.
  store::DynamicArray written() {
    store::DynamicArray& record = session_.RecOrgChg->fields();
    const store::DynamicArray before = record;
    page_.Ecrire_Ong4();
    return std::exchange(record, before);
  }
  int any(int below) { return static_cast<int>(random_() % static_cast<unsigned>(below)); }

  testing_support::TestDesktop desktop_;
  toolkit::Surface surface_{"Ctr_OrgPriseCharge"};
  screen::Screen screen_{surface_};
  screen::EditSession session_;
  pages::Ong4 page_{{desktop_, screen_, session_}};
  toolkit::headless::User user_{surface_};
  screen::Participation& part_ = screen_.participation;
  testing_support::Random random_{3237};
  Model model_;
};

TEST_F(ScaleDesk, AfterEachStepTheRecordWrittenIsTheModels) {
  toolkit::TextBox* const zones[] = {&part_.Txt_DebRevSeulOrgChg, &part_.Txt_FinRevSeulOrgChg,
                                     &part_.Txt_DebRevMenOrgChg, &part_.Txt_FinRevMenOrgChg,
                                     &part_.Txt_BaremCoursOrgChg};
  for (int i = 0; i < 4000; ++i) {
    const int start = any(9) * 1000;
    const Row typed{store::twoDecimals(start), store::twoDecimals(start + 1 + any(5000)),
                    store::twoDecimals(start), store::twoDecimals(start + 1 + any(5000)),
                    store::twoDecimals(any(500))};
    const int deed = any(40);
    if (deed == 0) {
      hand({{"10,00", "20,00", "10,00", "20,00", "", "3,00"}});
    } else if (deed < 16 && model_.mayAdd()) {
      ASSERT_TRUE(user_.click(part_.Cmd_AjoutPart));
      for (std::size_t z = 0; z < 5; ++z) ASSERT_TRUE(user_.fill(*zones[z], typed[z]));
      ASSERT_TRUE(user_.click(part_.Cmd_OKPart));
      model_.add({typed[0], typed[1], typed[2], typed[3], "", typed[4]});
    } else if (deed < 34 && !model_.rows.empty()) {
      const int line = any(static_cast<int>(model_.rows.size()));
      Row& row = model_.rows[static_cast<std::size_t>(line)];
      const bool bracketsClosed = model_.bracketsClosed(line);
      ASSERT_TRUE(user_.dblClick(part_.Lst_BaremCoursOrgChg, line));
      if (deed < 24) {
        desktop_.answer(Answer::Yes);
        ASSERT_TRUE(user_.click(part_.Cmd_SuppPart));
        model_.erase(line);
      } else {
        for (std::size_t z = bracketsClosed ? 4 : 0; z < 5; ++z) {
          ASSERT_TRUE(user_.fill(*zones[z], typed[z]));
        }
        ASSERT_TRUE(user_.click(deed < 27 ? part_.Cmd_AnnulerPart : part_.Cmd_OKPart));
        if (deed >= 27) {
          if (!bracketsClosed) std::copy(typed.begin(), typed.begin() + 4, row.begin());
          row[5] = typed[4];
          model_.sort();
        }
      }
    } else if (model_.newScale) {
      ASSERT_TRUE(user_.click(part_.Cmd_NouveauBareme));
      model_.cancel();
    } else {
      desktop_.answer(Answer::Yes);
      ASSERT_TRUE(user_.click(part_.Cmd_NouveauBareme));
      model_.begin();
    }
    desktop_.clearJournal();
    const store::DynamicArray record = written();
    for (int column = 0; column < 6; ++column) {
      ASSERT_EQ(record.DCount(attribut::DebRevSeulOrgChg + column),
                column == 4 && model_.rows.size() == 1 && model_.rows[0][4].empty()
                    ? 0
                    : static_cast<int>(model_.rows.size()))
          << i;
      for (std::size_t row = 0; row < model_.rows.size(); ++row) {
        ASSERT_EQ(record.get(attribut::DebRevSeulOrgChg + column, static_cast<int>(row) + 1),
                  stored(model_.rows[row][static_cast<std::size_t>(column)]))
            << i;
      }
    }
  }
}

}  // namespace
}  // namespace behaviour
