#include <functional>
#include <set>

#include "tests/behaviour/ControlTest.h"
#include "tests/behaviour/Snapshot.h"
#include "text/Utf8.h"
#include "toolkit/Frame.h"
#include "toolkit/ScrollBar.h"

namespace behaviour {
namespace {

class Consultation : public ControlTest {
 protected:
  Consultation() {
    fillThreeBodies(store_);
    level_->value = 1;
    start();
  }
};

TEST_F(Consultation, HidesTheEditingButtons) {
  for (const char* name : {"Cmd_AjoutAbat", "Cmd_Ajouter", "Cmd_AjoutPart", "Cmd_AjoutTaux",
                           "Cmd_NouveauBareme", "Cmd_OK", "Cmd_OKAbat", "Cmd_OKPart", "Cmd_OKTaux",
                           "Cmd_SuppAbat", "Cmd_SuppPart", "Cmd_Supprimer", "Cmd_SuppTaux"}) {
    EXPECT_FALSE(button(name).visible()) << name;
  }
  EXPECT_TRUE(button("Cmd_Annuler").visible());
  EXPECT_TRUE(button("Cmd_Sortir").visible());
}

TEST_F(Consultation, AnyLevelButTwoIsConsultation) {
  for (const long level : {-1L, 0L, 1L, 3L, 22L}) {
    control::Ctr_OrgPriseCharge fresh(desktop_);
    level_->value = level;
    fresh.setTheDatabase(store_.connect());
    fresh.setDroitsUtilisateur(std::make_shared<TestRights>(level_, store_.sharedReleases()));
    fresh.Init();
    EXPECT_FALSE(fresh.surface().find("Cmd_OK")->visible()) << level;
  }
}

TEST_F(Consultation, FullRightsHideNothingOfTheBar) {
  level_->value = 2;
  control::Ctr_OrgPriseCharge fresh(desktop_);
  fresh.setTheDatabase(store_.connect());
  fresh.setDroitsUtilisateur(std::make_shared<TestRights>(level_, store_.sharedReleases()));
  fresh.Init();
  for (const char* name : {"Cmd_Ajouter", "Cmd_Supprimer", "Cmd_OK", "Cmd_Annuler", "Cmd_Sortir"}) {
    EXPECT_TRUE(fresh.surface().find(name)->visible()) << name;
  }
}

TEST_F(Consultation, BodiesAreFoundAndBrowsed) {
  lookUp("001");
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Domus Mutuelle");
  EXPECT_EQ(state(), "code annuler sortir | recherche pages");
  EXPECT_TRUE(user_->click(tabs(), 4));
  user_->choose(sigles(), 0);
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Caisse familiale");
  press("Cmd_Annuler");
  EXPECT_EQ(state(), "code sortir | recherche");
}

TEST_F(Consultation, NoKeyAndNoClickWritesAnything) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "Autre");
  for (const char letter : std::string_view("ABCDEFGHIJKLMNOPQRTUVWXYZ")) {
    if (letter == 'N') continue;  // cancels: see BodiesAreFoundAndBrowsed
    user_->alt(static_cast<char32_t>(letter));
    for (const toolkit::Key key :
         {toolkit::Key::Enter, toolkit::Key::Space, toolkit::Key::Escape}) {
      user_->press(key);
    }
  }
  for (const char* name : {"Cmd_Ajouter", "Cmd_Supprimer", "Cmd_OK"}) {
    EXPECT_FALSE(press(name)) << name;
  }
  expectNothingWritten();
  EXPECT_EQ(state(), "code annuler sortir | recherche pages");
}

TEST_F(Consultation, MembersThatWouldWriteAreDenied) {
  lookUp("001");
  store_.forgetCalls();
  EXPECT_THROW(control_->Creer_Donnees(), control::AccessDenied);
  EXPECT_THROW(control_->Ecrire_Donnees(), control::AccessDenied);
  EXPECT_THROW(control_->Ecrire_Ong1(), control::AccessDenied);
  EXPECT_TRUE(store_.calls().empty());
  EXPECT_EQ(state(), "code annuler sortir | recherche pages");
}

TEST_F(Consultation, TheOtherMembersWriteNothing) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "Autre");
  control_->Remplir_OrgPriseChg();
  control_->Remplir_ParamsPoss();
  control_->Remplir_PiecesPoss();
  control_->Remplir_StatOrgChg();
  EXPECT_TRUE(control_->Verif_Ong1());
  control_->Afficher_Donnees();
  control_->Afficher_Ong1();
  control_->Vider_Donnees();
  control_->Init();
  expectNothingWritten();
}

TEST_F(Consultation, LeavingNeverAsks) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "Autre");
  press("Cmd_Sortir");
  EXPECT_TRUE(control_->W_Sortir());
  expectNoBox();
  expectNothingWritten();
}

// The pages ---------------------------------------------------------------------------------------

using toolkit::Control;
using toolkit::Key;
using toolkit::Kind;

const std::set<std::string> kHidden{
    "Cmd_AjoutAbat", "Cmd_Ajouter",   "Cmd_AjoutPart", "Cmd_AjoutTaux", "Cmd_NouveauBareme",
    "Cmd_OK",        "Cmd_OKAbat",    "Cmd_OKPart",    "Cmd_OKTaux",    "Cmd_SuppAbat",
    "Cmd_SuppPart",  "Cmd_Supprimer", "Cmd_SuppTaux"};

// A body with something in every field and list, and more to choose from.
class ConsultedPages : public ControlTest {
 protected:
  ConsultedPages() {
    fillThreeBodies(store_);
    store_.set("COMPTEUR", "999", store::compteur::InterfaceComptable, "O");
    store_.put("PLANCOMPTABLE", "0104110000001", {"AIDE A DOMICILE"});
    store_.put("PLANCOMPTABLE", "0107060000001", {"PRESTATIONS"});
    store_.put("ASSOCIATION", "020", {"SECOND VAL"});
    store_.put("ACTIVITES", "010P02",
               {"Garde", "010", "", "", "", "", "", "", "", "", "", "P", "SAAD"});
    for (const auto& [number, text] : std::vector<std::pair<int, std::string>>{
             {attribut::PieceRenouOrgChg, "AI"},
             {attribut::DebitOrgChg, "4110000001"},
             {attribut::CreditOrgChg, "4110000001"},
             {attribut::CpteProdAide, "7060000001"},
             {attribut::CptPrestationService, "7060000001"},
             {attribut::DemAccordOrgChg, "1"},
             {attribut::StatsOrgChg, "CD"},
             {attribut::DateRembOrgChg, values({"21186", "20821"})},
             {attribut::TxRembOrgChg, values({"2000", "1800"})},
             {attribut::TxRembMajOrgChg, values({"2500", "2000"})},
             {attribut::PrestServOrgChg, values({"1500", "1000"})},
             {attribut::DebAbatHOrgChg, values({"0", "1000"})},
             {attribut::FinAbatHOrgChg, values({"1000", "2000"})},
             {attribut::PourcentAbatOrgChg, values({"500", "700"})},
             {attribut::DebRevSeulOrgChg, "10000"},
             {attribut::FinRevSeulOrgChg, "20000"},
             {attribut::DebRevMenOrgChg, "15000"},
             {attribut::FinRevMenOrgChg, "25000"},
             {attribut::BaremPrecOrgChg, "300"},
             {attribut::BaremCoursOrgChg, "400"},
             {attribut::DatBaremPrec, "20821"},
             {attribut::DatBaremCours, "21186"},
             {attribut::ParamSelecOrgChg, values({"1", "2"})},
             {attribut::ParamTriSelect, "6"},
             {attribut::CodeThesaurus, "TH"},
             {attribut::IdentMagnetOrgChg, "ID"},
             {attribut::DesFacture, "Prise en charge"}}) {
      store_.set("ORGPRISECHARGE", "001", number, text);
    }
  }

  void begin(long level) {
    level_->value = level;
    start();
    lookUp("001");
    store_.forgetCalls();
  }
  Control& line() { return child<toolkit::Label>("Etq_Consultation"); }
  std::vector<Control*> below(toolkit::Container& container) {
    std::vector<Control*> all;
    for (Control* control : container.children()) {
      all.push_back(control);
      if (!control->isContainer()) continue;
      for (Control* inner : below(dynamic_cast<toolkit::Container&>(*control))) {
        all.push_back(inner);
      }
    }
    return all;
  }
  std::vector<Control*> ofPage(int tab) { return below(tabs().page(tab)); }

  // All that a user can do to a control, where it changes something.
  void work(Control& control) {
    if (auto* text = dynamic_cast<TextBox*>(&control)) {
      user_->fill(*text, "Z9\r");
      user_->fill(*text, "");
      user_->go(*text);
      user_->paste("9");
    } else if (auto* combo = dynamic_cast<ComboBox*>(&control)) {
      user_->fill(*combo, "Z9\r");
      user_->fill(*combo, "");
      for (const Key key : {Key::Down, Key::Up, Key::F4}) user_->press(key);
      user_->open(*combo);
      for (int i = 0; i < combo->listCount(); ++i) user_->choose(*combo, i);
    } else if (auto* option = dynamic_cast<OptionButton*>(&control)) {
      user_->click(*option);
      for (const Key key : {Key::Space, Key::Down, Key::Up}) user_->press(key);
    } else if (auto* check = dynamic_cast<CheckBox*>(&control)) {
      user_->click(*check);
      if (user_->click(*check)) user_->press(Key::Space);
    } else if (auto* push = dynamic_cast<CommandButton*>(&control)) {
      user_->click(*push);
    } else if (auto* bar = dynamic_cast<toolkit::ScrollBar*>(&control)) {
      user_->scroll(*bar, bar->max());
    } else if (auto* list = dynamic_cast<ListBox*>(&control)) {
      for (int i = 0; i < list->listCount(); ++i) {
        if (user_->dblClick(*list, i)) user_->press(Key::Enter);
      }
    }
  }
  // The selections of lists are the user's to make.
  Snapshot shown() {
    for (Control* control : below(tabs())) {
      auto* list = dynamic_cast<ListBox*>(control);
      if (list) list->selectNone();
    }
    for (toolkit::ScrollBar* bar :
         {&child<toolkit::ScrollBar>("Bdv_TauxOrgChg"),
          &child<toolkit::ScrollBar>("Bdv_AbatOrgChg"), &child<toolkit::ScrollBar>("Bdv_Bareme")}) {
      bar->resetValue(bar->min());
    }
    return snapshotOf(control_->surface());
  }
};

TEST_F(ConsultedPages, NothingThatAUserDoesChangesThem) {
  begin(1);
  const std::set<std::string> sortArrows{"Cmd_DroiteTri",
                                         "Cmd_GaucheTri"};  // opened by a selection
  const Snapshot before = shown();
  int worked = 0;
  for (int tab = kCoordonnees; tab <= kActivites; ++tab) {
    for (Control* control : ofPage(tab)) {
      if (control->isContainer() || control->kind() == Kind::Label) continue;
      ASSERT_TRUE(user_->click(tabs(), tab));
      work(*control);
      EXPECT_EQ(difference(before, shown(), sortArrows), "") << control->name();
      EXPECT_EQ(tabs().tab(), tab) << control->name();
      ++worked;
    }
  }
  EXPECT_GT(worked, 110);
  expectNoBox();
  EXPECT_PRED_FORMAT2(same, told(store_.calls()), Lines{});
  press("Cmd_Annuler");
  EXPECT_EQ(state(), "code sortir | recherche");
}

// The same deeds, with full rights, change most of what takes input.
TEST_F(ConsultedPages, WhatIsDoneThereIsSomethingToWhoMay) {
  for (const auto& [name, tab] :
       std::vector<std::pair<std::string_view, int>>{{"Txt_RaisonOrgChg", kCoordonnees},
                                                     {"Cbo_StatsOrgChg", kRegles},
                                                     {"Opt_TypeComplOrgChg", kRegles},
                                                     {"Cac_LettresInfo", kRegles},
                                                     {"Bdh_NbExemp", kBordereau},
                                                     {"Cmd_BasBord", kBordereau},
                                                     {"Cbo_Entite", kActivites}}) {
    begin(2);
    const Snapshot before = shown();
    ASSERT_TRUE(user_->click(tabs(), tab));
    if (name == "Cmd_BasBord") user_->click(list("Lst_ParamSelecOrgChg"), 0);
    work(child<Control>(name));
    EXPECT_NE(difference(before, shown()), "") << name;
    desktop_.takeBoxes();
    user_->press(Key::Escape);
  }
}

TEST_F(ConsultedPages, TheirFieldsAreReachedAndTheirTextSelected) {
  begin(1);
  int fields = 0;
  for (int tab = kCoordonnees; tab <= kActivites; ++tab) {
    ASSERT_TRUE(user_->click(tabs(), tab));
    for (Control* control : ofPage(tab)) {
      auto* text = dynamic_cast<TextBox*>(control);
      if (!text || !text->usable()) continue;
      ASSERT_TRUE(user_->go(*text)) << text->name();
      const int length = static_cast<int>(text::length(text->text()));
      EXPECT_TRUE(text->userSelect(0, length)) << text->name();
      EXPECT_EQ(text->selectionLength(), length) << text->name();
      EXPECT_EQ(text->userKeyPress(3), 3U) << text->name();  // Ctrl+C
      ++fields;
    }
  }
  EXPECT_GT(fields, 18);
  ASSERT_TRUE(user_->click(tabs(), kCoordonnees));
  user_->press({Key::PageDown, 0, false, true});
  user_->press({Key::PageUp, 0, false, true});
  EXPECT_PRED_FORMAT1(hasFocus, box("Txt_RaisonOrgChg"));
  EXPECT_EQ(box("Txt_RaisonOrgChg").selectionLength(), 14);
}

TEST_F(ConsultedPages, ShowWhatTheyShowToWhoMayChangeThem) {
  begin(2);
  const Snapshot full = shown();
  control_->Init();
  begin(1);
  std::set<std::string> apart = kHidden;
  apart.insert("Etq_Consultation");
  EXPECT_EQ(difference(full, shown(), apart), "");
}

TEST_F(ConsultedPages, HideNoButtonButThoseThatWouldChangeSomething) {
  begin(1);
  for (Control* control : below(control_->surface())) {
    if (control->kind() != Kind::CommandButton) continue;
    EXPECT_EQ(control->visible(), !kHidden.contains(control->name())) << control->name();
  }
}

TEST_F(ConsultedPages, AreSaidToBeForConsultationOnEachOfThem) {
  begin(1);
  EXPECT_EQ(line().caption(), "Consultation");
  for (int tab = kCoordonnees; tab <= kActivites; ++tab) {
    ASSERT_TRUE(user_->click(tabs(), tab));
    EXPECT_TRUE(line().shown()) << tab;
  }
  press("Cmd_Annuler");
  EXPECT_TRUE(line().shown());
}

TEST_F(ConsultedPages, AreSaidNothingOfToWhoMayChangeThem) {
  begin(2);
  EXPECT_FALSE(line().visible());
}

TEST_F(ConsultedPages, ABodyWithoutEntityHasItsAccountsToRead) {
  store_.set("ORGPRISECHARGE", "001", attribut::Entite, "");
  begin(1);
  ASSERT_TRUE(user_->click(tabs(), kRegles));
  for (const char* name : {"Txt_DebitOrgChg", "Txt_CreditOrgChg", "Txt_CpteProdAide"}) {
    EXPECT_TRUE(user_->go(box(name))) << name;
  }
  EXPECT_TRUE(user_->go(combo("Cbo_DebitOrgChg")));
  expectNoBox();
  EXPECT_EQ(tabs().tab(), kRegles);
}

TEST_F(ConsultedPages, TheOnlyBodyOfAStartIsForConsultationToo) {
  for (const char* body : {"002", "003"}) store_.erase("ORGPRISECHARGE", body);
  level_->value = 1;
  start();
  ASSERT_EQ(code().text(), "001");
  EXPECT_TRUE(box("Txt_RaisonOrgChg").readOnly());
}

class RightsChanged : public ConsultedPages {
 protected:
  void expectOpen(bool open, Caller at = Caller::here()) {
    const auto trace = called("expectOpen", at);
    EXPECT_EQ(line().visible(), !open);
    for (const std::string& name : kHidden) EXPECT_EQ(button(name).visible(), open) << name;
    for (Control* control : below(tabs())) {
      switch (control->kind()) {
        case Kind::TextBox:
        case Kind::ComboBox:
        case Kind::OptionButton:
        case Kind::CheckBox:
          EXPECT_EQ(control->readOnly(), !open) << control->name();
          break;
        default:
          EXPECT_FALSE(open && control->readOnly()) << control->name();
      }
    }
    ASSERT_TRUE(user_->click(tabs(), kCoordonnees));
    const std::string before = box("Txt_RaisonOrgChg").text();
    user_->fill(box("Txt_RaisonOrgChg"), "Autre");
    EXPECT_EQ(box("Txt_RaisonOrgChg").text(), open ? "Autre" : before);
  }
};

TEST_F(RightsChanged, GivenWhileABodyIsShownAreThereAtTheFirstKey) {
  begin(2);
  const Snapshot full = shown();
  press("Cmd_Annuler");
  begin(1);
  expectOpen(false);
  level_->value = 2;
  ASSERT_TRUE(user_->go(box("Txt_RaisonOrgChg")));
  EXPECT_TRUE(line().visible());
  user_->fill(box("Txt_RaisonOrgChg"), "Domus Mutuelle");
  EXPECT_EQ(difference(full, shown()), "");
  expectOpen(true);
  press("Cmd_OK");
  EXPECT_EQ(attribute("001", attribut::RaisonOrgChg), "Autre");
}

TEST_F(RightsChanged, GivenAreThereAtTheFirstClickOnAnOption) {
  begin(1);
  level_->value = 2;
  ASSERT_TRUE(user_->click(tabs(), kRegles));
  user_->click(option("Opt_TypeComplOrgChg"));
  EXPECT_TRUE(option("Opt_TypeComplOrgChg").value());
  expectOpen(true);
}

TEST_F(RightsChanged, GivenAreThereWhenTheNextBodyIsShown) {
  begin(1);
  level_->value = 2;
  lookUp("002");
  expectOpen(true);
}

TEST_F(RightsChanged, TakenAwayAreMissedBeforeAnythingOfABodyIsChanged) {
  const std::string name = "Domus Mutuelle";
  for (const long level : {0L, 1L, 3L}) {
    begin(2);
    level_->value = level;
    user_->fill(box("Txt_RaisonOrgChg"), "Autre");
    EXPECT_EQ(box("Txt_RaisonOrgChg").text(), name) << level;
    expectOpen(false);
    begin(2);
    level_->value = level;
    ASSERT_TRUE(user_->click(tabs(), kRegles));
    user_->click(option("Opt_TypeComplOrgChg"));
    EXPECT_TRUE(option("Opt_TypePrincipalOrgChg").value()) << level;
    expectOpen(false);
  }
}

TEST_F(RightsChanged, TakenAwayLeaveAnOpenRowToBeGivenUp) {
  begin(2);
  ASSERT_TRUE(user_->click(tabs(), kPriseEnCharge));
  ASSERT_TRUE(user_->dblClick(list("Lst_DateRembOrgChg"), 0));
  level_->value = 1;
  user_->fill(box("Txt_TxRembOrgChg"), "23");
  EXPECT_EQ(box("Txt_TxRembOrgChg").text(), "20");
  ASSERT_TRUE(press("Cmd_AnnulerTaux"));
  expectNoBox();
  ASSERT_TRUE(press("Cmd_Annuler"));
  EXPECT_EQ(state(), "code sortir | recherche");
}

// Once a body is being changed the save decides.
TEST_F(RightsChanged, AreReadOnceForABodyThatIsBeingChanged) {
  begin(2);
  const int before = level_->reads;
  user_->fill(box("Txt_RaisonOrgChg"), "Autre");
  user_->fill(box("Txt_Ville"), "Lyon");
  EXPECT_EQ(level_->reads, before + 1);
  press("Cmd_Annuler");
  const int again = level_->reads;
  lookUp("002");
  EXPECT_EQ(level_->reads, again);
  user_->fill(box("Txt_Ville"), "Lyon");
  EXPECT_EQ(level_->reads, again + 1);
}

TEST_F(RightsChanged, CountAtTheNextInit) {
  begin(1);
  level_->value = 2;
  control_->Init();
  lookUp("001");
  expectOpen(true);
  level_->value = 3;
  control_->Init();
  EXPECT_EQ(state(), "code sortir | recherche");
  lookUp("001");
  expectOpen(false);
}

TEST_F(RightsChanged, CountWhenTheHostShowsTheBodyAgain) {
  begin(1);
  level_->value = 2;
  control_->Afficher_Donnees();
  expectOpen(true);
}

TEST_F(RightsChanged, ThatCannotBeReadLeaveTheScreenAsItIs) {
  begin(1);
  level_->fails = true;
  lookUp("002");
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Caisse régionale");
  expectOpen(false);
  expectNoBox();
  level_->fails = false;
  begin(2);
  level_->fails = true;
  lookUp("002");
  expectOpen(true);
}

// The level is read each time: rights taken away after start-up count at once.
class RightsTakenAway : public ControlTest {
 protected:
  RightsTakenAway() {
    fillThreeBodies(store_);
    start();
  }
};

TEST_F(RightsTakenAway, StopACreation) {
  level_->value = 1;
  press("Cmd_Ajouter");
  EXPECT_EQ(state(), kEmpty);
}

TEST_F(RightsTakenAway, StopASave) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "Autre");
  level_->value = 1;
  press("Cmd_OK");
  expectNothingWritten();
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Autre");
}

TEST_F(RightsTakenAway, StopADeletion) {
  lookUp("001");
  level_->value = 1;
  press("Cmd_Supprimer");
  expectNoBox();
  expectNothingWritten();
}

TEST_F(RightsTakenAway, LeavingAsksNothing) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "Autre");
  level_->value = 0;
  press("Cmd_Sortir");
  expectNoBox();
  EXPECT_TRUE(control_->W_Sortir());
}

TEST_F(RightsTakenAway, ALevelThatCannotBeReadSavesNothing) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "Autre");
  level_->fails = true;
  EXPECT_NO_THROW(press("Cmd_OK"));
  EXPECT_THROW(press("Cmd_Supprimer"), std::runtime_error);
  EXPECT_THROW(press("Cmd_Sortir"), std::runtime_error);
  EXPECT_THROW(control_->Ecrire_Donnees(), std::runtime_error);
  expectNothingWritten();
  EXPECT_FALSE(control_->W_Sortir());
  EXPECT_EQ(state(), kExisting);
}

}  // namespace
}  // namespace behaviour
