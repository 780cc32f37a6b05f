// The covered activities page: legal entity, possible and covered activities, hours.
#include "tests/behaviour/ControlTest.h"
#include "text/Utf8.h"
#include "toolkit/Frame.h"

namespace behaviour {
namespace {

constexpr const char* kEntiteInconnue = "Cette entité juridique n'existe pas.";
constexpr const char* kCompte = "6110000000";

std::string request(std::string_view sentence, std::string_view file, std::string_view columns) {
  store::DynamicArray request;
  request.set(1, sentence);
  request.set(2, file);
  request.set(3, columns);
  return request.text();
}

void putActivity(testing_support::MemoryStore& store, std::string_view code, std::string_view label,
                 std::string_view type) {
  store.put("ACTIVITES", code, {label, code.substr(0, 3)});
  if (!type.empty()) store.set("ACTIVITES", code, store::activites::TypeActivite, type);
  store.set("ACTIVITES", code, store::activites::Service, "SAAD");
}

// Entity 010 has activities of every kind, 020 of one, 030 none.
void fillActivities(testing_support::MemoryStore& store) {
  store.put("ASSOCIATION", "020", {"AIDE AUX FOYERS"});
  store.put("ASSOCIATION", "030", {"MAISON DES AINES"});
  putActivity(store, "010P02", "Ménage", "P");
  putActivity(store, "010P03", "Accompagnement véhiculé A", "P");
  putActivity(store, "010M01", "Garde à domicile", "M");
  putActivity(store, "010M02", "Nuit", "M");
  putActivity(store, "010I01", "Téléassistance", "I");
  putActivity(store, "010S01", "Soins", "S");
  putActivity(store, "010X01", "Inconnue", "X");
  putActivity(store, "010N01", "Sans type", "");
  putActivity(store, "020P01", "Ménage", "P");
  putActivity(store, "020P02", "Repas", "P");
}

const Lines kActivitesDe010{"Accompagnement véhic Prestataire",
                            "Aide ménagère        Prestataire",
                            "Garde à domicile     Mandataire",
                            "Inconnue             X",
                            "Ménage               Prestataire",
                            "Nuit                 Mandataire",
                            "Sans type            ",
                            "Soins                SSIAD",
                            "Téléassistance       Intermédiaire"};
const Lines kActivitesDe020{"Ménage               Prestataire", "Repas                Prestataire"};

class ActivitiesPage : public ControlTest {
 protected:
  ActivitiesPage() {
    fillThreeBodies(store_);
    fillActivities(store_);
    start();
  }
  // Shows body 001 with these attributes, this page in front.
  void show(std::initializer_list<std::pair<int, std::string>> attributes = {},
            Caller at = Caller::here()) {
    const auto trace = called("show", at);
    for (const auto& [number, text] : attributes) store_.set("ORGPRISECHARGE", "001", number, text);
    if (!code().text().empty()) press("Cmd_Annuler");
    lookUp("001");
    user_->click(tabs(), kActivites);
    store_.forgetCalls();
  }
  // The same without entity and activities.
  void showBare(Caller at = Caller::here()) {
    show({{attribut::Entite, ""}, {attribut::CodActSelect, ""}}, at);
  }
  void showCovered(const Lines& codes, Caller at = Caller::here()) {
    show({{attribut::CodActSelect, values(codes)}}, at);
  }

  TextBox& entity() { return box("Txt_Entite"); }
  ComboBox& names() { return child<ComboBox>("Cbo_Entite"); }
  ListBox& possible() { return child<ListBox>("Lst_Activite"); }
  ListBox& covered() { return child<ListBox>("Lst_ActSelect"); }
  ListBox& codes() { return child<ListBox>("Lst_CodActSelect"); }
  ListBox& types() { return child<ListBox>("Lst_TypeAct"); }
  toolkit::Frame& hours() { return child<toolkit::Frame>("Cdr_GestionExclu"); }
  bool movesEnabled(Caller at = Caller::here()) {
    const auto trace = called("movesEnabled", at);
    EXPECT_EQ(button("Cmd_PasseDroit").enabled(), button("Cmd_PasseGauche").enabled());
    return button("Cmd_PasseDroit").enabled();
  }
  // Which hours are set, and " -" when those of the week cannot be chosen.
  std::string hoursShown() {
    std::string shown;
    for (const char* name : {"Opt_Totalite", "Opt_DimJF", "Opt_Semaine"}) {
      if (option(name).value()) shown += name + std::string_view("Opt_").size();
    }
    return shown + (option("Opt_Semaine").enabled() ? "" : " -");
  }

  int lineOf(ListBox& list, std::string_view label) {
    for (int line = 0; line < list.listCount(); ++line) {
      if (list.list(line).starts_with(label)) return line;
    }
    return -1;
  }
  // The user selects the lines of these labels: a click, then clicks with Ctrl.
  void select(ListBox& list, const Lines& labels, Caller at = Caller::here()) {
    const auto trace = called("select", at);
    bool first = true;
    for (const std::string& label : labels) {
      ASSERT_TRUE(user_->click(list, lineOf(list, label), !first)) << label;
      first = false;
    }
  }
  Lines selectionOf(const ListBox& list) {
    Lines lines;
    for (int line = 0; line < list.listCount(); ++line) {
      if (list.selected(line)) lines.push_back(list.list(line));
    }
    return lines;
  }
  void moveRight(const Lines& labels, Caller at = Caller::here()) {
    const auto trace = called("moveRight", at);
    select(possible(), labels);
    ASSERT_TRUE(press("Cmd_PasseDroit"));
  }
  void moveLeft(const Lines& labels, Caller at = Caller::here()) {
    const auto trace = called("moveLeft", at);
    select(covered(), labels);
    ASSERT_TRUE(press("Cmd_PasseGauche"));
  }
  // The three lists of the covered activities, line for line.
  void expectCovered(const Lines& expectedCodes, const Lines& expectedTypes,
                     const Lines& expectedLines, Caller at = Caller::here()) {
    const auto trace = called("expectCovered", at);
    EXPECT_PRED_FORMAT2(same, linesOf(codes()), expectedCodes);
    EXPECT_PRED_FORMAT2(same, linesOf(types()), expectedTypes);
    EXPECT_PRED_FORMAT2(same, linesOf(covered()), expectedLines);
  }
  void expectNoEntity(Caller at = Caller::here()) { expectNoEntityBut({}, at); }
  // The activities covered before are still there.
  void expectNoEntityBut(const Lines& kept, Caller at = Caller::here()) {
    const auto trace = called("expectNoEntityBut", at);
    EXPECT_EQ(names().text(), "");
    EXPECT_EQ(possible().listCount(), 0);
    EXPECT_PRED_FORMAT2(same, linesOf(codes()), kept);
    EXPECT_EQ(types().listCount(), codes().listCount());
    EXPECT_EQ(covered().listCount(), codes().listCount());
    EXPECT_FALSE(movesEnabled());
    EXPECT_EQ(currentEntity(), "");
  }
  // The entity in whose chart an account is looked up; "" when no account can be.
  std::string currentEntity(Caller at = Caller::here()) {
    const auto trace = called("currentEntity", at);
    user_->click(tabs(), kPriseEnCharge);
    store_.forgetCalls();
    user_->fill(box("Txt_CodeCptPrestationService"), kCompte);
    desktop_.takeBoxes();
    user_->click(tabs(), kActivites);
    for (const auto& call : store_.calls(CallKind::ReadRecord)) {
      if (call.file != "PLANCOMPTABLE") continue;
      EXPECT_TRUE(call.id.ends_with(kCompte)) << call.id;
      return call.id.substr(0, call.id.size() - std::string_view(kCompte).size());
    }
    return "";
  }
  std::string saved(int number) {
    press("Cmd_OK");
    expectNoBox();
    return attribute("001", number);
  }
};

// --- Entity by code

TEST_F(ActivitiesPage, ATypedCodeChoosesTheEntity) {
  showBare();
  expectNoEntity();
  user_->fill(entity(), "020");
  expectNoBox();
  EXPECT_EQ(names().text(), "AIDE AUX FOYERS");
  EXPECT_PRED_FORMAT2(same, linesOf(possible()), kActivitesDe020);
  expectCovered({}, {}, {});
  EXPECT_TRUE(movesEnabled());
  EXPECT_EQ(currentEntity(), "020");
}

TEST_F(ActivitiesPage, ActivitiesAreReadBySentenceWithCodeLabelAndType) {
  showBare();
  user_->fill(entity(), "020");
  const auto calls = store_.calls(CallKind::ExecuteSentence);
  ASSERT_EQ(calls.size(), 1U);
  EXPECT_EQ(calls[0].text, request("SSELECT ACTIVITES AVEC CodAssoActivite = \"020\" PAR 1 ",
                                   "ACTIVITES", "0 1 12"));
}

TEST_F(ActivitiesPage, AnIncompleteCodeReadsNothingAndKeepsWhatIsCovered) {
  show();
  EXPECT_EQ(currentEntity(), "010");
  user_->go(entity());
  store_.forgetCalls();
  entity().userSelect(2, 1);
  user_->type("\b");
  EXPECT_EQ(entity().text(), "01");
  expectNoBox();
  EXPECT_TRUE(store_.calls().empty());
  expectNoEntityBut({"010P01"});
}

TEST_F(ActivitiesPage, AnIncompleteCodeIsRefusedOnLeaving) {
  show();
  user_->fill(entity(), "01");
  EXPECT_FALSE(press("Cmd_Annuler"));
  expectBox(kEntiteInconnue, Icon::Exclamation);
  EXPECT_EQ(entity().text(), "");
  EXPECT_PRED_FORMAT1(hasFocus, entity());
  EXPECT_EQ(tabs().tab(), kActivites);
  EXPECT_EQ(state(), kExisting);
  expectNoEntityBut({"010P01"});
  EXPECT_TRUE(press("Cmd_Annuler"));
  EXPECT_EQ(state(), kEmpty);
  expectNoBox();
}

TEST_F(ActivitiesPage, AnEmptiedCodeMayBeLeft) {
  for (const char* typed : {"", " "}) {
    show();
    user_->fill(entity(), typed);
    EXPECT_TRUE(user_->go(option("Opt_Totalite")));
    expectNoBox();
    expectNoEntityBut({"010P01"});
  }
}

TEST_F(ActivitiesPage, AStoredCodeThatIsNoEntitysMayBeLeftUntouched) {
  for (const char* stored : {"77", "777"}) {
    show({{attribut::Entite, stored}});
    user_->go(entity());
    EXPECT_TRUE(user_->go(option("Opt_Totalite")));
    expectNoBox();
    EXPECT_EQ(entity().text(), stored);
  }
}

TEST_F(ActivitiesPage, TheSameEntityChosenAgainKeepsWhatIsCovered) {
  showCovered({"010P01", "010P02"});
  const Lines before = linesOf(covered());
  const auto expectKept = [&] {
    EXPECT_PRED_FORMAT2(same, linesOf(possible()), kActivitesDe010);
    expectCovered({"010P01", "010P02"}, {"P", "P"}, before);
    EXPECT_EQ(names().text(), "AIDE DU VAL");
    EXPECT_TRUE(movesEnabled());
    EXPECT_EQ(currentEntity(), "010");
  };
  user_->fill(entity(), "010");
  expectKept();
  user_->fill(entity(), "01");
  user_->go(possible());
  expectBox(kEntiteInconnue, Icon::Exclamation);
  user_->choose(names(), 1);
  expectKept();
  EXPECT_EQ(saved(attribut::CodActSelect), values({"010P01", "010P02"}));
}

TEST_F(ActivitiesPage, AnotherEntityClearsWhatWasCovered) {
  showCovered({"010P01", "010P02"});
  user_->fill(entity(), "020");
  EXPECT_PRED_FORMAT2(same, linesOf(possible()), kActivitesDe020);
  expectCovered({}, {}, {});
  user_->fill(entity(), "010");
  EXPECT_PRED_FORMAT2(same, linesOf(possible()), kActivitesDe010);
  expectCovered({}, {}, {});
}

TEST_F(ActivitiesPage, AnUnknownCodeIsRefused) {
  show();
  user_->fill(entity(), "777");
  expectBox(kEntiteInconnue, Icon::Exclamation);
  EXPECT_EQ(entity().text(), "");
  EXPECT_PRED_FORMAT1(hasFocus, entity());
  EXPECT_EQ(tabs().tab(), kActivites);
  expectNoEntityBut({"010P01"});
}

TEST_F(ActivitiesPage, AnUnknownCodeHasClearedTheEntityBeforeItIsTold) {
  show();
  bool cleared = false;
  desktop_.onBox = [&](const toolkit::headless::Entry&) {
    cleared = names().text().empty() && possible().listCount() == 0;
  };
  user_->go(entity());
  entity().userSelect(0, 3);
  user_->paste("777");
  EXPECT_TRUE(cleared);
}

TEST_F(ActivitiesPage, ACodeOfThreeAccentedLettersIsComplete) {
  store_.put("ASSOCIATION", "ÉÀÇ", {"ACCENTS"});
  showBare();
  user_->fill(entity(), "ÉÀÇ");
  EXPECT_EQ(names().text(), "ACCENTS");
}

TEST_F(ActivitiesPage, ACodeTakesThreeCharacters) {
  showBare();
  user_->fill(entity(), "0209");
  EXPECT_EQ(entity().text(), "020");
  EXPECT_EQ(names().text(), "AIDE AUX FOYERS");
}

TEST_F(ActivitiesPage, AnEntityWithoutActivitiesHasAnEmptyList) {
  showBare();
  user_->fill(entity(), "030");
  EXPECT_EQ(names().text(), "MAISON DES AINES");
  EXPECT_EQ(possible().listCount(), 0);
  EXPECT_TRUE(movesEnabled());
  press("Cmd_PasseDroit");
  press("Cmd_PasseGauche");
  expectCovered({}, {}, {});
  expectNoBox();
}

TEST_F(ActivitiesPage, AStoreThatCannotReadTheEntityLeavesTheCodeAndNoEntity) {
  show();
  store_.fail(CallKind::ReadRecord, "ASSOCIATION");
  user_->fill(entity(), "020");
  EXPECT_TRUE(user_->go(option("Opt_Totalite")));
  expectNoBox();
  EXPECT_EQ(entity().text(), "020");
  expectNoEntityBut({"010P01"});
}

TEST_F(ActivitiesPage, ACodeThatCouldNotBeReadIsReadAgainOnLeaving) {
  show();
  store_.fail(CallKind::ReadRecord, "ASSOCIATION");
  user_->fill(entity(), "020");
  store_.stopFailing();
  EXPECT_TRUE(user_->go(option("Opt_Totalite")));
  EXPECT_EQ(names().text(), "AIDE AUX FOYERS");
  EXPECT_PRED_FORMAT2(same, linesOf(possible()), kActivitesDe020);
  expectCovered({}, {}, {});
  store_.fail(CallKind::ReadRecord, "ASSOCIATION");
  user_->fill(entity(), "777");
  store_.stopFailing();
  EXPECT_FALSE(user_->go(option("Opt_Totalite")));
  expectBox(kEntiteInconnue, Icon::Exclamation);
  EXPECT_PRED_FORMAT1(hasFocus, entity());
}

TEST_F(ActivitiesPage, AStoreThatCannotListTheActivitiesLeavesTheCodeAndNoEntity) {
  show();
  store_.fail(CallKind::ExecuteSentence, "ACTIVITES");
  user_->fill(entity(), "020");
  user_->go(option("Opt_Totalite"));
  expectNoBox();
  EXPECT_EQ(entity().text(), "020");
  expectNoEntityBut({"010P01"});
}

TEST_F(ActivitiesPage, AnEntityThatCouldNotBeReadCanBeChosenFromTheList) {
  showBare();
  store_.fail(CallKind::ReadRecord, "ASSOCIATION");
  user_->fill(entity(), "010");
  store_.stopFailing();
  user_->choose(names(), 1);
  EXPECT_EQ(entity().text(), "010");
  EXPECT_EQ(names().text(), "AIDE DU VAL");
  EXPECT_PRED_FORMAT2(same, linesOf(possible()), kActivitesDe010);
}

// --- Entity by name

TEST_F(ActivitiesPage, EnterSearchesTheNamesThatBeginWithTheTextInCapitals) {
  showBare();
  user_->fill(names(), "aide d");
  EXPECT_TRUE(store_.calls().empty());
  user_->type("\r");
  ASSERT_EQ(store_.calls().size(), 1U);
  EXPECT_EQ(store_.calls()[0].text,
            request("SSELECT ASSOCIATION AVEC 1 = \"AIDE D]\" PAR 1", "ASSOCIATION", "0 1"));
  expectNoBox();
  EXPECT_PRED_FORMAT2(same, linesOf(names()), Lines{"AIDE DU VAL"});
  EXPECT_EQ(names().text(), "aide d");
  EXPECT_EQ(entity().text(), "");
}

TEST_F(ActivitiesPage, FoundNamesComeInTheOrderOfTheStoreAndOneIsChosen) {
  showBare();
  user_->fill(names(), "AIDE");
  user_->type("\r");
  EXPECT_PRED_FORMAT2(same, linesOf(names()), (Lines{"AIDE AUX FOYERS", "AIDE DU VAL"}));
  EXPECT_EQ(names().text(), "AIDE");
  EXPECT_TRUE(names().opened());
  EXPECT_PRED_FORMAT1(hasFocus, names());
  ASSERT_EQ(store_.calls().size(), 1U);
  user_->type("\r");
  ASSERT_EQ(store_.calls().size(), 2U);
  EXPECT_EQ(store_.calls()[1].text, store_.calls()[0].text);
  ASSERT_TRUE(user_->choose(names(), 1));
  EXPECT_EQ(names().text(), "AIDE DU VAL");
  EXPECT_EQ(entity().text(), "010");
  EXPECT_PRED_FORMAT2(same, linesOf(possible()), kActivitesDe010);
}

TEST_F(ActivitiesPage, NoNameFoundIsToldWithTheTextAsTyped) {
  show();
  user_->fill(names(), "zebre");
  user_->type("\r");
  expectBox("Aucune entité juridique commençant par zebre", Icon::Exclamation);
  EXPECT_EQ(names().text(), "zebre");
  EXPECT_PRED_FORMAT1(hasFocus, names());
  EXPECT_EQ(entity().text(), "010");
  expectCovered({"010P01"}, {"P"}, {"Aide ménagère        Prestataire"});
}

TEST_F(ActivitiesPage, NoNameFoundLeavesTheListAsItWas) {
  show();
  user_->open(names());
  user_->fill(names(), "ZEBRE");
  user_->type("\r");
  expectBox("Aucune entité juridique commençant par ZEBRE", Icon::Exclamation);
  EXPECT_PRED_FORMAT2(same, linesOf(names()),
                      (Lines{"AIDE AUX FOYERS", "AIDE DU VAL", "MAISON DES AINES"}));
  names().userChoose(0);
  EXPECT_EQ(entity().text(), "020");
}

TEST_F(ActivitiesPage, ANameMayHoldAQuote) {
  showBare();
  user_->fill(names(), "A\"B");
  user_->type("\r");
  EXPECT_EQ(store_.calls()[0].text,
            request("SSELECT ASSOCIATION AVEC 1 = \"A\"B]\" PAR 1", "ASSOCIATION", "0 1"));
  expectBox("Aucune entité juridique commençant par A\"B", Icon::Exclamation);
}

TEST_F(ActivitiesPage, KeysFrom123OnAreRefusedInTheName) {
  showBare();
  for (const char* key : {"é", "{", "É", "ÿ", "œ"}) {
    user_->fill(names(), "AI");
    user_->type(key);
    expectBox("La saisie de minuscule accentuée est interdite sur cette zone.", Icon::Exclamation);
    EXPECT_EQ(names().text(), "AI") << key;
  }
  user_->fill(names(), "azAZ09 z");
  EXPECT_EQ(names().text(), "azAZ09 z");
  expectNoBox();
}

TEST_F(ActivitiesPage, ASearchThatFailsIsTrapped) {
  show();
  user_->open(names());
  user_->fill(names(), "AIDE");
  store_.fail(CallKind::ExecuteSentence, "ASSOCIATION");
  EXPECT_NO_THROW(user_->type("\r"));
  expectNoBox();
  EXPECT_EQ(names().text(), "AIDE");
  EXPECT_EQ(names().listCount(), 3);
  EXPECT_EQ(entity().text(), "010");
}

TEST_F(ActivitiesPage, LeavingASearchBringsTheChosenNameBack) {
  show();
  user_->fill(names(), "MAISON");
  user_->type("\r");
  user_->go(possible());
  EXPECT_EQ(names().text(), "AIDE DU VAL");
  EXPECT_EQ(entity().text(), "010");
  expectCovered({"010P01"}, {"P"}, {"Aide ménagère        Prestataire"});
}

TEST_F(ActivitiesPage, LeavingASearchWithoutEntityLeavesNoName) {
  showBare();
  user_->fill(names(), "AIDE DU VAL");
  user_->go(entity());
  EXPECT_EQ(names().text(), "");
}

TEST_F(ActivitiesPage, AnEmptiedNameComesBackOnLeaving) {
  show();
  user_->fill(names(), "");
  user_->go(possible());
  EXPECT_EQ(names().text(), "AIDE DU VAL");
  EXPECT_EQ(entity().text(), "010");
}

// --- Entity from the opened list

TEST_F(ActivitiesPage, OpeningTheListListsAllEntities) {
  showBare();
  user_->open(names());
  ASSERT_EQ(store_.calls().size(), 1U);
  EXPECT_EQ(store_.calls()[0].text, request("SSELECT ASSOCIATION PAR 1", "ASSOCIATION", "0 1"));
  EXPECT_PRED_FORMAT2(same, linesOf(names()),
                      (Lines{"AIDE AUX FOYERS", "AIDE DU VAL", "MAISON DES AINES"}));
  EXPECT_EQ(entity().text(), "");
}

TEST_F(ActivitiesPage, OpeningTheListAfterASearchListsAllAgain) {
  showBare();
  user_->fill(names(), "MAISON");
  user_->type("\r");
  EXPECT_EQ(names().listCount(), 1);
  user_->open(names());
  EXPECT_EQ(names().listCount(), 3);
  EXPECT_EQ(names().text(), "MAISON");
}

TEST_F(ActivitiesPage, OpeningAndClosingTheListLeavesEverythingAsItWas) {
  show();
  user_->open(names());
  EXPECT_EQ(names().text(), "AIDE DU VAL");
  user_->go(possible());
  EXPECT_EQ(names().text(), "AIDE DU VAL");
  EXPECT_EQ(entity().text(), "010");
  EXPECT_PRED_FORMAT2(same, linesOf(possible()), kActivitesDe010);
  expectCovered({"010P01"}, {"P"}, {"Aide ménagère        Prestataire"});
  EXPECT_EQ(currentEntity(), "010");
  showBare();
  user_->fill(names(), "AI");
  user_->open(names());
  EXPECT_EQ(names().text(), "AI");
}

TEST_F(ActivitiesPage, ChoosingFromTheListChoosesTheEntity) {
  showBare();
  user_->choose(names(), 0);
  EXPECT_EQ(entity().text(), "020");
  EXPECT_EQ(names().text(), "AIDE AUX FOYERS");
  EXPECT_PRED_FORMAT2(same, linesOf(possible()), kActivitesDe020);
  EXPECT_TRUE(movesEnabled());
  EXPECT_EQ(currentEntity(), "020");
}

TEST_F(ActivitiesPage, ChoosingTheSameEntityAgainKeepsWhatIsCovered) {
  show();
  user_->choose(names(), 1);
  EXPECT_EQ(entity().text(), "010");
  expectCovered({"010P01"}, {"P"}, {"Aide ménagère        Prestataire"});
}

TEST_F(ActivitiesPage, OfTwoEntitiesWithOneNameTheChosenOneCounts) {
  store_.put("ASSOCIATION", "015", {"AIDE DU VAL"});
  showBare();
  user_->choose(names(), 2);
  EXPECT_EQ(entity().text(), "015");
  EXPECT_EQ(names().listIndex(), 2);
  user_->choose(names(), 1);
  EXPECT_EQ(entity().text(), "010");
}

TEST_F(ActivitiesPage, AnEntityThatHasGoneSinceItWasListedIsRefused) {
  showBare();
  user_->open(names());
  store_.erase("ASSOCIATION", "020");
  names().userChoose(0);
  expectBox(kEntiteInconnue, Icon::Exclamation);
  EXPECT_EQ(entity().text(), "");
  EXPECT_PRED_FORMAT1(hasFocus, entity());
  expectNoEntity();
}

TEST_F(ActivitiesPage, AListThatCannotBeReadLeavesEverythingAsItWas) {
  show();
  store_.fail(CallKind::ExecuteSentence, "ASSOCIATION");
  EXPECT_NO_THROW(user_->open(names()));
  expectNoBox();
  EXPECT_EQ(names().text(), "AIDE DU VAL");
  EXPECT_EQ(names().listCount(), 0);
  EXPECT_PRED_FORMAT2(same, linesOf(possible()), kActivitesDe010);
}

TEST_F(ActivitiesPage, AnEmptyListOfEntitiesOpensEmpty) {
  showBare();
  for (const std::string& id : store_.ids("ASSOCIATION")) store_.erase("ASSOCIATION", id);
  user_->open(names());
  EXPECT_EQ(names().listCount(), 0);
  expectNoBox();
}

TEST_F(ActivitiesPage, TheHostCanHaveTheEntitiesListed) {
  show();
  control_->Remplir_Entite();
  EXPECT_PRED_FORMAT2(same, linesOf(names()),
                      (Lines{"AIDE AUX FOYERS", "AIDE DU VAL", "MAISON DES AINES"}));
  EXPECT_EQ(names().text(), "AIDE DU VAL");
  store_.fail(CallKind::ExecuteSentence, "ASSOCIATION");
  EXPECT_THROW(control_->Remplir_Entite(), store::StoreError);
  EXPECT_EQ(names().listCount(), 3);
  EXPECT_EQ(names().text(), "AIDE DU VAL");
}

// --- Lines

TEST_F(ActivitiesPage, ALineIsTwentyCharactersABlankAndTheTypesName) {
  show();
  EXPECT_PRED_FORMAT2(same, linesOf(possible()), kActivitesDe010);
  for (const std::string& line : linesOf(possible())) {
    EXPECT_EQ(text::mid(line, 21, 1), " ") << line;
  }
}

TEST_F(ActivitiesPage, LabelsAreCutAndPaddedByCharactersNotBytes) {
  const std::vector<std::pair<std::string, std::string>> labels{
      {"", "                     SSIAD"},
      {"à", "à                    SSIAD"},
      {"éàçêëîïôöùûüœæÿÉÀÇÊ", "éàçêëîïôöùûüœæÿÉÀÇÊ  SSIAD"},
      {"éàçêëîïôöùûüœæÿÉÀÇÊË", "éàçêëîïôöùûüœæÿÉÀÇÊË SSIAD"},
      {"éàçêëîïôöùûüœæÿÉÀÇÊËÎ", "éàçêëîïôöùûüœæÿÉÀÇÊË SSIAD"},
      {"1234567890123456789012345", "12345678901234567890 SSIAD"}};
  for (const auto& [label, line] : labels) {
    store_.answer("SSELECT ACTIVITES AVEC CodAssoActivite = \"030\" PAR 1 ",
                  {{"030S01", label, "S"}});
    showBare();
    user_->fill(entity(), "030");
    EXPECT_PRED_FORMAT2(same, linesOf(possible()), Lines{line});
    moveRight({line});
    expectCovered({"030S01"}, {"S"}, {line});
  }
}

TEST_F(ActivitiesPage, TheActivityListsAreInAFixedPitchFont) {
  EXPECT_EQ(possible().font().name, "Courier New");
  EXPECT_EQ(covered().font(), possible().font());
  EXPECT_FALSE(codes().visible());
  EXPECT_EQ(possible().selection(), ListBox::Selection::Extended);
  EXPECT_EQ(covered().selection(), ListBox::Selection::Extended);
}

TEST_F(ActivitiesPage, AnswersWithMissingOrSurplusColumnsAreTakenAsTheyAre) {
  store_.answer("SSELECT ACTIVITES AVEC CodAssoActivite = \"030\" PAR 1 ",
                {{"030A"}, {"030B", "Sans type"}, {"030C", "Trop", "P", "x"}, {"", "", ""}, {}});
  showBare();
  user_->fill(entity(), "030");
  EXPECT_PRED_FORMAT2(same, linesOf(possible()),
                      (Lines{"                     ", "Sans type            ",
                             "Trop                 Prestataire", "                     "}));
  user_->click(possible(), 2);
  press("Cmd_PasseDroit");
  expectCovered({"030C"}, {"P"}, {"Trop                 Prestataire"});
}

TEST_F(ActivitiesPage, AnAnswerWhoseFirstRecordIsEmptyIsNone) {
  store_.answer("SSELECT ACTIVITES AVEC CodAssoActivite = \"030\" PAR 1 ",
                {{""}, {"030B", "Deuxième", "P"}});
  showBare();
  user_->fill(entity(), "030");
  EXPECT_EQ(possible().listCount(), 0);
  EXPECT_TRUE(movesEnabled());
}

TEST_F(ActivitiesPage, TheHostCanHaveTheActivitiesListedAgain) {
  show();
  putActivity(store_, "010P09", "Bricolage", "P");
  control_->Remplir_Liste_Activite();
  EXPECT_EQ(possible().listCount(), 10);
  EXPECT_EQ(possible().list(2), "Bricolage            Prestataire");
  expectCovered({}, {}, {});
  store_.fail(CallKind::ExecuteSentence, "ACTIVITES");
  EXPECT_THROW(control_->Remplir_Liste_Activite(), store::StoreError);
  EXPECT_EQ(possible().listCount(), 0);
}

// --- Move right

TEST_F(ActivitiesPage, ADoubleClickCoversAnActivity) {
  showCovered({});
  ASSERT_TRUE(user_->dblClick(possible(), lineOf(possible(), "Aide")));
  expectCovered({"010P01"}, {"P"}, {"Aide ménagère        Prestataire"});
}

TEST_F(ActivitiesPage, TheButtonCoversSeveralInTheOrderOfTheList) {
  showCovered({});
  moveRight({"Ménage", "Accompagnement", "Aide"});
  expectCovered({"010P03", "010P01", "010P02"}, {"P", "P", "P"},
                {"Accompagnement véhic Prestataire", "Aide ménagère        Prestataire",
                 "Ménage               Prestataire"});
  EXPECT_PRED_FORMAT2(same, selectionOf(possible()), Lines{});
  EXPECT_PRED_FORMAT2(same, linesOf(possible()), kActivitesDe010);
}

TEST_F(ActivitiesPage, MovingNothingChangesNothing) {
  show();
  press("Cmd_PasseDroit");
  press("Cmd_PasseGauche");
  expectCovered({"010P01"}, {"P"}, {"Aide ménagère        Prestataire"});
}

TEST_F(ActivitiesPage, TheSameActivityIsCoveredOnce) {
  showCovered({});
  moveRight({"Aide"});
  moveRight({"Aide", "Ménage"});
  user_->dblClick(possible(), lineOf(possible(), "Ménage"));
  expectCovered({"010P01", "010P02"}, {"P", "P"},
                {"Aide ménagère        Prestataire", "Ménage               Prestataire"});
}

TEST_F(ActivitiesPage, AnActivityListedTwiceIsCoveredOnce) {
  store_.answer("SSELECT ACTIVITES AVEC CodAssoActivite = \"030\" PAR 1 ",
                {{"030P01", "Repas", "P"}, {"030P01", "Repas", "P"}});
  showBare();
  user_->fill(entity(), "030");
  user_->click(possible(), 0);
  user_->click(possible(), 1, false, true);
  press("Cmd_PasseDroit");
  expectCovered({"030P01"}, {"P"}, {"Repas                Prestataire"});
}

TEST_F(ActivitiesPage, ActivitiesWithOneLabelAreTwo) {
  putActivity(store_, "010P08", "Ménage", "P");
  showCovered({});
  const int first = lineOf(possible(), "Ménage");
  user_->click(possible(), first);
  user_->click(possible(), first + 1, false, true);
  press("Cmd_PasseDroit");
  EXPECT_PRED_FORMAT2(same, linesOf(codes()), (Lines{"010P02", "010P08"}));
}

TEST_F(ActivitiesPage, AnActivityOfAnotherTypeIsSkippedWithoutAWord) {
  show();
  moveRight({"Garde"});
  expectNoBox();
  expectCovered({"010P01"}, {"P"}, {"Aide ménagère        Prestataire"});
}

TEST_F(ActivitiesPage, EscapeInTheOpenListOfEntitiesKeepsEntityAndActivities) {
  show();
  ASSERT_TRUE(user_->open(names()));
  user_->press(toolkit::Key::Down);
  user_->press(toolkit::Key::Down);
  EXPECT_EQ(entity().text(), "010");
  user_->press(toolkit::Key::Escape);
  EXPECT_EQ(names().text(), "AIDE DU VAL");
  EXPECT_EQ(entity().text(), "010");
  EXPECT_EQ(linesOf(codes()), Lines{"010P01"});
  expectNoBox();
}

TEST_F(ActivitiesPage, EnterOrTabInTheOpenListChoosesTheEntityPointedAt) {
  for (const toolkit::Key key : {toolkit::Key::Enter, toolkit::Key::Tab}) {
    show();
    ASSERT_TRUE(user_->open(names()));
    user_->press(toolkit::Key::Down);
    user_->press(key);
    EXPECT_EQ(names().text(), names().list(0));
    EXPECT_NE(entity().text(), "010");
    expectNoBox();
  }
}

TEST_F(ActivitiesPage, LinesThatAMoveSkipsAreDeselectedToo) {
  show();
  moveRight({"Aide", "Garde", "Ménage"});
  EXPECT_PRED_FORMAT2(same, linesOf(codes()), (Lines{"010P01", "010P02"}));
  EXPECT_PRED_FORMAT2(same, selectionOf(possible()), Lines{});
}

TEST_F(ActivitiesPage, InConsultationNothingMoves) {
  show();
  level_->value = 1;
  moveRight({"Ménage"});
  EXPECT_TRUE(user_->dblClick(possible(), lineOf(possible(), "Ménage")));
  moveLeft({"Aide"});
  EXPECT_TRUE(user_->dblClick(covered(), 0));
  control_->Passage_A_Droite();
  control_->Passage_A_Gauche();
  expectCovered({"010P01"}, {"P"}, {"Aide ménagère        Prestataire"});
  expectNoBox();
}

TEST_F(ActivitiesPage, ADoubleClickBesideTheLinesMovesNothing) {
  show();
  select(possible(), {"Ménage"});
  EXPECT_FALSE(user_->dblClickBeside(possible()));
  select(covered(), {"Aide"});
  EXPECT_FALSE(user_->dblClickBeside(covered()));
  expectCovered({"010P01"}, {"P"}, {"Aide ménagère        Prestataire"});
}

TEST_F(ActivitiesPage, TheFirstOneMovedDecidesTheType) {
  showCovered({});
  moveRight({"Garde", "Ménage", "Nuit", "Soins"});
  expectCovered({"010M01", "010M02"}, {"M", "M"},
                {"Garde à domicile     Mandataire", "Nuit                 Mandataire"});
}

TEST_F(ActivitiesPage, EachTypeGoesWithItselfAlone) {
  const Lines labels{"Aide", "Garde", "Inconnue", "Sans type", "Soins", "Téléassistance"};
  const Lines letters{"P", "M", "X", "", "S", "I"};
  for (std::size_t i = 0; i < labels.size(); ++i) {
    showCovered({});
    moveRight({labels[i]});
    for (std::size_t j = 0; j < labels.size(); ++j) {
      if (j != i) moveRight({labels[j]});
    }
    EXPECT_PRED_FORMAT2(same, linesOf(types()), Lines{letters[i]});
  }
}

TEST_F(ActivitiesPage, WhenAllAreRemovedAnotherTypeIsAccepted) {
  show();
  moveLeft({"Aide"});
  moveRight({"Soins"});
  expectCovered({"010S01"}, {"S"}, {"Soins                SSIAD"});
}

TEST_F(ActivitiesPage, TheHostCanMoveActivities) {
  show();
  select(possible(), {"Ménage"});
  control_->Passage_A_Droite();
  EXPECT_PRED_FORMAT2(same, linesOf(codes()), (Lines{"010P01", "010P02"}));
  select(covered(), {"Aide"});
  control_->Passage_A_Gauche();
  EXPECT_PRED_FORMAT2(same, linesOf(codes()), Lines{"010P02"});
}

// --- Move left

TEST_F(ActivitiesPage, ADoubleClickRemovesAnActivity) {
  showCovered({"010P01", "010P02", "010P03"});
  ASSERT_TRUE(user_->dblClick(covered(), 1));
  expectCovered({"010P01", "010P03"}, {"P", "P"},
                {"Aide ménagère        Prestataire", "Accompagnement véhic Prestataire"});
}

TEST_F(ActivitiesPage, SeveralAreRemovedFromAllThreeLists) {
  for (const auto& [code, label] : std::initializer_list<std::pair<const char*, const char*>>{
           {"010P11", "Un"}, {"010P12", "Deux"}, {"010P13", "Trois"}, {"010P14", "Quatre"}}) {
    putActivity(store_, code, label, "P");
  }
  showCovered({"010P11", "010P12", "010P13", "010P14", "010P01"});
  moveLeft({"Un", "Trois", "Quatre"});
  expectCovered({"010P12", "010P01"}, {"P", "P"},
                {"Deux                 Prestataire", "Aide ménagère        Prestataire"});
  user_->click(covered(), 0);
  user_->click(covered(), 1, false, true);
  press("Cmd_PasseGauche");
  expectCovered({}, {}, {});
}

TEST_F(ActivitiesPage, RemovingKeepsTheLinesInView) {
  store::DynamicArray all;
  for (int i = 1; i <= 40; ++i) {
    const std::string code = "010P" + std::to_string(100 + i);
    putActivity(store_, code, "Activité " + std::to_string(100 + i), "P");
    all.set(1, i, code);
  }
  show({{attribut::CodActSelect, std::string(all.get(1))}});
  covered().setTopIndex(20);
  moveLeft({"Activité 125", "Activité 127"});
  EXPECT_EQ(covered().listCount(), 38);
  EXPECT_EQ(covered().topIndex(), 20);
  EXPECT_EQ(types().topIndex(), 20);
}

TEST_F(ActivitiesPage, AfterARemovalTheNextLineIsInItsPlace) {
  showCovered({"010P01", "010P02", "010P03"});
  moveLeft({"Ménage"});
  EXPECT_EQ(covered().list(covered().listIndex()), "Accompagnement véhic Prestataire");
  EXPECT_PRED_FORMAT2(same, selectionOf(covered()), Lines{});
}

TEST_F(ActivitiesPage, TheTypesScrollWithTheirActivities) {
  showCovered({"010P01", "010P02", "010P03"});
  covered().userScroll(2);
  EXPECT_EQ(types().topIndex(), 2);
  types().userScroll(1);
  EXPECT_EQ(covered().topIndex(), 1);
}

// --- Hours

TEST_F(ActivitiesPage, AgencyActivitiesTakeAllHoursOfAPrincipalBody) {
  showCovered({});
  user_->click(option("Opt_Semaine"));
  moveRight({"Garde"});
  EXPECT_EQ(hoursShown(), "Totalite -");
  EXPECT_EQ(saved(attribut::GestionExclu), "0");
}

TEST_F(ActivitiesPage, AgencyActivitiesTakeAllHoursEvenFromSundays) {
  showCovered({});
  user_->click(option("Opt_DimJF"));
  moveRight({"Garde"});
  EXPECT_EQ(hoursShown(), "Totalite -");
  user_->click(option("Opt_DimJF"));
  EXPECT_EQ(hoursShown(), "DimJF -");
  EXPECT_FALSE(user_->click(option("Opt_Semaine")));
}

TEST_F(ActivitiesPage, OtherActivitiesLeaveTheHoursAsTheyAre) {
  for (const char* label : {"Aide", "Soins", "Téléassistance", "Inconnue", "Sans type"}) {
    show({{attribut::CodActSelect, ""}, {attribut::GestionExclu, "2"}});
    moveRight({label});
    EXPECT_EQ(hoursShown(), "Semaine") << label;
  }
}

TEST_F(ActivitiesPage, MovingRightAppliesTheHoursRuleEvenWhenItMovesNothing) {
  showCovered({"010M01"});
  EXPECT_EQ(hoursShown(), "Totalite -");
  user_->click(option("Opt_DimJF"));
  moveRight({"Aide"});
  EXPECT_EQ(hoursShown(), "Totalite -");
}

TEST_F(ActivitiesPage, RemovingTheLastAgencyActivityOpensTheWeekAgain) {
  showCovered({"010M01", "010M02"});
  EXPECT_EQ(hoursShown(), "Totalite -");
  moveLeft({"Garde"});
  EXPECT_EQ(hoursShown(), "Totalite -");
  moveLeft({"Nuit"});
  EXPECT_EQ(hoursShown(), "Totalite");
}

TEST_F(ActivitiesPage, AnotherEntityOpensTheWeekAgain) {
  showCovered({"010M01"});
  user_->fill(entity(), "");
  EXPECT_EQ(hoursShown(), "Totalite -");
  user_->fill(entity(), "020");
  EXPECT_EQ(hoursShown(), "Totalite");
}

TEST_F(ActivitiesPage, OfAComplementaryBodyTheHoursAreClosedWhateverIsMoved) {
  show({{attribut::TypeOrgChg, "C"}, {attribut::CodActSelect, ""}});
  EXPECT_FALSE(hours().enabled());
  moveRight({"Garde"});
  EXPECT_EQ(hoursShown(), "Totalite");
  EXPECT_FALSE(hours().enabled());
  EXPECT_FALSE(user_->click(option("Opt_DimJF")));
}

TEST_F(ActivitiesPage, TheHoursRuleFollowsTheTypeOfBody) {
  show({{attribut::TypeOrgChg, "C"}, {attribut::CodActSelect, "010M01"}});
  EXPECT_EQ(hoursShown(), "Totalite");
  user_->click(tabs(), kRegles);
  user_->click(option("Opt_TypePrincipalOrgChg"));
  EXPECT_TRUE(hours().enabled());
  EXPECT_EQ(hoursShown(), "Totalite -");
  user_->click(option("Opt_TypeComplOrgChg"));
  EXPECT_FALSE(hours().enabled());
  EXPECT_EQ(hoursShown(), "Totalite");
}

// --- Shown and written

TEST_F(ActivitiesPage, ABodyIsShownWithItsEntityAndActivities) {
  showCovered({"010P02", "010P01"});
  EXPECT_EQ(entity().text(), "010");
  EXPECT_EQ(names().text(), "AIDE DU VAL");
  EXPECT_PRED_FORMAT2(same, linesOf(possible()), kActivitesDe010);
  expectCovered({"010P02", "010P01"}, {"P", "P"},
                {"Ménage               Prestataire", "Aide ménagère        Prestataire"});
  EXPECT_TRUE(movesEnabled());
  EXPECT_EQ(currentEntity(), "010");
}

TEST_F(ActivitiesPage, HoursAreShownByTypeOfBodyAndAttribute) {
  struct Case {
    const char* type;
    const char* stored;
    const char* shown;
    bool open;
    const char* written;
  };
  const Case cases[] = {
      {"P", "0", "Totalite", true, "0"},  {"P", "1", "DimJF", true, "1"},
      {"P", "2", "Semaine", true, "2"},   {"P", "", "Totalite", true, "0"},
      {"P", "9", "Totalite", true, "0"},  {"C", "0", "Totalite", false, "0"},
      {"C", "1", "Totalite", false, "0"}, {"C", "2", "Totalite", false, "0"},
      {"", "1", "Totalite", false, "0"},  {"", "2", "Totalite", false, "0"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.type) + " " + c.stored);
    show({{attribut::TypeOrgChg, c.type}, {attribut::GestionExclu, c.stored}});
    EXPECT_EQ(hoursShown(), c.shown);
    EXPECT_EQ(hours().enabled(), c.open);
    EXPECT_EQ(saved(attribut::GestionExclu), c.written);
  }
}

TEST_F(ActivitiesPage, StoredHoursOfTheWeekStayWithAgencyActivities) {
  show({{attribut::CodActSelect, "010M01"}, {attribut::GestionExclu, "2"}});
  EXPECT_EQ(hoursShown(), "Semaine -");
  EXPECT_EQ(saved(attribut::GestionExclu), "2");
}

TEST_F(ActivitiesPage, EachChoiceOfHoursIsWritten) {
  const std::vector<std::pair<const char*, const char*>> choices{
      {"Opt_Totalite", "0"}, {"Opt_DimJF", "1"}, {"Opt_Semaine", "2"}};
  for (const char* before : {"0", "1", "2"}) {
    for (const auto& [name, written] : choices) {
      show({{attribut::GestionExclu, before}});
      user_->click(option(name));
      EXPECT_EQ(saved(attribut::GestionExclu), written);
    }
  }
}

TEST_F(ActivitiesPage, EntityAndActivitiesAreWrittenInTheirOrder) {
  show();
  user_->fill(entity(), "020");
  moveRight({"Repas"});
  moveRight({"Ménage"});
  EXPECT_EQ(saved(attribut::Entite), "020");
  EXPECT_EQ(attribute("001", attribut::CodActSelect), values({"020P02", "020P01"}));
}

TEST_F(ActivitiesPage, WithoutActivityTheAttributeIsEmptied) {
  show({{attribut::Entite, "020"}, {attribut::CodActSelect, values({"020P01", "020P02"})}});
  moveLeft({"Ménage", "Repas"});
  EXPECT_EQ(saved(attribut::CodActSelect), "");
}

TEST_F(ActivitiesPage, AnActivityOfAnotherEntityIsShownByItsOwnRecord) {
  showCovered({"010P01", "020P02"});
  expectCovered({"010P01", "020P02"}, {"P", "P"},
                {"Aide ménagère        Prestataire", "Repas                Prestataire"});
  EXPECT_EQ(saved(attribut::CodActSelect), values({"010P01", "020P02"}));
}

TEST_F(ActivitiesPage, ACodeThatNoActivityHasIsShownAsItStandsUnderTheTypeOfTheOthers) {
  showCovered({"PERDU", "010M01"});
  expectCovered({"PERDU", "010M01"}, {"M", "M"},
                {"PERDU                Mandataire", "Garde à domicile     Mandataire"});
  EXPECT_EQ(saved(attribut::CodActSelect), values({"PERDU", "010M01"}));
}

TEST_F(ActivitiesPage, ACodeThatNoActivityHasIsKeptUntilItIsRemoved) {
  showCovered({"010P01", "PERDU"});
  moveRight({"Ménage"});
  EXPECT_EQ(saved(attribut::CodActSelect), values({"010P01", "PERDU", "010P02"}));
  show();
  moveLeft({"PERDU"});
  EXPECT_EQ(saved(attribut::CodActSelect), values({"010P01", "010P02"}));
}

TEST_F(ActivitiesPage, CodesThatNoActivityHasAloneHaveNoType) {
  showCovered({"PERDU"});
  expectCovered({"PERDU"}, {""}, {"PERDU                "});
  moveRight({"Aide"});
  expectCovered({"PERDU"}, {""}, {"PERDU                "});
  moveLeft({"PERDU"});
  moveRight({"Aide"});
  expectCovered({"010P01"}, {"P"}, {"Aide ménagère        Prestataire"});
}

TEST_F(ActivitiesPage, ATypeOfSeveralLettersIsItsFirst) {
  putActivity(store_, "010X02", "Bizarre", "XY");
  showCovered({"010X02"});
  expectCovered({"010X02"}, {"X"}, {"Bizarre              XY"});
  moveLeft({"Bizarre"});
  moveRight({"Bizarre"});
  expectCovered({"010X02"}, {"X"}, {"Bizarre              XY"});
}

TEST_F(ActivitiesPage, MarksInOddPlacesAreKept) {
  for (const std::string& stored :
       {values({"010P01", "", "010P02", "", ""}), values({"", "010P01"}),
        values({"010P01", "010P01"}), values({"", ""})}) {
    show({{attribut::CodActSelect, stored}});
    EXPECT_EQ(covered().listCount(), codes().listCount());
    EXPECT_EQ(covered().listCount(), types().listCount());
    control_->Ecrire_Ong6();
    control_->Ecrire_Donnees();
    EXPECT_EQ(attribute("001", attribut::CodActSelect), stored);
  }
}

TEST_F(ActivitiesPage, OfALabelNameOrTypeWithMarksTheFirstValueIsShown) {
  store_.put("ASSOCIATION", "040", {values({"NOM", "AUTRE"})});
  store_.put("ACTIVITES", "020P03", {values({"Bri", "colage"}), "020"});
  store_.set("ACTIVITES", "020P03", store::activites::TypeActivite, values({"P", "M"}));
  show({{attribut::Entite, "040"}, {attribut::CodActSelect, "020P03"}});
  EXPECT_EQ(names().text(), "NOM");
  expectCovered({"020P03"}, {"P"}, {"Bri                  Prestataire"});
  user_->choose(names(), 3);
  EXPECT_EQ(entity().text(), "040");
  EXPECT_EQ(names().text(), "NOM");
  EXPECT_EQ(names().listIndex(), 3);
}

TEST_F(ActivitiesPage, AnEntityWithMarksIsKeptUntilItIsChanged) {
  show({{attribut::Entite, values({"010", "X"})}});
  EXPECT_EQ(entity().text(), "010X");
  EXPECT_EQ(names().text(), "");
  expectCovered({"010P01"}, {"P"}, {"Aide ménagère        Prestataire"});
  control_->Ecrire_Donnees();
  EXPECT_EQ(attribute("001", attribut::Entite), values({"010", "X"}));
}

TEST_F(ActivitiesPage, AnUnknownEntityIsShownWithoutAWordAndCannotBeSaved) {
  show({{attribut::Entite, "999"}});
  expectNoBox();
  EXPECT_EQ(entity().text(), "999");
  EXPECT_EQ(names().text(), "");
  EXPECT_EQ(possible().listCount(), 0);
  EXPECT_FALSE(movesEnabled());
  expectCovered({"010P01"}, {"P"}, {"Aide ménagère        Prestataire"});
  EXPECT_EQ(currentEntity(), "");
  press("Cmd_OK");
  expectBox(kSansEntite, Icon::Exclamation);
  expectNothingWritten();
}

TEST_F(ActivitiesPage, ASavedRecordThatNothingChangedKeepsItsText) {
  for (const std::string& stored :
       {values({"010P01", "010P03"}), values({"010P02", "PERDU"}), std::string("020P02")}) {
    show({{attribut::CodActSelect, stored}, {attribut::GestionExclu, "2"}});
    const std::string before = store_.record("ORGPRISECHARGE", "001").text();
    press("Cmd_OK");
    expectNoBox();
    EXPECT_PRED_FORMAT2(sameBody, store_.record("ORGPRISECHARGE", "001").text(), before);
  }
}

TEST_F(ActivitiesPage, ShowingABodyReadsItsActivitiesOnce) {
  lookUp("001");
  const auto calls = store_.calls(CallKind::ExecuteSentence);
  EXPECT_EQ(std::count_if(calls.begin(), calls.end(),
                          [](const auto& call) { return call.file == "ACTIVITES"; }),
            1);
}

TEST_F(ActivitiesPage, NothingIsLeftOfTheBodyBefore) {
  for (const int number : {attribut::Entite, attribut::CodActSelect, attribut::GestionExclu})
    store_.set("ORGPRISECHARGE", "002", number, "");
  store_.set("ORGPRISECHARGE", "002", attribut::TypeOrgChg, "P");
  show({{attribut::CodActSelect, "010M01"}});
  user_->open(names());
  select(possible(), {"Aide"});
  user_->fill(code(), "002");
  user_->click(tabs(), kActivites);
  EXPECT_EQ(entity().text(), "");
  EXPECT_EQ(names().listCount(), 0);
  EXPECT_EQ(hoursShown(), "Totalite");
  EXPECT_TRUE(hours().enabled());
  expectNoEntity();
}

TEST_F(ActivitiesPage, AnEntityThatCannotBeReadLeavesNoBodyInHand) {
  for (const char* file : {"ASSOCIATION", "ACTIVITES"}) {
    store_.fail(file[1] == 'S' ? CallKind::ReadRecord : CallKind::ExecuteSentence, file);
    lookUp("001");
    expectNoBox();
    EXPECT_EQ(state(), kEmpty);
    EXPECT_EQ(entity().text(), "");
    EXPECT_EQ(possible().listCount(), 0);
    store_.stopFailing();
    user_->fill(code(), "");
  }
}

TEST_F(ActivitiesPage, TheHostCanHaveThePageShownAndWritten) {
  show();
  moveRight({"Ménage"});
  control_->Ecrire_Ong6();
  moveLeft({"Aide", "Ménage"});
  control_->Afficher_Ong6();
  EXPECT_PRED_FORMAT2(same, linesOf(codes()), (Lines{"010P01", "010P02"}));
  expectNoBox();
  expectNothingWritten();
}

TEST_F(ActivitiesPage, ACreationStartsWithAllHoursAndNoEntity) {
  show({{attribut::TypeOrgChg, "C"}, {attribut::CodActSelect, "010P01"}});
  EXPECT_FALSE(hours().enabled());
  press("Cmd_Annuler");
  press("Cmd_Ajouter");
  user_->click(tabs(), kActivites);
  EXPECT_EQ(entity().text(), "");
  EXPECT_EQ(hoursShown(), "Totalite");
  EXPECT_TRUE(hours().enabled());
  expectNoEntity();
}

TEST_F(ActivitiesPage, ANewBodyIsWrittenAsItWasEntered) {
  beginCreation();
  user_->click(tabs(), kRegles);
  user_->click(option("Opt_TypePrincipalOrgChg"));
  user_->click(tabs(), kPriseEnCharge);
  user_->click(option("Opt_HeureOrgChg"));
  user_->click(tabs(), kActivites);
  moveRight({"Aide", "Ménage"});
  user_->click(option("Opt_DimJF"));
  press("Cmd_OK");
  expectNoBox();
  EXPECT_EQ(attribute("004", attribut::Entite), "010");
  EXPECT_EQ(attribute("004", attribut::CodActSelect), values({"010P01", "010P02"}));
  EXPECT_EQ(attribute("004", attribut::GestionExclu), "1");
}

}  // namespace
}  // namespace behaviour
