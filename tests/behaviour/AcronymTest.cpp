#include "tests/behaviour/ControlTest.h"

namespace behaviour {
namespace {

class Acronym : public ControlTest {
 protected:
  Acronym() {
    fillThreeBodies(store_);
    start();
  }
  void search(std::string_view text, Caller at = Caller::here()) {
    const auto trace = called("search", at);
    user_->fill(sigles(), text);
    user_->press(toolkit::Key::Enter);
  }
};

TEST_F(Acronym, ChoosingALineLoadsItsBody) {
  user_->choose(sigles(), 1);
  EXPECT_EQ(code().text(), "002");
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Caisse régionale");
  EXPECT_EQ(sigles().text(), "CRAM");
  EXPECT_EQ(state(), kExisting);
}

TEST_F(Acronym, ChoosingTheBodyInHandKeepsWhatWasTyped) {
  user_->choose(sigles(), 1);
  user_->fill(box("Txt_RaisonOrgChg"), "Autre nom");
  store_.forgetCalls();
  for (const bool searched : {false, true}) {
    if (searched) search("CRA");
    user_->choose(sigles(), searched ? 0 : 1);
    EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Autre nom") << searched;
    EXPECT_EQ(code().text(), "002");
    EXPECT_EQ(sigles().text(), "CRAM");
    EXPECT_EQ(state(), kExisting);
  }
  user_->fill(code(), "00");
  user_->choose(sigles(), 0);
  EXPECT_EQ(code().text(), "002");
  EXPECT_TRUE(store_.calls(CallKind::ReadRecord).empty());
  press("Cmd_OK");
  EXPECT_EQ(attribute("002", 2), "Autre nom");
}

TEST_F(Acronym, EveryLineStandsForItsBody) {
  const std::vector<std::string> codes = {"003", "002", "001"};
  for (int line = 0; line < 3; ++line) {
    user_->choose(sigles(), line);
    EXPECT_EQ(code().text(), codes[static_cast<std::size_t>(line)]);
  }
}

TEST_F(Acronym, BodiesOfOneAcronymAreToldApart) {
  store_.put("ORGPRISECHARGE", "004", {"CAF", "Une autre"});
  control_->Remplir_OrgPriseChg();
  user_->choose(sigles(), 1);
  EXPECT_EQ(code().text(), "004");
  EXPECT_EQ(sigles().listIndex(), 1);
}

TEST_F(Acronym, EnterSearchesThePrefixInCapitals) {
  search("ca");
  store::DynamicArray request;
  request.set(1, "SSELECT ORGPRISECHARGE AVEC SigleOrgChg = \"CA]\" PAR SigleOrgChg");
  request.set(2, "ORGPRISECHARGE");
  request.set(3, "0 1");
  EXPECT_PRED_FORMAT2(same, store_.told(),
                      std::vector<std::string>{"ExecuteSentence " + request.text()});
  ASSERT_EQ(sigles().listCount(), 1);
  EXPECT_EQ(sigles().list(0), "CAF");
  EXPECT_EQ(sigles().text(), "");
  EXPECT_EQ(code().text(), "");
  expectNoBox();
}

TEST_F(Acronym, SeveralFoundAreListedOpenUnderWhatWasTyped) {
  lookUp("001");
  store_.forgetCalls();
  search("c");
  EXPECT_PRED_FORMAT2(same, linesOf(sigles()), (Lines{"CAF", "CRAM"}));
  EXPECT_EQ(sigles().text(), "c");
  EXPECT_EQ(sigles().listIndex(), -1);
  EXPECT_TRUE(sigles().opened());
  EXPECT_PRED_FORMAT1(hasFocus, sigles());
  EXPECT_EQ(code().text(), "");
  const Lines asked = store_.told();
  store_.forgetCalls();
  user_->press(toolkit::Key::Enter);
  EXPECT_PRED_FORMAT2(same, store_.told(), asked);
  EXPECT_EQ(sigles().text(), "c");
  user_->choose(sigles(), 1);
  EXPECT_EQ(code().text(), "002");
  EXPECT_FALSE(sigles().opened());
}

TEST_F(Acronym, EnterWithoutATextListsAll) {
  search("D");
  search("");
  EXPECT_PRED_FORMAT2(same, linesOf(sigles()), (Lines{"CAF", "CRAM", "DOMUS"}));
  EXPECT_TRUE(sigles().opened());
  user_->choose(sigles(), 1);
  EXPECT_EQ(code().text(), "002");
}

TEST_F(Acronym, TheOpenListIsClosedWhenTheComboIsLeft) {
  search("c");
  ASSERT_TRUE(sigles().opened());
  user_->go(code());
  EXPECT_FALSE(sigles().opened());
}

TEST_F(Acronym, AQuoteIsSentAsItIs) {
  search("a\"b");
  ASSERT_EQ(store_.calls().size(), 1U);
  EXPECT_EQ(store::DynamicArray(store_.calls()[0].text).get(1),
            "SSELECT ORGPRISECHARGE AVEC SigleOrgChg = \"A\"B]\" PAR SigleOrgChg");
}

TEST_F(Acronym, ALineOfTheSearchStandsForItsBody) {
  search("C");
  ASSERT_EQ(sigles().listCount(), 2);
  user_->choose(sigles(), 1);
  EXPECT_EQ(code().text(), "002");
  search("D");
  user_->choose(sigles(), 0);
  EXPECT_EQ(code().text(), "001");
}

TEST_F(Acronym, NothingFoundIsTold) {
  search("zz");
  expectBox("Aucun organisme de prise en charge commençant par ZZ", Icon::Exclamation);
  EXPECT_EQ(sigles().text(), "zz");
}

TEST_F(Acronym, AfterNothingFoundTheFullListStandsForItsBodies) {
  search("D");
  search("zz");
  ASSERT_EQ(sigles().listCount(), 3);
  user_->choose(sigles(), 0);
  EXPECT_EQ(code().text(), "003");
}

TEST_F(Acronym, AFailedSearchIsQuietAndLeavesNoEarlierAnswer) {
  search("D");
  store_.fail(CallKind::ExecuteSentence);
  EXPECT_NO_THROW(search("C"));
  expectNoBox();
  EXPECT_EQ(sigles().text(), "C");
  ASSERT_EQ(sigles().listCount(), 3);
  store_.stopFailing();
  user_->choose(sigles(), 0);
  EXPECT_EQ(code().text(), "003");
}

TEST_F(Acronym, KeysOfCode123AndAboveAreRefused) {
  user_->go(sigles());
  char32_t key = 123;
  EXPECT_EQ(sigles().userKeyPress(key), 0U);
  expectBox("La saisie de minuscule accentuée est interdite sur cette zone.", Icon::Exclamation);
  EXPECT_EQ(sigles().userKeyPress(U'é'), 0U);
  expectBox("La saisie de minuscule accentuée est interdite sur cette zone.", Icon::Exclamation);
  EXPECT_EQ(sigles().userKeyPress(122), 122U);
  EXPECT_EQ(sigles().userKeyPress(8), 8U);
  expectNoBox();
}

TEST_F(Acronym, AFailedRefillLeavesTheListEmpty) {
  store_.fail(CallKind::ExecuteSentence);
  EXPECT_THROW(control_->Remplir_OrgPriseChg(), store::StoreError);
  EXPECT_EQ(sigles().listCount(), 0);
}

TEST_F(Acronym, AnEmptyFileGivesAnEmptyList) {
  for (const char* body : {"001", "002", "003"}) store_.erase("ORGPRISECHARGE", body);
  control_->Remplir_OrgPriseChg();
  EXPECT_EQ(sigles().listCount(), 0);
  EXPECT_EQ(state(), kEmpty);
}

TEST_F(Acronym, TheAcronymInHandComesBackWhenTheComboIsLeft) {
  lookUp("001");
  EXPECT_EQ(sigles().text(), "DOMUS");
  user_->fill(sigles(), "CR");
  user_->go(box("Txt_RaisonOrgChg"));
  EXPECT_EQ(sigles().text(), "DOMUS");
}

TEST_F(Acronym, ASearchWhileABodyIsShownKeepsItInHand) {
  lookUp("001");
  search("C");
  EXPECT_EQ(code().text(), "");
  EXPECT_EQ(state(), kExisting);
  user_->go(box("Txt_RaisonOrgChg"));
  user_->fill(box("Txt_RaisonOrgChg"), "Domus");
  press("Cmd_OK");
  EXPECT_EQ(attribute("001", attribut::RaisonOrgChg), "Domus");
}

TEST_F(Acronym, CancellingBringsTheFullListBackWithoutAskingTheStore) {
  search("D");
  user_->choose(sigles(), 0);
  store_.forgetCalls();
  press("Cmd_Annuler");
  EXPECT_EQ(sigles().listCount(), 3);
  EXPECT_TRUE(store_.calls().empty());
  user_->choose(sigles(), 0);
  EXPECT_EQ(code().text(), "003");
}

TEST_F(Acronym, LettersTypedInTheNewAcronymBecomeCapitals) {
  press("Cmd_Ajouter");
  user_->type("domUs 2");
  EXPECT_EQ(box("Txt_SigleOrgChg").text(), "DOMUS 2");
  user_->type("é");
  expectBox("La saisie de minuscule accentuée est interdite sur cette zone.", Icon::Exclamation);
  EXPECT_EQ(box("Txt_SigleOrgChg").text(), "DOMUS 2");
}

TEST_F(Acronym, LettersPastedInTheNewAcronymBecomeCapitals) {
  press("Cmd_Ajouter");
  user_->type("ab");
  user_->paste("œuvre");
  EXPECT_EQ(box("Txt_SigleOrgChg").text(), "ABŒUVRE");
}

}  // namespace
}  // namespace behaviour
