// The rate and the deduction editor, driven at random beside a plain model of what they are told to
// do; and what the list editor is made of.
#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <utility>

#include "store/Conversions.h"
#include "store/Layouts.h"
#include "tests/behaviour/CoverageTest.h"
#include "tests/support/Seed.h"

namespace behaviour {
namespace {

// What a user types into a number's zone: the hundredths that it comes to; none for what is no
// number.
struct TypedNumber {
  std::string keys;
  std::optional<long long> value;
};

const std::vector<TypedNumber> kNumbers{
    {"0", 0},     {"5", 500},      {"7,5", 750},     {"10", 1000},        {"12.5", 1250},
    {"20", 2000}, {"99,99", 9999}, {"100,5", 10050}, {"101", 10100},      {"-3", -300},
    {"0,005", 1}, {",", {}},       {"-", {}},        {"1 234,50", 123450}};

std::string shown(const std::optional<long long>& value) {
  return value ? store::twoDecimals(*value) : std::string();
}

long long orZero(const std::optional<long long>& value) { return value.value_or(0); }

class Random : public Desk {
 protected:
  explicit Random(unsigned seed) : random_(seed) {
    screen_.bar.Cmd_Ajouter.setEnabled(false);
    closed_ = enabledBelow(surface_);
  }
  std::size_t below(std::size_t end) {
    return std::uniform_int_distribution<std::size_t>(0, end - 1)(random_);
  }
  bool oneIn(std::size_t times) { return below(times) == 0; }
  const TypedNumber& number() { return kNumbers[below(kNumbers.size())]; }

  // What a user types into these zones, or (not all) into some of them.
  void typeNumbers(
      std::initializer_list<std::pair<toolkit::TextBox*, std::optional<long long>*>> zones,
      bool all) {
    for (const auto& [zone, value] : zones) {
      if (!all && !oneIn(2)) continue;
      const TypedNumber& typed = number();
      ASSERT_TRUE(user_.fill(*zone, typed.keys));
      *value = typed.value;
      if (typed.value) continue;
      // What is no number is not left behind.
      user_.tab();
      ASSERT_TRUE(zone->hasFocus());
      ASSERT_EQ(zone->text(), typed.keys);
      ASSERT_TRUE(user_.fill(*zone, ""));
    }
  }

  // One deed of the user, the host or the code, out of these and of showing and writing the page.
  virtual void otherBody() = 0;
  virtual void sortRows() = 0;
  virtual void touch() = 0;  // scrolls or selects, without opening a row
  virtual void beforeWriting() {}
  virtual void add() = 0;
  virtual void change() = 0;
  void step() {
    switch (below(10)) {
      case 0:
        if (oneIn(4)) otherBody();
        break;
      case 1:
        sortRows();
        break;
      case 2:
        beforeWriting();
        page_.Ecrire_Ong3();
        break;
      case 3:
        page_.Afficher_Ong3();
        break;
      case 4:
        touch();
        break;
      case 5:
      case 6:
      case 7:
        add();
        break;
      default:
        change();
        break;
    }
  }

  // The lists, the record and the locks after a step.
  void expectKept(const Rows& lists, int first, std::size_t columns, const Rows& expected) {
    ASSERT_EQ(lists, expected);
    std::size_t row = 0;
    for (const Row& values : expected) {
      ++row;
      for (std::size_t column = 0; column < columns; ++column) {
        const std::string_view held =
            record().get(first + static_cast<int>(column), static_cast<int>(row));
        const std::string value = held == " " ? std::string() : std::string(held);
        ASSERT_EQ(value, stored(values[column]));
      }
    }
    for (std::size_t column = 0; column < columns; ++column) {
      const int attribute = first + static_cast<int>(column);
      ASSERT_LE(record().DCount(attribute), static_cast<int>(expected.size()));
    }
    ASSERT_EQ(record().DCount(first), static_cast<int>(expected.size()));
  }
  void expectClosed() {
    ASSERT_PRED_FORMAT2(same, enabledBelow(surface_), closed_);
    for (const toolkit::TextBox* zone :
         {&prise_.Txt_DateRembOrgChg, &prise_.Txt_TxRembOrgChg, &prise_.Txt_TxRembMajOrgChg,
          &prise_.Txt_PrestServOrgChg, &prise_.Txt_DebAbatHOrgChg, &prise_.Txt_FinAbatHOrgChg,
          &prise_.Txt_PourcentAbatOrgChg}) {
      ASSERT_EQ(zone->text(), "") << zone->name();
    }
    ASSERT_FALSE(session_.W_SupprimerActif);
    ASSERT_FALSE(session_.W_SortirActif);
  }
  // The boxes since the last call, one text a box.
  std::vector<std::string> told() {
    std::vector<std::string> texts;
    for (const auto& box : desktop_.takeBoxes()) texts.push_back(box.text);
    desktop_.clearJournal();
    return texts;
  }

  testing_support::Random random_;
  std::vector<std::pair<std::string, bool>> closed_;
};

// Rates -------------------------------------------------------------------------------------------

struct Rate {
  long day = 0;
  std::optional<long long> normal;
  std::optional<long long> increased;
  std::optional<long long> service;
};

Row shownRow(const Rate& rate) {
  return {store::textOfDay(rate.day), shown(rate.normal), shown(rate.increased),
          shown(rate.service)};
}

class RandomRates : public Random {
 protected:
  RandomRates() : Random(4110) {}

  // What a user types for a day, in one of the ways that are completed.
  std::string typedDay(long day) {
    std::string full = store::textOfDay(day);
    if (oneIn(2)) return full;
    return full.substr(0, 2) + full.substr(3, 2) + full.substr(6);
  }
  Rows modelRows() const {
    Rows rows;
    for (const Rate& rate : model_) rows.push_back(shownRow(rate));
    return rows;
  }
  void sortModel() {
    std::vector<Rate> placed;
    for (const Rate& rate : model_) {
      const auto earlier = std::find_if(placed.begin(), placed.end(),
                                        [&](const Rate& other) { return other.day < rate.day; });
      placed.insert(earlier, rate);
    }
    model_ = placed;
  }
  void otherBody() override {
    model_.clear();
    const std::size_t rows = below(5) * below(5);
    for (std::size_t i = 0; i < rows; ++i) {
      const long day = 21000 - static_cast<long>(i * 3 + below(3));
      model_.push_back({day, 2000, oneIn(4) ? std::nullopt : std::optional<long long>(2500),
                        oneIn(4) ? std::nullopt : std::optional<long long>(1500)});
    }
    hand(modelRows(), {});
    last_ = 0;
    gone_ = false;
    changed_ = false;
    before_.clear();
  }
  // The user fills some or all of the zones of the row that is open.
  void fill(Rate& rate, bool& dated, bool all) {
    if (all || oneIn(2)) {
      const long top = model_.empty() ? 21000 : model_.front().day;
      rate.day = top + static_cast<long>(below(6)) - 2;
      dated = !oneIn(12);
      user_.fill(prise_.Txt_DateRembOrgChg, dated ? typedDay(rate.day) : "");
    }
    typeNumbers({{&prise_.Txt_TxRembOrgChg, &rate.normal},
                 {&prise_.Txt_TxRembMajOrgChg, &rate.increased},
                 {&prise_.Txt_PrestServOrgChg, &rate.service}},
                all);
    if (oneIn(3)) user_.scroll(prise_.Bdv_TauxOrgChg, static_cast<int>(below(20)));
  }
  // Good values for a row that would be refused.
  void mend(Rate& rate, bool& dated) {
    dated = true;
    rate = {(model_.empty() ? 21000 : model_.front().day) + 1 + static_cast<long>(below(3)), 1000,
            1000, 1000};
    user_.fill(prise_.Txt_DateRembOrgChg, typedDay(rate.day));
    for (toolkit::TextBox* zone :
         {&prise_.Txt_TxRembOrgChg, &prise_.Txt_TxRembMajOrgChg, &prise_.Txt_PrestServOrgChg}) {
      user_.fill(*zone, "10");
    }
  }
  // The message of the first check that refuses the row; "" for a row that is accepted.
  std::string refusal(const Rate& rate, bool dated, int edited) const {
    if (!dated) return kDateIllisible;
    if (rate.increased && orZero(rate.normal) > *rate.increased) {
      return "Le taux majoré doit être supérieur au taux normal.";
    }
    if (rate.service && orZero(rate.normal) < *rate.service) {
      return "Le taux prestation de service doit être inférieur au taux normal.";
    }
    if (!rate.normal) return "Le taux de remboursement est obligatoire.";
    if (!rate.increased) return "Taux majoré obligatoire, veuillez le saisir.";
    if (!rate.service) return "Taux prestation de service obligatoire, veuillez le saisir.";
    for (std::size_t row = 0; row < model_.size(); ++row) {
      if (static_cast<int>(row) != edited && model_[row].day == rate.day) return kDateExistante;
    }
    const auto compared = static_cast<std::size_t>(edited) + 1;
    if (compared < model_.size() && model_[compared].day > rate.day) return kDateAnterieure;
    return "";
  }
  // The user presses OK until the row is accepted or discarded, or gives up.
  void confirm(Rate rate, bool dated, int edited) {
    while (true) {
      const std::string expected = refusal(rate, dated, edited);
      ASSERT_TRUE(user_.click(prise_.Cmd_OKTaux));
      ASSERT_PRED_FORMAT2(
          same, told(),
          expected.empty() ? std::vector<std::string>{} : std::vector<std::string>{expected});
      ++outcomes_[expected];
      if (expected == kDateExistante) return;
      if (expected.empty()) {
        accept(rate, edited);
        return;
      }
      ASSERT_TRUE(prise_.Cmd_OKTaux.usable());
      if (oneIn(2)) return cancel(edited);
      mend(rate, dated);
    }
  }
  void accept(const Rate& rate, int edited) {
    const Row row = shownRow(rate);
    if (edited < 0) {
      model_.push_back(rate);
      changed_ = true;
    } else {
      model_[static_cast<std::size_t>(edited)] = rate;
      if (row[0] + row[1] != before_) changed_ = true;
    }
    sortModel();
  }
  void cancel(int edited) {
    if (edited >= 0) {
      ASSERT_TRUE(user_.click(prise_.Cmd_AnnulerTaux));
      ASSERT_TRUE(told().empty());
      return;
    }
    if (oneIn(3)) {
      desktop_.answer(Answer::No);
      ASSERT_TRUE(user_.click(prise_.Cmd_AnnulerTaux));
      ASSERT_TRUE(prise_.Cmd_OKTaux.usable());
    }
    desktop_.answer(Answer::Yes);
    ASSERT_TRUE(user_.click(prise_.Cmd_AnnulerTaux));
    ASSERT_EQ(told().back(), kQuitterCreation);
    --last_;
  }
  void add() override {
    ASSERT_TRUE(user_.click(prise_.Cmd_AjoutTaux));
    ++last_;
    Rate rate;
    bool dated = false;
    fill(rate, dated, true);
    if (oneIn(5)) return cancel(-1);
    confirm(rate, dated, -1);
  }
  void change() override {
    if (model_.empty()) return;
    const int row = static_cast<int>(std::min(below(model_.size()), below(model_.size())));
    const std::array<toolkit::ListBox*, 4> lists{
        &prise_.Lst_DateRembOrgChg, &prise_.Lst_TxRembOrgChg, &prise_.Lst_TxRembMajOrgChg,
        &prise_.Lst_PrestServOrgChg};
    user_.dblClick(*lists[below(4)], row);
    if (row > last_) {
      ASSERT_TRUE(told().empty());
      return;
    }
    if (row == last_ && gone_) {
      ASSERT_PRED_FORMAT2(same, told(), std::vector<std::string>{kSeulTaux});
      return;
    }
    ASSERT_TRUE(prise_.Cmd_OKTaux.usable());
    Rate rate = model_[static_cast<std::size_t>(row)];
    if (!changed_) before_ = shownRow(rate)[0] + shownRow(rate)[1];
    bool dated = true;
    fill(rate, dated, false);
    switch (below(6)) {
      case 0:
        return cancel(row);
      case 1:
        return erase(row);
      default:
        return confirm(rate, dated, row);
    }
  }
  void erase(int row) {
    if (oneIn(3)) {
      desktop_.answer(Answer::No);
      ASSERT_TRUE(user_.click(prise_.Cmd_SuppTaux));
      ASSERT_TRUE(prise_.Cmd_OKTaux.usable());
    }
    desktop_.answer(Answer::Yes);
    ASSERT_TRUE(user_.click(prise_.Cmd_SuppTaux));
    ASSERT_EQ(told().back(), kSupprimerLigne);
    model_.erase(model_.begin() + row);
    if (last_ > 0) {
      --last_;
    } else {
      gone_ = true;
    }
  }
  void sortRows() override { page_.taux().Tri2(); }
  void touch() override { user_.scroll(prise_.Bdv_TauxOrgChg, static_cast<int>(below(20))); }

  std::vector<Rate> model_;
  int last_ = 0;       // the last row that may be changed
  bool gone_ = false;  // the only stored one has been deleted
  bool changed_ = false;
  std::string before_;  // date and normal rate at the first change
  std::map<std::string, int> outcomes_;
};

TEST_F(RandomRates, FollowThePlainModel) {
  otherBody();
  for (int i = 0; i < 3000; ++i) {
    SCOPED_TRACE(i);
    step();
    ASSERT_NO_FATAL_FAILURE(expectKept(rates(), attribut::DateRembOrgChg, 4, modelRows()));
    ASSERT_NO_FATAL_FAILURE(expectClosed());
    ASSERT_FALSE(HasFatalFailure());
    const screen::EtatTaux& state = session_.taux;
    ASSERT_EQ(state.W_DerTauxModif, last_);
    ASSERT_EQ(state.W_TauxModifSupp, gone_);
    ASSERT_EQ(state.W_TauxModifie, changed_);
    ASSERT_FALSE(state.W_AjoutTaux);
    const int rows = static_cast<int>(model_.size());
    ASSERT_EQ(prise_.Bdv_TauxOrgChg.max(), rows - 1);
    ASSERT_EQ(prise_.Bdv_TauxOrgChg.visible(), rows > 12);
    ASSERT_EQ(prise_.Lst_PrestServOrgChg.place().width, rows > 12 ? 1215 : 975);
  }
  EXPECT_EQ(outcomes_.size(), 9U) << "every check and the acceptance were met";
}

// Deductions --------------------------------------------------------------------------------------

struct Deduction {
  std::optional<long long> start;
  std::optional<long long> end;
  std::optional<long long> percentage;
};

class RandomDeductions : public Random {
 protected:
  RandomDeductions() : Random(4210) {}

  Rows modelRows() const {
    Rows rows;
    for (const Deduction& row : model_) {
      rows.push_back({shown(row.start), shown(row.end), shown(row.percentage)});
    }
    return rows;
  }
  void sortModel() {
    std::vector<Deduction> placed;
    for (const Deduction& row : model_) {
      const auto later = std::find_if(placed.begin(), placed.end(), [&](const Deduction& other) {
        return orZero(other.start) > orZero(row.start);
      });
      placed.insert(later, row);
    }
    model_ = placed;
  }
  void otherBody() override {
    model_.clear();
    const std::size_t rows = below(5) * below(5);
    for (std::size_t i = 0; i < rows; ++i) {
      const auto start = static_cast<long long>(i) * 500;
      model_.push_back({start, start + 500, 1000});
    }
    hand({{"01/01/2026", "20,00", "25,00", "15,00"}, {"01/01/2025", "20,00", "25,00", "15,00"}},
         modelRows());
  }
  void fill(Deduction& row, bool all) {
    typeNumbers({{&prise_.Txt_DebAbatHOrgChg, &row.start},
                 {&prise_.Txt_FinAbatHOrgChg, &row.end},
                 {&prise_.Txt_PourcentAbatOrgChg, &row.percentage}},
                all);
    if (oneIn(3)) user_.scroll(prise_.Bdv_AbatOrgChg, static_cast<int>(below(20)));
  }
  std::string refusal(const Deduction& row) const {
    if (!row.start && !row.end && !row.percentage) {
      return "Pour continuer, veuillez saisir les renseignements concernant l'abattement, sinon "
             "cliquer sur Annuler.";
    }
    if (orZero(row.percentage) >= 10100) return "Le pourcentage doit être inférieur à 100.";
    if (!row.end || !row.percentage) {
      return "La tranche d'heures de fin ainsi que le pourcentage sont obligatoires.";
    }
    if (*row.end < orZero(row.start)) {
      return "La tranche d'heures de fin doit être supérieure à la tranche d'heures de début.";
    }
    const int leftOut = prise_.Lst_DateRembOrgChg.listIndex();
    for (std::size_t i = 0; i < model_.size(); ++i) {
      const long long other = orZero(model_[i].end);
      if (orZero(row.start) < other && other < *row.end && static_cast<int>(i) != leftOut) {
        return "Il y a chevauchement dans les tranches d'heures, veuillez les ressaisir.";
      }
    }
    return "";
  }
  void confirm(Deduction row, int edited) {
    for (int attempt = 0; attempt < 4; ++attempt) {
      const std::string expected = refusal(row);
      ASSERT_TRUE(user_.click(prise_.Cmd_OKAbat));
      ASSERT_PRED_FORMAT2(
          same, told(),
          expected.empty() ? std::vector<std::string>{} : std::vector<std::string>{expected});
      ++outcomes_[expected];
      if (expected.empty()) {
        if (!row.start) row.start = 0;
        if (edited < 0) {
          model_.push_back(row);
        } else {
          model_[static_cast<std::size_t>(edited)] = row;
        }
        sortModel();
        return;
      }
      ASSERT_TRUE(prise_.Cmd_OKAbat.usable());
      if (expected.starts_with("Il y a chevauchement")) row = {};
      fill(row, false);
    }
    cancel(edited);
  }
  void cancel(int edited) {
    if (edited < 0) desktop_.answer(Answer::Yes);
    ASSERT_TRUE(user_.click(prise_.Cmd_AnnulerAbat));
    ASSERT_PRED_FORMAT2(
        same, told(),
        edited < 0 ? std::vector<std::string>{kQuitterCreation} : std::vector<std::string>{});
  }
  void add() override {
    ASSERT_TRUE(user_.click(prise_.Cmd_AjoutAbat));
    Deduction row;
    fill(row, true);
    if (oneIn(6)) return cancel(-1);
    confirm(row, -1);
  }
  void change() override {
    if (model_.empty()) return;
    const std::size_t row = below(model_.size());
    const std::array<toolkit::ListBox*, 3> lists{
        &prise_.Lst_DebAbatHOrgChg, &prise_.Lst_FinAbatHOrgChg, &prise_.Lst_PourcentAbatOrgChg};
    user_.dblClick(*lists[below(3)], static_cast<int>(row));
    ASSERT_TRUE(prise_.Cmd_OKAbat.usable());
    Deduction changed = model_[row];
    fill(changed, false);
    switch (below(4)) {
      case 0:
        return cancel(static_cast<int>(row));
      case 1:
        desktop_.answer(Answer::No);
        ASSERT_TRUE(user_.click(prise_.Cmd_SuppAbat));
        desktop_.answer(Answer::Yes);
        ASSERT_TRUE(user_.click(prise_.Cmd_SuppAbat));
        ASSERT_EQ(told().size(), 2U);
        model_.erase(model_.begin() + static_cast<std::ptrdiff_t>(row));
        return;
      default:
        return confirm(changed, static_cast<int>(row));
    }
  }
  void sortRows() override { page_.abattements().TriAbat(); }
  void touch() override { user_.click(prise_.Lst_DateRembOrgChg, static_cast<int>(below(2))); }
  // A slip that leaves the deductions out empties the record; the lists stay the source.
  void beforeWriting() override {
    if (!oneIn(3)) return;
    screen_.bordereau.Opt_MFPBordOrgChg.setValue(true);
    page_.Ecrire_Ong3();
    screen_.bordereau.Opt_MFPBordOrgChg.setValue(false);
    ASSERT_TRUE(record().get(attribut::DebAbatHOrgChg).empty());
    oneIn(2) ? add() : change();
  }

  std::vector<Deduction> model_;
  std::map<std::string, int> outcomes_;
};

TEST_F(RandomDeductions, FollowThePlainModel) {
  otherBody();
  for (int i = 0; i < 3000; ++i) {
    SCOPED_TRACE(i);
    step();
    ASSERT_NO_FATAL_FAILURE(expectKept(deductions(), attribut::DebAbatHOrgChg, 3, modelRows()));
    ASSERT_NO_FATAL_FAILURE(expectClosed());
    ASSERT_FALSE(HasFatalFailure());
    const int rows = static_cast<int>(model_.size());
    ASSERT_EQ(prise_.Bdv_AbatOrgChg.max(), rows - 1);
    ASSERT_EQ(prise_.Bdv_AbatOrgChg.visible(), rows > 12);
    ASSERT_EQ(prise_.Txt_PourcentAbatOrgChg.place().width, rows > 12 ? 1215 : 975);
  }
  EXPECT_EQ(outcomes_.size(), 6U) << "every check and the acceptance were met";
}

// The list editor itself --------------------------------------------------------------------------

class ListEditor : public Desk {
 protected:
  ListEditor() {
    pages::ListEditor::Parts parts;
    parts.onglet = screen::kPriseEnCharge;
    parts.listes = {&prise_.Lst_DebAbatHOrgChg, &prise_.Lst_FinAbatHOrgChg};
    parts.zones = {&prise_.Txt_DebAbatHOrgChg};
    parts.barre = &prise_.Bdv_AbatOrgChg;
    parts.elargis = {&prise_.Lst_FinAbatHOrgChg};
    parts.ajouter = &prise_.Cmd_AjoutAbat;
    parts.ok = &prise_.Cmd_OKAbat;
    parts.annuler = &prise_.Cmd_AnnulerAbat;
    parts.supprimer = &prise_.Cmd_SuppAbat;
    parts.verrouilles = {&prise_.Cdr_TauxOrgChg};
    editor_.emplace(pages::PageContext{desktop_, screen_, session_}, parts);
    editor_->lier(screen::Handlers(session_), "ouvrirChoisie",
                  [this] { editor_->ouvrirChoisie(); });
  }
  std::optional<pages::ListEditor> editor_;
};

TEST_F(ListEditor, InsertsAndRemovesRows) {
  editor_->inserer(0, {"b", "2"});
  editor_->inserer(0, {"a", "1"});
  editor_->inserer(2, {"c", "3"});
  EXPECT_PRED_FORMAT2(same, editor_->toutes(), (Rows{{"a", "1"}, {"b", "2"}, {"c", "3"}}));
  EXPECT_THROW(editor_->inserer(4, {"d", "4"}), std::invalid_argument);
  editor_->choisir(2);
  editor_->retirer(1);
  EXPECT_PRED_FORMAT2(same, editor_->toutes(), (Rows{{"a", "1"}, {"c", "3"}}));
  EXPECT_EQ(editor_->ligneChoisie(), -1);
  EXPECT_EQ(prise_.Bdv_AbatOrgChg.value(), 0);
  editor_->retirer(2);
  editor_->retirer(-1);
  EXPECT_EQ(editor_->lignes(), 2);
}

TEST_F(ListEditor, OpensOneRowAtATime) {
  editor_->remplir({{"a", "1"}, {"b", "2"}});
  EXPECT_TRUE(editor_->ouvrir(1));
  EXPECT_FALSE(editor_->ouvrir(0));
  EXPECT_FALSE(editor_->ouvrir(-1));
  EXPECT_FALSE(editor_->ouvrirChoisie());
  EXPECT_EQ(editor_->editee(), 1);
  EXPECT_FALSE(editor_->enAjout());
  editor_->quitter();
  EXPECT_FALSE(editor_->ouvert());
  EXPECT_EQ(editor_->editee(), -1);
  EXPECT_TRUE(editor_->ouvrir(-1));
  EXPECT_TRUE(editor_->enAjout());
  editor_->fermer();
  EXPECT_FALSE(editor_->enAjout());
}

TEST_F(ListEditor, FillingAnOpenOneKeepsItsRow) {
  editor_->remplir({{"a", "1"}, {"b", "2"}});
  EXPECT_TRUE(editor_->ouvrir(1));
  editor_->remplir({{"c", "3"}});
  EXPECT_EQ(editor_->editee(), 1);
}

TEST_F(ListEditor, ClosingOneThatIsNotOpenLeavesTheScreenAsItIs) {
  prise_.Cmd_AjoutAbat.setEnabled(false);
  screen_.bar.Cmd_Supprimer.setEnabled(false);
  const auto before = enabledBelow(surface_);
  editor_->fermer();
  editor_->quitter();
  EXPECT_PRED_FORMAT2(same, enabledBelow(surface_), before);
}

TEST_F(ListEditor, WhatWasDisabledBeforeStaysSo) {
  for (toolkit::Control* control : std::initializer_list<toolkit::Control*>{
           &screen_.bar.Cmd_OK, &screen_.bar.Txt_CodOrgChg, &prise_.Cdr_TauxOrgChg,
           &screen_.bar.Cmd_Supprimer}) {
    control->setEnabled(false);
  }
  const auto before = enabledBelow(surface_);
  EXPECT_TRUE(editor_->ouvrir(-1));
  EXPECT_NE(enabledBelow(surface_), before);
  editor_->quitter();
  EXPECT_PRED_FORMAT2(same, enabledBelow(surface_), before);
}

TEST_F(ListEditor, TheRingOfListsIsQuietWhileARecordIsShown) {
  editor_->remplir({{"a", "1"}, {"b", "2"}});
  const screen::Quiet quiet(session_);
  prise_.Lst_DebAbatHOrgChg.setListIndex(1);
  EXPECT_EQ(prise_.Lst_FinAbatHOrgChg.listIndex(), -1);
  EXPECT_EQ(prise_.Bdv_AbatOrgChg.value(), 0);
}

// The next list is selected first, then the scroll bar.
TEST_F(ListEditor, TheRingEndsWithTheScrollBar) {
  editor_->remplir({{"a", "1"}, {"b", "2"}});
  std::vector<int> seen;
  const auto change = prise_.Bdv_AbatOrgChg.onChange;
  prise_.Bdv_AbatOrgChg.onChange = [&] {
    seen = {prise_.Lst_DebAbatHOrgChg.listIndex(), prise_.Lst_FinAbatHOrgChg.listIndex()};
    change();
  };
  ASSERT_TRUE(user_.click(prise_.Lst_FinAbatHOrgChg, 1));
  EXPECT_PRED_FORMAT2(same, seen, (std::vector<int>{1, 1}));
  EXPECT_EQ(prise_.Bdv_AbatOrgChg.value(), 1);
}

}  // namespace
}  // namespace behaviour
