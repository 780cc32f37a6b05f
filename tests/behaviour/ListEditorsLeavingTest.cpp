// The question on leaving comes exactly while the pages of the list editors hold something else
// than what was read.
#include <functional>

#include "tests/behaviour/ScaleTest.h"

namespace behaviour {
namespace {

struct Zone {
  const char* name;
  const char* keys;    // typed into it
  const char* before;  // what it held
};

// A control that is asked to be left, and stays.
template <class Page>
class Leaving : public Page {
 protected:
  void expectQuestion(Caller at = Caller::here()) {
    const auto trace = called("expectQuestion", at);
    this->desktop_.answer(Answer::Cancel);
    ASSERT_TRUE(this->press("Cmd_Sortir"));
    this->expectBox("Voulez-vous enregistrer les modifications apportées à cet article ?",
                    Icon::Question, toolkit::Buttons::YesNoCancel);
    EXPECT_FALSE(this->control_->W_Sortir());
  }
  void expectNoQuestion(Caller at = Caller::here()) {
    const auto trace = called("expectNoQuestion", at);
    ASSERT_TRUE(this->press("Cmd_Sortir"));
    this->expectNoBox();
    EXPECT_TRUE(this->control_->W_Sortir());
    this->control_->setW_Sortir(false);
  }
  void expectAsked(const char* what, const std::function<void()>& deed,
                   const std::function<void()>& undo, Caller at = Caller::here()) {
    const auto trace = called("expectAsked", at);
    SCOPED_TRACE(what);
    expectNoQuestion();
    deed();
    expectQuestion();
    undo();
    expectNoQuestion();
  }
  void fill(std::string_view name, std::string_view keys, Caller at = Caller::here()) {
    const auto trace = called("fill", at);
    EXPECT_TRUE(this->user_->fill(this->box(name), keys)) << name;
  }
  void push(std::string_view name, Caller at = Caller::here()) {
    const auto trace = called("push", at);
    EXPECT_TRUE(this->press(name)) << name;
  }
  void toggle(std::string_view name, Caller at = Caller::here()) {
    const auto trace = called("toggle", at);
    EXPECT_TRUE(this->user_->click(this->template child<CheckBox>(name))) << name;
  }
  void choose(std::string_view name, Caller at = Caller::here()) {
    const auto trace = called("choose", at);
    EXPECT_TRUE(this->user_->click(this->option(name))) << name;
    this->desktop_.takeBoxes();
  }
  // Presses a button whose question is answered.
  void answered(std::string_view name, Answer answer, Caller at = Caller::here()) {
    const auto trace = called("answered", at);
    this->desktop_.answer(answer);
    push(name);
    EXPECT_PRED_FORMAT2(boxCount, this->desktop_.takeBoxes(), 1U);
  }
};

class LeavingCoverage : public Leaving<Coverage> {
 protected:
  LeavingCoverage() {
    putDeductions({{"0,00", "10,00", "50,00"}, {"10,00", "20,00", "25,50"}});
    show();
  }
  void changeRate(const char* zone, const char* keys, Caller at = Caller::here()) {
    const auto trace = called("changeRate", at);
    EXPECT_TRUE(openRate(0));
    fill(zone, keys);
    push("Cmd_OKTaux");
    expectNoBox();
  }
  void changeDeduction(const char* zone, const char* keys, Caller at = Caller::here()) {
    const auto trace = called("changeDeduction", at);
    EXPECT_TRUE(openDeduction(0));
    fill(zone, keys);
    push("Cmd_OKAbat");
    expectNoBox();
  }
};

TEST_F(LeavingCoverage, AsksNothingAboutRowsThatWereOnlyOpened) {
  ASSERT_TRUE(openRate(0));
  push("Cmd_AnnulerTaux");
  expectNoQuestion();
  ASSERT_TRUE(openRate(0));
  push("Cmd_OKTaux");
  expectNoQuestion();
  ASSERT_TRUE(openRate(0));
  answered("Cmd_SuppTaux", Answer::No);
  fill("Txt_TxRembOrgChg", "1");
  push("Cmd_AnnulerTaux");
  expectNoQuestion();
  push("Cmd_AjoutTaux");
  fill("Txt_DateRembOrgChg", "01022026");
  answered("Cmd_AnnulerTaux", Answer::Yes);
  expectNoQuestion();
  ASSERT_TRUE(openDeduction(1));
  push("Cmd_AnnulerAbat");
  expectNoQuestion();
  ASSERT_TRUE(openDeduction(1));
  push("Cmd_OKAbat");
  expectNoQuestion();
  push("Cmd_AjoutAbat");
  fill("Txt_FinAbatHOrgChg", "5");
  answered("Cmd_AnnulerAbat", Answer::Yes);
  expectNoQuestion();
}

TEST_F(LeavingCoverage, AsksAboutARateWhileItIsAnotherOne) {
  const Zone zones[] = {{"Txt_DateRembOrgChg", "02012026", "01012026"},
                        {"Txt_TxRembOrgChg", "19", "20"},
                        {"Txt_TxRembMajOrgChg", "26", "25"},
                        {"Txt_PrestServOrgChg", "14,5", "15"}};
  for (const Zone& zone : zones) {
    expectAsked(
        zone.name, [&] { changeRate(zone.name, zone.keys); },
        [&] { changeRate(zone.name, zone.before); });
  }
}

TEST_F(LeavingCoverage, AsksAboutADeductionWhileItIsAnotherOne) {
  // A range may only grow while the row selected among the rates leaves it out of the overlaps.
  ASSERT_TRUE(user_->click(list("Lst_DateRembOrgChg"), 0));
  const Zone zones[] = {{"Txt_DebAbatHOrgChg", "1", "0"},
                        {"Txt_FinAbatHOrgChg", "8", "10"},
                        {"Txt_PourcentAbatOrgChg", "7,5", "50"}};
  for (const Zone& zone : zones) {
    expectAsked(
        zone.name, [&] { changeDeduction(zone.name, zone.keys); },
        [&] { changeDeduction(zone.name, zone.before); });
  }
}

TEST_F(LeavingCoverage, AsksAboutRowsThatCameOrWent) {
  expectAsked(
      "a rate",
      [&] {
        addRate({"01022026", "21", "26", "16"});
      },
      [&] {
        ASSERT_TRUE(openRate(0));
        answered("Cmd_SuppTaux", Answer::Yes);
      });
  expectAsked(
      "a deduction",
      [&] {
        addDeduction({"30", "40", "5"});
      },
      [&] {
        ASSERT_TRUE(openDeduction(2));
        answered("Cmd_SuppAbat", Answer::Yes);
      });
  expectAsked(
      "a deduction less",
      [&] {
        ASSERT_TRUE(openDeduction(0));
        answered("Cmd_SuppAbat", Answer::Yes);
      },
      [&] {
        addDeduction({"0", "10", "50"});
      });
}

TEST_F(LeavingCoverage, AsksAboutTheInvoiceOptions) {
  for (const char* name : {"Cac_AjusTarif", "Cac_CoutGlobal"}) {
    expectAsked(
        name, [&] { toggle(name); }, [&] { toggle(name); });
  }
  expectAsked(
      "Txt_DesFacture", [&] { fill("Txt_DesFacture", "Aide"); },
      [&] { fill("Txt_DesFacture", ""); });
}

class LeavingScale : public Leaving<Scale> {
 protected:
  void change(const char* zone, const char* keys, Caller at = Caller::here()) {
    const auto trace = called("change", at);
    EXPECT_TRUE(open(0));
    fill(zone, keys);
    push("Cmd_OKPart");
    expectNoBox();
  }
};

TEST_F(LeavingScale, AsksNothingAboutRowsThatWereOnlyOpened) {
  ASSERT_TRUE(open(1));
  push("Cmd_AnnulerPart");
  expectNoQuestion();
  ASSERT_TRUE(open(1));
  push("Cmd_OKPart");
  expectNoQuestion();
  ASSERT_TRUE(open(1));
  answered("Cmd_SuppPart", Answer::No);
  fill("Txt_BaremCoursOrgChg", "9");
  push("Cmd_AnnulerPart");
  expectNoQuestion();
  answered("Cmd_NouveauBareme", Answer::No);
  expectNoQuestion();
}

TEST_F(LeavingScale, AsksAboutARowWhileItIsAnotherOne) {
  const Zone zones[] = {{"Txt_DebRevSeulOrgChg", "1", "0"},
                        {"Txt_FinRevSeulOrgChg", "400", "500"},
                        {"Txt_DebRevMenOrgChg", "1", "0"},
                        {"Txt_FinRevMenOrgChg", "700", "800"},
                        {"Txt_BaremCoursOrgChg", "1,61", "1,6"}};
  for (const Zone& zone : zones) {
    expectAsked(
        zone.name, [&] { change(zone.name, zone.keys); }, [&] { change(zone.name, zone.before); });
  }
}

TEST_F(LeavingScale, AsksAboutANewScaleUntilItIsCancelled) {
  expectAsked(
      "begun", [&] { answered("Cmd_NouveauBareme", Answer::Yes); },
      [&] { push("Cmd_NouveauBareme"); });
  expectAsked(
      "entered",
      [&] {
        beginScale("01022026");
        ASSERT_TRUE(open(0, "Lst_BaremCoursOrgChg"));
        fill("Txt_BaremCoursOrgChg", "9");
        push("Cmd_OKPart");
        add({"2000", "2500", "3000", "3500", "5"});
      },
      [&] { push("Cmd_NouveauBareme"); });
}

TEST_F(LeavingScale, AsksAboutTheChoices) {
  expectAsked(
      "Opt_Quotient", [&] { choose("Opt_Quotient"); }, [&] { choose("Opt_Ressource"); });
  expectAsked(
      "Opt_GestPartPourc", [&] { choose("Opt_GestPartPourc"); },
      [&] { choose("Opt_GestPartMont"); });
  expectAsked(
      "Cac_Abonnement", [&] { toggle("Cac_Abonnement"); }, [&] { toggle("Cac_Abonnement"); });
}

}  // namespace
}  // namespace behaviour
