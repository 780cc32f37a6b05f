// Lists of several selected lines, the legal entity, the slip: the mouse and the keys that move
// them.
#include "tests/windows/lifecycle/PagesTest.h"

namespace lifecycle {
namespace {

using Selection = std::vector<int>;

const std::wstring kMenage = L"Aide ménagère        Prestataire";
const std::wstring kEmploi = L"Emploi direct        Mandataire";
const std::wstring kJour = L"Garde de jour        Prestataire";
const std::wstring kNuit = L"Garde de nuit        Prestataire";

class ActivityLists : public PagesTest {
 protected:
  void SetUp() override {
    PagesTest::SetUp();
    show(L"001", kActivites);
  }
};

INSTANTIATE_TEST_SUITE_P(In, ActivityLists, everywhere(), nameOfParam);

TEST_P(ActivityLists, AreSelectedWithShiftAndCtrlAndMovedByTheButton) {
  EXPECT_EQ(user().lines(L"Lst_Activite"), (Lines{kMenage, kEmploi, kJour, kNuit}));
  EXPECT_EQ(user().lines(L"Lst_ActSelect"), (Lines{kMenage}));
  user().clickLine(L"Lst_Activite", 0);
  user().clickLine(L"Lst_Activite", 3, Held::Shift);
  EXPECT_EQ(user().selected(L"Lst_Activite"), (Selection{0, 1, 2, 3}));
  user().clickLine(L"Lst_Activite", 2, Held::Control);
  EXPECT_EQ(user().selected(L"Lst_Activite"), (Selection{0, 1, 3}));
  user().click(L"Cmd_PasseDroit");
  // The one that is there already and the one of another type stay.
  EXPECT_EQ(user().lines(L"Lst_ActSelect"), (Lines{kMenage, kNuit}));
  EXPECT_EQ(user().lines(L"Lst_TypeAct"), (Lines{L"P", L"P"}));
  EXPECT_EQ(user().selected(L"Lst_Activite"), Selection());
  EXPECT_EQ(user().lines(L"Lst_Activite").size(), 4U);
  user().click(L"Cmd_OK");
  EXPECT_EQ(stored(L"001", attribut::CodActSelect), L"100P01\u00FD100P04");
}

TEST_P(ActivityLists, StayWhenTheOpenListOfEntitiesIsCancelled) {
  const std::wstring name = user().text(L"Cbo_Entite");
  user().click(L"Cbo_Entite");
  user().key(VK_F4);
  user().key(VK_DOWN);
  user().key(VK_DOWN);
  user().key(VK_ESCAPE);
  EXPECT_EQ(user().text(L"Cbo_Entite"), name);
  EXPECT_EQ(user().text(L"Txt_Entite"), L"100");
  EXPECT_EQ(user().lines(L"Lst_ActSelect"), (Lines{kMenage}));
}

TEST_P(ActivityLists, StayWhenTheWheelTurnsOverAClosedCombo) {
  for (const wchar_t* name : {L"Cbo_Entite", L"Cbo_SigleOrgChg"}) {
    user().click(name);
    user().wheel(name, 1);
    user().wheel(name, -1);
    user().wheel(name, -1);
  }
  EXPECT_EQ(user().text(L"Txt_CodOrgChg"), L"001");
  EXPECT_EQ(user().text(L"Txt_Entite"), L"100");
  EXPECT_EQ(user().lines(L"Lst_ActSelect"), (Lines{kMenage}));
}

TEST_P(ActivityLists, AreMovedByADoubleClick) {
  user().doubleClickLine(L"Lst_Activite", 2);
  EXPECT_EQ(user().lines(L"Lst_ActSelect"), (Lines{kMenage, kJour}));
  EXPECT_EQ(user().selected(L"Lst_Activite"), Selection());
  user().doubleClickLine(L"Lst_Activite", 1);
  EXPECT_EQ(user().lines(L"Lst_ActSelect"), (Lines{kMenage, kJour}));
  user().doubleClickLine(L"Lst_ActSelect", 0);
  EXPECT_EQ(user().lines(L"Lst_ActSelect"), (Lines{kJour}));
  user().clickLine(L"Lst_ActSelect", 0);
  user().click(L"Cmd_PasseGauche");
  EXPECT_EQ(user().lines(L"Lst_ActSelect"), Lines());
  // With none left, those of any type can come.
  user().doubleClickLine(L"Lst_Activite", 1);
  EXPECT_EQ(user().lines(L"Lst_ActSelect"), (Lines{kEmploi}));
  EXPECT_EQ(user().lines(L"Lst_TypeAct"), (Lines{L"M"}));
  EXPECT_FALSE(user().enabled(L"Opt_Semaine"));
}

TEST_P(ActivityLists, AreSelectedWithTheKeyboard) {
  user().clickLine(L"Lst_Activite", 1);
  user().key(VK_DOWN, true);
  user().key(VK_DOWN, true);
  EXPECT_EQ(user().selected(L"Lst_Activite"), (Selection{1, 2, 3}));
  user().key(VK_TAB);
  ASSERT_EQ(user().focused(), L"Cmd_PasseDroit");
  user().key(VK_SPACE);
  EXPECT_EQ(user().lines(L"Lst_ActSelect"), (Lines{kMenage, kJour, kNuit}));
  EXPECT_EQ(user().selected(L"Lst_Activite"), Selection{});
}

TEST_P(ActivityLists, FollowTheEntityThatIsTyped) {
  user().fill(L"Txt_Entite", L"200");
  EXPECT_EQ(user().text(L"Cbo_Entite"), L"ENTRAIDE DES VALLEES");
  EXPECT_EQ(user().lines(L"Lst_Activite"), (Lines{L"Portage de repas     Prestataire"}));
  EXPECT_EQ(user().lines(L"Lst_ActSelect"), Lines());
  user().key(VK_BACK);
  EXPECT_EQ(user().text(L"Cbo_Entite"), L"");
  EXPECT_EQ(user().lines(L"Lst_Activite"), Lines());
  EXPECT_FALSE(user().enabled(L"Cmd_PasseDroit"));
  expectWarning(L"Cette entité juridique n'existe pas.");
  user().type(L"9");
  EXPECT_EQ(user().text(L"Txt_Entite"), L"");
  EXPECT_EQ(user().focused(), L"Txt_Entite");
}

class EntityList : public ActivityLists {
 protected:
  bool dropped() { return SendMessageW(user().find(L"Cbo_Entite"), CB_GETDROPPEDSTATE, 0, 0) != 0; }
  void expectUntouched() {
    EXPECT_FALSE(dropped());
    EXPECT_EQ(user().text(L"Cbo_Entite"), L"ASSOCIATION DE TEST");
    EXPECT_EQ(user().text(L"Txt_Entite"), L"100");
    EXPECT_EQ(user().lines(L"Lst_ActSelect"), (Lines{kMenage}));
  }
  const Lines all_ = {L"ASSOCIATION DE TEST", L"ENTRAIDE DES VALLEES"};
};

INSTANTIATE_TEST_SUITE_P(In, EntityList, everywhere(), nameOfParam);

TEST_P(EntityList, OpenedWithTheMouseListsAllAndClosedWithoutAChoiceChangesNothing) {
  user().clickArrow(L"Cbo_Entite");
  EXPECT_TRUE(dropped());
  EXPECT_EQ(user().lines(L"Cbo_Entite"), all_);
  user().clickArrow(L"Cbo_Entite");
  expectUntouched();
}

TEST_P(EntityList, OpenedWithTheKeyboardListsAllAndClosedWithoutAChoiceChangesNothing) {
  user().click(L"Cbo_Entite");
  user().key(VK_DOWN, false, false, true);
  EXPECT_TRUE(dropped());
  EXPECT_EQ(user().lines(L"Cbo_Entite"), all_);
  user().key(VK_ESCAPE);
  expectUntouched();
}

TEST_P(EntityList, LosesTheFocusWithoutAChoiceAndChangesNothing) {
  user().clickArrow(L"Cbo_Entite");
  ASSERT_TRUE(dropped());
  user().key(VK_TAB);
  expectUntouched();
  EXPECT_EQ(user().focused(), L"Lst_Activite");
}

TEST_P(EntityList, IsChosenFromWithTheMouse) {
  user().clickArrow(L"Cbo_Entite");
  user().clickOpenLine(L"Cbo_Entite", 1);
  EXPECT_FALSE(dropped());
  EXPECT_EQ(user().text(L"Txt_Entite"), L"200");
  EXPECT_EQ(user().text(L"Cbo_Entite"), L"ENTRAIDE DES VALLEES");
  EXPECT_EQ(user().lines(L"Lst_Activite").size(), 1U);
}

TEST_P(EntityList, IsChosenFromWithTheKeyboard) {
  user().click(L"Cbo_Entite");
  user().key(VK_DOWN, false, false, true);
  user().key(VK_DOWN);
  user().key(VK_DOWN);
  user().key(VK_RETURN);
  EXPECT_FALSE(dropped());
  EXPECT_EQ(user().text(L"Txt_Entite"), L"200");
}

TEST_P(EntityList, IsSearchedByTheBeginningOfTheName) {
  user().fill(L"Cbo_Entite", L"ent");
  user().key(VK_RETURN);
  EXPECT_EQ(user().lines(L"Cbo_Entite"), (Lines{L"ENTRAIDE DES VALLEES"}));
  user().key(VK_DOWN);
  EXPECT_EQ(user().text(L"Txt_Entite"), L"200");
  expectWarning(L"Aucune entité juridique commençant par zz");
  user().fill(L"Cbo_Entite", L"zz");
  user().key(VK_RETURN);
  EXPECT_EQ(user().focused(), L"Cbo_Entite");
}

class SlipLists : public PagesTest {
 protected:
  void SetUp() override {
    PagesTest::SetUp();
    show(L"001", kBordereau);
  }
  Lines chosen() { return user().lines(L"Lst_ParamSelecOrgChg"); }
};

INSTANTIATE_TEST_SUITE_P(In, SlipLists, everywhere(), nameOfParam);

TEST_P(SlipLists, AreOrderedByTheButtons) {
  EXPECT_EQ(user().lines(L"Lst_ParamPossOrgChg"), (Lines{L"Heures", L"Nom", L"Période", L"Ville"}));
  EXPECT_FALSE(user().enabled(L"Cmd_HautBord"));
  user().clickLine(L"Lst_ParamPossOrgChg", 0);
  user().clickLine(L"Lst_ParamPossOrgChg", 2, Held::Control);
  user().click(L"Cmd_DroiteBord");
  EXPECT_EQ(chosen(), (Lines{L"Nom", L"Heures", L"Période"}));
  EXPECT_EQ(user().selected(L"Lst_ParamPossOrgChg"), Selection());
  EXPECT_EQ(user().text(L"Etq_NbCarSelect"), L"46/130");
  user().clickLine(L"Lst_ParamSelecOrgChg", 2);
  user().click(L"Cmd_HautBord");
  EXPECT_EQ(chosen(), (Lines{L"Nom", L"Période", L"Heures"}));
  EXPECT_EQ(user().selected(L"Lst_ParamSelecOrgChg"), (Selection{1}));
  user().alt(L'm');
  EXPECT_EQ(chosen(), (Lines{L"Période", L"Nom", L"Heures"}));
  EXPECT_EQ(user().selected(L"Lst_ParamSelecOrgChg"), (Selection{0}));
  user().alt(L'm');
  EXPECT_EQ(chosen(), (Lines{L"Période", L"Nom", L"Heures"}));
  user().alt(L'd');
  EXPECT_EQ(chosen(), (Lines{L"Nom", L"Période", L"Heures"}));
  user().click(L"Cmd_OK");
  EXPECT_EQ(stored(L"001", attribut::ParamSelecOrgChg), L"1\u00FD3\u00FD2");
}

TEST_P(SlipLists, AreMovedByADoubleClickAndCounted) {
  user().doubleClickLine(L"Lst_ParamPossOrgChg", 3);
  EXPECT_EQ(chosen(), (Lines{L"Nom", L"Ville"}));
  EXPECT_EQ(user().text(L"Etq_NbCarSelect"), L"120/130");
  user().doubleClickLine(L"Lst_ParamPossOrgChg", 0);
  user().doubleClickLine(L"Lst_ParamPossOrgChg", 2);
  EXPECT_EQ(user().text(L"Etq_NbCarSelect"), L"136/130");
  expectWarning(
      L"La taille cumulée des paramètres sélectionnés est de 136 caractères alors que la largeur "
      L"de la page ne peut être supérieure à 130");
  user().click(L"Cmd_OK");
  EXPECT_EQ(state().count("DBWrite"), 0);
  EXPECT_EQ(user().focused(), L"Lst_ParamSelecOrgChg");
  user().doubleClickLine(L"Lst_ParamSelecOrgChg", 3);
  EXPECT_EQ(chosen(), (Lines{L"Nom", L"Ville", L"Heures"}));
  EXPECT_EQ(user().text(L"Etq_NbCarSelect"), L"129/130");
}

TEST_P(SlipLists, OfSortingEnableTheirArrows) {
  EXPECT_FALSE(user().enabled(L"Cmd_DroiteTri"));
  EXPECT_FALSE(user().enabled(L"Cmd_GaucheTri"));
  user().clickLine(L"Lst_ParamTriPos", 1);
  EXPECT_TRUE(user().enabled(L"Cmd_DroiteTri"));
  user().clickLine(L"Lst_ParamTriPos", 4, Held::Control);
  user().click(L"Cmd_DroiteTri");
  EXPECT_EQ(user().lines(L"Lst_ParamTriSelect"), (Lines{L"Numéro de dossier", L"Période"}));
  user().clickLine(L"Lst_ParamTriSelect", 0);
  EXPECT_TRUE(user().enabled(L"Cmd_GaucheTri"));
  user().click(L"Cmd_GaucheTri");
  EXPECT_EQ(user().lines(L"Lst_ParamTriSelect"), (Lines{L"Période"}));
}

TEST_P(SlipLists, CopiesAreChosenByScrollBarAndByKey) {
  const HWND bar = user().find(L"Bdh_NbExemp");
  user().clickScrollEnd(L"Bdh_NbExemp");
  EXPECT_EQ(user().text(L"Txt_NbExEmplOrgChg"), L"2");
  user().clickScrollEnd(L"Bdh_NbExemp");
  EXPECT_EQ(user().text(L"Txt_NbExEmplOrgChg"), L"3");
  user().key(VK_LEFT);
  EXPECT_EQ(user().text(L"Txt_NbExEmplOrgChg"), L"2");
  user().fill(L"Txt_NbExEmplOrgChg", L"0x7");
  EXPECT_EQ(user().text(L"Txt_NbExEmplOrgChg"), L"7");
  EXPECT_EQ(GetScrollPos(bar, SB_CTL), 7);
  user().fill(L"Txt_NbExEmplOrgChg", L"");
  user().key(VK_TAB);
  EXPECT_EQ(user().text(L"Txt_NbExEmplOrgChg"), L"7");
  user().click(L"Cmd_OK");
  EXPECT_EQ(stored(L"001", attribut::NbExemplOrgChg), L"7");
}

class RenewalDocuments : public PagesTest {
 protected:
  void SetUp() override {
    PagesTest::SetUp();
    show(L"001", kRegles);
  }
};

INSTANTIATE_TEST_SUITE_P(In, RenewalDocuments, everywhere(), nameOfParam);

TEST_P(RenewalDocuments, AreMovedByDoubleClickAndByButton) {
  user().doubleClickLine(L"Lst_PiecePossibleOrgChg", 1);
  EXPECT_EQ(user().lines(L"Lst_PieceRenouOrgChg"), (Lines{L"Bulletin de pension"}));
  user().clickLine(L"Lst_PiecePossibleOrgChg", 0);
  user().clickLine(L"Lst_PiecePossibleOrgChg", 1, Held::Shift);
  EXPECT_EQ(user().selected(L"Lst_PiecePossibleOrgChg"), (Selection{0, 1}));
  user().click(L"Cmd_DroiteRenouv");
  EXPECT_EQ(user().lines(L"Lst_PieceRenouOrgChg"),
            (Lines{L"Bulletin de pension", L"Avis d'imposition"}));
  EXPECT_EQ(user().selected(L"Lst_PiecePossibleOrgChg"), Selection());
  user().click(L"Cmd_OK");
  EXPECT_EQ(stored(L"001", attribut::PieceRenouOrgChg),
            L"B\u00FD"
            L"A");
  show(L"001", kRegles);
  user().clickLine(L"Lst_PieceRenouOrgChg", 0);
  user().clickLine(L"Lst_PieceRenouOrgChg", 1, Held::Control);
  user().click(L"Cmd_GaucheRenouv");
  EXPECT_EQ(user().lines(L"Lst_PieceRenouOrgChg"), Lines());
}

}  // namespace
}  // namespace lifecycle
