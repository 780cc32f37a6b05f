#include "screen/Screen.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "pages/AddressPanel.h"
#include "store/Layouts.h"
#include "tests/behaviour/ControlTest.h"
#include "text/Utf8.h"

namespace behaviour {
namespace {

using toolkit::Container;
using toolkit::Control;
using toolkit::Kind;
using toolkit::Place;

class ScreenTest : public testing::Test {
 protected:
  toolkit::Surface surface_{"Surface"};
  screen::Screen screen_{surface_};

  std::vector<std::string> lines(const toolkit::ListItems& items) {
    std::vector<std::string> texts;
    for (const auto& item : items.all()) texts.push_back(item.text);
    return texts;
  }
  // What is seen of the bar and of the first page, in order of creation.
  std::vector<Control*> seen() {
    std::vector<Control*> all;
    collect(surface_, all);
    return all;
  }
  void collect(Container& container, std::vector<Control*>& all) {
    for (Control* child : container.children()) {
      if (!child->shown()) continue;
      all.push_back(child);
      if (auto* inner = dynamic_cast<Container*>(child)) collect(*inner, all);
    }
  }
};

bool overlap(const Place& a, const Place& b) {
  return a.left < b.left + b.width && b.left < a.left + a.width && a.top < b.top + b.height &&
         b.top < a.top + a.height;
}

TEST_F(ScreenTest, HasItsSixTabs) {
  ASSERT_EQ(screen_.Ong_OrgPriseChg.tabs(), 6);
  const std::vector<std::string> captions = {"Coordonnées",          "Règles de gestion",
                                             "Prise en charge",      "Participation bénéficiaire",
                                             "Paramètres bordereau", "Activités couvertes"};
  for (int tab = 0; tab < 6; ++tab) {
    EXPECT_EQ(toolkit::withoutMnemonic(screen_.Ong_OrgPriseChg.page(tab).caption()),
              captions[static_cast<std::size_t>(tab)]);
  }
}

TEST_F(ScreenTest, HoldsTheFixedLists) {
  EXPECT_EQ(lines(screen_.regles.Cbo_RenouvOrgChg.items()),
            (std::vector<std::string>{"Pas de gestion renouvellement", "Renouvellement à - 1 mois",
                                      "Renouvellement à - 2 mois", "Renouvellement à - 3 mois",
                                      "Renouvellement à - 4 mois", "Renouvellement à - 5 mois",
                                      "Renouvellement à - 6 mois"}));
  EXPECT_EQ(lines(screen_.regles.Cbo_PeriodFactOrgChg.items()),
            (std::vector<std::string>{"Mensuelle", "Trimestrielle", "A fin de prise en charge"}));
  EXPECT_EQ(lines(screen_.bordereau.Lst_ParamTriPos.items()),
            (std::vector<std::string>{"Secteur", "Numéro de dossier", "Nom - prénom",
                                      "Nom patronymique", "Période", "Ville"}));
}

TEST_F(ScreenTest, HoldsEveryChildControl) {
  for (const char* name : {"Bdh_NbExemp",
                           "Bdv_AbatOrgChg",
                           "Bdv_Bareme",
                           "Bdv_TauxOrgChg",
                           "Cac_Abonnement",
                           "Cac_AjusTarif",
                           "Cac_CoutGlobal",
                           "Cac_DemAccordOrgChg",
                           "Cac_FactAnticip",
                           "Cac_IncidCompta",
                           "Cac_LettresInfo",
                           "Cbo_CptPrestationService",
                           "Cbo_CpteProdAide",
                           "Cbo_CreditOrgChg",
                           "Cbo_DebitOrgChg",
                           "Cbo_Entite",
                           "Cbo_PeriodFactOrgChg",
                           "Cbo_RenouvOrgChg",
                           "Cbo_SigleOrgChg",
                           "Cbo_StatsOrgChg",
                           "Cdr_AbatOrgChg",
                           "Cdr_AttribOrgChg",
                           "Cdr_Bareme",
                           "Cdr_DemandesAccord",
                           "Cdr_Exemplaire",
                           "Cdr_GestionExclu",
                           "Cdr_GestionParticipBenef",
                           "Cdr_InterlocOrgChg",
                           "Cdr_MiseEnForme",
                           "Cdr_ParticipBenef",
                           "Cdr_PlafondOrg",
                           "Cdr_RenouvOrgChg",
                           "Cdr_TauxOrgChg",
                           "Cdr_Tri",
                           "Cdr_TypeBordereau",
                           "Cdr_TypeOrg",
                           "Cmd_AjoutAbat",
                           "Cmd_AjoutPart",
                           "Cmd_AjoutTaux",
                           "Cmd_Ajouter",
                           "Cmd_Annuler",
                           "Cmd_AnnulerAbat",
                           "Cmd_AnnulerPart",
                           "Cmd_AnnulerTaux",
                           "Cmd_BasBord",
                           "Cmd_DroiteBord",
                           "Cmd_DroiteRenouv",
                           "Cmd_DroiteTri",
                           "Cmd_GaucheBord",
                           "Cmd_GaucheRenouv",
                           "Cmd_GaucheTri",
                           "Cmd_HautBord",
                           "Cmd_NouveauBareme",
                           "Cmd_OK",
                           "Cmd_OKAbat",
                           "Cmd_OKPart",
                           "Cmd_OKTaux",
                           "Cmd_PasseDroit",
                           "Cmd_PasseGauche",
                           "Cmd_Sortir",
                           "Cmd_SuppAbat",
                           "Cmd_SuppPart",
                           "Cmd_SuppTaux",
                           "Cmd_Supprimer",
                           "Etq_ActSelect",
                           "Etq_Activite",
                           "Etq_CreditOrgChg",
                           "Etq_DateRembOrgChg",
                           "Etq_DebitOrgChg",
                           "Etq_InterlocDossOrgChg",
                           "Etq_InterlocFactOrgChg",
                           "Etq_Menage",
                           "Etq_Montant",
                           "Etq_NbCarSelect",
                           "Etq_PersSeule",
                           "Etq_PiecePossibleOrgChg",
                           "Etq_PieceRenouOrgChg",
                           "Etq_PourcentOrgChg",
                           "Etq_PrestServOrgChg",
                           "Etq_RenouvOrgChg",
                           "Etq_TrancheAppli",
                           "Etq_TrancheRevenus",
                           "Etq_TxRembMajOrgChg",
                           "Etq_TxRembOrgChg",
                           "Etq_Type",
                           "Lst_ActSelect",
                           "Lst_Activite",
                           "Lst_BaremCoursOrgChg",
                           "Lst_BaremPrecOrgChg",
                           "Lst_CodActSelect",
                           "Lst_DateRembOrgChg",
                           "Lst_DebAbatHOrgChg",
                           "Lst_DebRevMenOrgChg",
                           "Lst_DebRevSeulOrgChg",
                           "Lst_FinAbatHOrgChg",
                           "Lst_FinRevMenOrgChg",
                           "Lst_FinRevSeulOrgChg",
                           "Lst_LongParam",
                           "Lst_ParamPossOrgChg",
                           "Lst_ParamSelecOrgChg",
                           "Lst_ParamTriPos",
                           "Lst_ParamTriSelect",
                           "Lst_PiecePossibleOrgChg",
                           "Lst_PieceRenouOrgChg",
                           "Lst_PourcentAbatOrgChg",
                           "Lst_PrestServOrgChg",
                           "Lst_TxRembMajOrgChg",
                           "Lst_TxRembOrgChg",
                           "Lst_TypeAct",
                           "Opt_DimJF",
                           "Opt_GestPartMont",
                           "Opt_GestPartPourc",
                           "Opt_HeureOrgChg",
                           "Opt_IndBordOrgChg",
                           "Opt_MFPBordOrgChg",
                           "Opt_MontantOrgChg",
                           "Opt_PlafGlobalOrgChg",
                           "Opt_PlafMensOrgChg",
                           "Opt_PlafMensRepOrgChg",
                           "Opt_Quotient",
                           "Opt_RecapBordOrgChg",
                           "Opt_Ressource",
                           "Opt_Semaine",
                           "Opt_Totalite",
                           "Opt_TypeComplOrgChg",
                           "Opt_TypePrincipalOrgChg",
                           "Txt_BaremCoursOrgChg",
                           "Txt_CodOrgChg",
                           "Txt_CodeCptPrestationService",
                           "Txt_CodeThesaurus",
                           "Txt_CpteProdAide",
                           "Txt_CreditOrgChg",
                           "Txt_DatBaremCours",
                           "Txt_DatBaremPrec",
                           "Txt_DateRembOrgChg",
                           "Txt_DebAbatHOrgChg",
                           "Txt_DebRevMenOrgChg",
                           "Txt_DebRevSeulOrgChg",
                           "Txt_DebitOrgChg",
                           "Txt_DesFacture",
                           "Txt_Entite",
                           "Txt_FinAbatHOrgChg",
                           "Txt_FinRevMenOrgChg",
                           "Txt_FinRevSeulOrgChg",
                           "Txt_IdentMagnetOrgChg",
                           "Txt_InterlocDossOrgChg",
                           "Txt_InterlocFactOrgChg",
                           "Txt_NbExEmplOrgChg",
                           "Txt_PourcentAbatOrgChg",
                           "Txt_PrestServOrgChg",
                           "Txt_RaisonOrgChg",
                           "Txt_SigleOrgChg",
                           "Txt_TxRembMajOrgChg",
                           "Txt_TxRembOrgChg",
                           "Ctr_Adresseorgchg",
                           "Ong_OrgPriseChg"}) {
    EXPECT_NE(surface_.find(name), nullptr) << name;
  }
}

TEST_F(ScreenTest, EveryNameIsUsedOnce) {
  std::map<std::string, int> names;
  std::vector<Control*> all;
  const std::function<void(Container&)> walk = [&](Container& container) {
    for (Control* child : container.children()) {
      ++names[child->name()];
      if (auto* inner = dynamic_cast<Container*>(child)) walk(*inner);
    }
  };
  walk(surface_);
  for (const auto& [name, count] : names) EXPECT_EQ(count, 1) << name;
}

TEST_F(ScreenTest, HidesWhatCannotBeUsedYet) {
  for (Control* child : screen_.Ong_OrgPriseChg.page(screen::kParticipation).children()) {
    EXPECT_FALSE(child->visible()) << child->name();
  }
  std::vector<std::string> usable;
  for (Control* child : screen_.Ong_OrgPriseChg.page(screen::kPriseEnCharge).children()) {
    if (child->visible()) usable.push_back(child->name());
  }
  EXPECT_EQ(usable,
            (std::vector<std::string>{"Cdr_AttribOrgChg", "Etq_CptPrestationService",
                                      "Txt_CodeCptPrestationService", "Cbo_CptPrestationService"}));
}

TEST_F(ScreenTest, TheListsOfCodesAndWidthsAreNeverSeen) {
  screen_.Ong_OrgPriseChg.setTab(screen::kBordereau);
  EXPECT_FALSE(screen_.bordereau.Lst_LongParam.shown());
  screen_.Ong_OrgPriseChg.setTab(screen::kActivites);
  EXPECT_FALSE(screen_.activites.Lst_CodActSelect.shown());
}

TEST_F(ScreenTest, EditorListsAreInAFixedPitchFont) {
  for (const char* name : {"Lst_DateRembOrgChg", "Lst_TxRembOrgChg", "Lst_TxRembMajOrgChg",
                           "Lst_PrestServOrgChg", "Lst_DebAbatHOrgChg", "Lst_FinAbatHOrgChg",
                           "Lst_PourcentAbatOrgChg", "Lst_Activite", "Lst_ActSelect"}) {
    EXPECT_EQ(surface_.find(name)->font().name, "Courier New") << name;
  }
}

TEST_F(ScreenTest, MnemonicsAreUniqueOnBarTabsAndFirstPage) {
  std::map<char32_t, std::string> letters;
  const auto add = [&](const std::string& caption, const std::string& name) {
    const char32_t letter = toolkit::mnemonicOf(caption);
    if (!letter) return;
    EXPECT_TRUE(letters.emplace(letter, name).second)
        << name << " and " << letters[letter] << " share "
        << std::string(1, static_cast<char>(letter));
  };
  for (Control* control : seen()) {
    const bool entry = control->name() == "Etq_SigleOrgChg";  // stands in for Etq_RechercheSigle
    if (!entry && control->kind() != Kind::TabPage) add(control->caption(), control->name());
  }
  for (int tab = 0; tab < 6; ++tab) {
    add(screen_.Ong_OrgPriseChg.page(tab).caption(), "tab " + std::to_string(tab));
  }
  for (const char* name : {"Cmd_Ajouter", "Cmd_Supprimer", "Cmd_OK", "Cmd_Annuler", "Cmd_Sortir"}) {
    EXPECT_NE(toolkit::mnemonicOf(surface_.find(name)->caption()), 0U) << name;
  }
}

TEST_F(ScreenTest, NothingSeenOverlapsOrLeavesItsContainer) {
  for (Control* control : seen()) {
    const Place& place = control->place();
    if (control->kind() == Kind::TabPage) continue;
    EXPECT_GT(place.width, 0) << control->name();
    EXPECT_GT(place.height, 0) << control->name();
    EXPECT_GE(place.left, 0) << control->name();
    EXPECT_LE(place.left + place.width, control->parent()->place().width) << control->name();
    EXPECT_LE(place.top + place.height, control->parent()->place().height) << control->name();
    for (Control* sibling : control->parent()->children()) {
      if (sibling == control || !sibling->shown()) continue;
      if (sibling->place() == place) continue;  // the acronym's two fields and labels
      EXPECT_FALSE(overlap(place, sibling->place()))
          << control->name() << " and " << sibling->name();
    }
  }
}

// The widest of the usual dialog fonts takes about 6 pixels a character at 96 dpi; a button needs
// some room at both ends.
TEST_F(ScreenTest, CaptionsKeepSpareWidth) {
  for (Control* control : seen()) {
    if (control->kind() != Kind::Label && control->kind() != Kind::CommandButton) continue;
    const auto characters =
        static_cast<int>(text::length(toolkit::withoutMnemonic(control->caption())));
    const int needed = characters * 6 * 15 * 115 / 100;
    const int room = control->kind() == Kind::CommandButton ? 120 : 0;
    EXPECT_LE(needed + room, control->place().width) << control->name();
  }
}

TEST_F(ScreenTest, FieldsOfTheFirstPageLineUp) {
  const auto left = [](const Control& control) {
    int twips = 0;
    for (const Control* c = &control; c && c->kind() != Kind::TabPage; c = c->parent()) {
      twips += c->place().left;
    }
    return twips;
  };
  const int column = left(screen_.coordonnees.Txt_RaisonOrgChg);
  for (const char* name :
       {"Txt_Complement", "Txt_NumVoie", "Txt_Localite", "Txt_CodePostal", "Txt_Telephone",
        "Txt_Email", "Txt_InterlocDossOrgChg", "Txt_InterlocFactOrgChg"}) {
    EXPECT_EQ(left(*surface_.find(name)), column) << name;
  }
}

TEST_F(ScreenTest, TheCodeTakesThreeCharacters) {
  EXPECT_EQ(screen_.bar.Txt_CodOrgChg.maxLength(), 3);
}

class Keyboard : public ControlTest {
 protected:
  Keyboard() {
    fillThreeBodies(store_);
    start();
  }
};

TEST_F(Keyboard, TabFollowsTheReadingOrder) {
  lookUp("001");
  std::vector<std::string> order = {control_->surface().focus()->name()};
  while (user_->tab()) order.push_back(control_->surface().focus()->name());
  EXPECT_EQ(order, (std::vector<std::string>{"Txt_CodOrgChg",
                                             "Cbo_SigleOrgChg",
                                             "Cmd_Supprimer",
                                             "Cmd_OK",
                                             "Cmd_Annuler",
                                             "Cmd_Sortir",
                                             "Ong_OrgPriseChg",
                                             "Txt_RaisonOrgChg",
                                             "Txt_Complement",
                                             "Txt_NumVoie",
                                             "Cbo_NatureVoie",
                                             "Txt_NomVoie",
                                             "Txt_Localite",
                                             "Txt_CodePostal",
                                             "Txt_Ville",
                                             "Txt_Telephone",
                                             "Txt_Fax",
                                             "Txt_Email",
                                             "Txt_InterlocDossOrgChg",
                                             "Txt_InterlocFactOrgChg"}));
}

TEST_F(Keyboard, LabelsLeadToTheirFields) {
  lookUp("001");
  const std::map<char32_t, const char*> fields = {{'E', "Txt_CodOrgChg"},
                                                  {'I', "Cbo_SigleOrgChg"},
                                                  {'L', "Txt_RaisonOrgChg"},
                                                  {'M', "Txt_Complement"},
                                                  {'Y', "Txt_NumVoie"},
                                                  {'C', "Txt_CodePostal"},
                                                  {'H', "Txt_Telephone"},
                                                  {'X', "Txt_Fax"},
                                                  {'Q', "Txt_Email"},
                                                  {'D', "Txt_InterlocDossOrgChg"},
                                                  {'T', "Txt_InterlocFactOrgChg"}};
  for (const auto& [letter, name] : fields) {
    EXPECT_TRUE(user_->alt(letter));
    EXPECT_EQ(control_->surface().focus()->name(), name);
  }
}

TEST_F(Keyboard, TheAcronymsMnemonicLeadsToTheFieldThatIsSeen) {
  press("Cmd_Ajouter");
  user_->go(box("Txt_Ville"));
  EXPECT_TRUE(user_->alt('I'));
  EXPECT_TRUE(box("Txt_SigleOrgChg").hasFocus());
}

TEST_F(Keyboard, AWholeCreationNeedsNoMouse) {
  user_->alt('A');
  user_->type("neuf");
  user_->alt('L');
  user_->type("Organisme neuf\tBât. B");
  user_->alt('V');
  user_->alt('J');
  user_->type("010");
  user_->alt('B');
  user_->alt('L');
  auto& possible = child<ListBox>("Lst_ParamPossOrgChg");
  ASSERT_TRUE(possible.hasFocus());
  possible.userSelect(0, {0});  // by the list's own keys
  user_->tab();
  user_->press(toolkit::Key::Space);
  user_->alt('P');
  user_->alt('H');
  user_->alt('O');
  expectNoBox();
  EXPECT_EQ(attribute("004", 1), "NEUF");
  EXPECT_EQ(attribute("004", 3), "Bât. B");
  EXPECT_EQ(attribute("004", 24), "H");
  EXPECT_EQ(attribute("004", 46), "010");
  EXPECT_EQ(attribute("004", 61), "2");
  user_->type("004");
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Organisme neuf");
  user_->alt('S');
  EXPECT_TRUE(control_->W_Sortir());
}

// The address control, on its own -----------------------------------------------------------------

class Address : public ScreenTest {
 protected:
  Address() { fillTables(store_); }
  void initialise(bool kinds, bool entry, bool capitals) {
    panel_.setTheDatabase(store_.connect());
    panel_.setReglage(1, kinds);
    panel_.setReglage(2, entry);
    panel_.setReglage(3, capitals);
    panel_.initialiser();
  }
  testing_support::MemoryStore store_;
  screen::EditSession session_;
  pages::AddressPanel panel_{screen_.coordonnees.adresse, session_};
  toolkit::headless::User user_{surface_};
};

TEST_F(Address, WorksFromTheAttributeGiven) {
  initialise(true, true, false);
  store::DynamicArray record;
  for (int i = 1; i <= 40; ++i) record.set(i, "a" + std::to_string(i));
  panel_.afficher(record, 20);
  EXPECT_EQ(screen_.coordonnees.adresse.Txt_Complement.text(), "a20");
  EXPECT_EQ(screen_.coordonnees.adresse.Txt_Email.text(), "a29");
  const std::string before = record.text();
  panel_.ecrire(record, 20);
  EXPECT_EQ(record.text(), before);
}

TEST_F(Address, StaysWithinItsOwnAttributes) {
  initialise(true, true, false);
  store::DynamicArray record;
  for (int i = 1; i <= 62; ++i) record.set(i, "x");
  panel_.vider();
  panel_.ecrire(record, store::adresse::Premier);
  for (int i = 1; i <= 62; ++i) {
    const bool own = i >= store::adresse::Premier && i <= store::adresse::Dernier;
    EXPECT_EQ(record.get(i), own && record.get(i).empty() ? "" : "x") << i;
  }
}

TEST_F(Address, TheFirstSettingOffersTheKindsOfStreet) {
  initialise(true, true, false);
  EXPECT_EQ(lines(screen_.coordonnees.adresse.Cbo_NatureVoie.items()),
            (std::vector<std::string>{"Avenue", "Rue"}));
  initialise(false, true, false);
  EXPECT_EQ(screen_.coordonnees.adresse.Cbo_NatureVoie.listCount(), 0);
}

TEST_F(Address, TheSecondSettingOpensItToEntry) {
  initialise(true, false, false);
  EXPECT_FALSE(user_.fill(screen_.coordonnees.adresse.Txt_Ville, "Lyon"));
  initialise(true, true, false);
  EXPECT_TRUE(user_.fill(screen_.coordonnees.adresse.Txt_Ville, "Lyon"));
}

TEST_F(Address, TheThirdSettingMakesCapitalsButOfTheMailAddress) {
  initialise(true, true, true);
  user_.fill(screen_.coordonnees.adresse.Txt_Ville, "Orléans");
  user_.fill(screen_.coordonnees.adresse.Txt_Email, "a@b.example");
  EXPECT_EQ(screen_.coordonnees.adresse.Txt_Ville.text(), "ORLÉANS");
  EXPECT_EQ(screen_.coordonnees.adresse.Txt_Email.text(), "a@b.example");
  initialise(true, true, false);
  user_.fill(screen_.coordonnees.adresse.Txt_Ville, "Orléans");
  EXPECT_EQ(screen_.coordonnees.adresse.Txt_Ville.text(), "Orléans");
}

TEST_F(Address, KnowsNoFourthSetting) {
  EXPECT_THROW(panel_.setReglage(0, true), std::invalid_argument);
  EXPECT_THROW(panel_.setReglage(4, true), std::invalid_argument);
}

}  // namespace
}  // namespace behaviour
