#include "screen/Screen.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "pages/AddressPanel.h"
#include "store/Layouts.h"
#include "tests/behaviour/ControlTest.h"
#include "text/Utf8.h"
#include "toolkit/AccessibleName.h"

namespace behaviour {
namespace {

using toolkit::Container;
using toolkit::Control;
using toolkit::Kind;
using toolkit::ListBox;
using toolkit::Place;

class ScreenTest : public testing::Test {
 protected:
  toolkit::Surface surface_{"Surface"};
  screen::Screen screen_{surface_};

  // What is seen of the bar and of the page in front, in order of creation.
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
  EXPECT_PRED_FORMAT2(
      same, linesOf(screen_.regles.Cbo_RenouvOrgChg),
      (std::vector<std::string>{"Pas de gestion renouvellement", "Renouvellement à - 1 mois",
                                "Renouvellement à - 2 mois", "Renouvellement à - 3 mois",
                                "Renouvellement à - 4 mois", "Renouvellement à - 5 mois",
                                "Renouvellement à - 6 mois"}));
  EXPECT_PRED_FORMAT2(
      same, linesOf(screen_.regles.Cbo_PeriodFactOrgChg),
      (std::vector<std::string>{"Mensuelle", "Trimestrielle", "A fin de prise en charge"}));
  EXPECT_PRED_FORMAT2(same, linesOf(screen_.bordereau.Lst_ParamTriPos),
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
                           "Etq_BaremCoursOrgChg",
                           "Etq_BaremPrecOrgChg",
                           "Etq_CreditOrgChg",
                           "Etq_DateRembOrgChg",
                           "Etq_DebitOrgChg",
                           "Etq_DesFacture",
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

TEST_F(ScreenTest, TheListsOfCodesAndWidthsAreNeverSeen) {
  screen_.Ong_OrgPriseChg.setTab(screen::kBordereau);
  EXPECT_FALSE(screen_.bordereau.Lst_LongParam.shown());
  screen_.Ong_OrgPriseChg.setTab(screen::kActivites);
  EXPECT_FALSE(screen_.activites.Lst_CodActSelect.shown());
}

TEST_F(ScreenTest, TheListsOfTablesAreInAFixedPitchFont) {
  for (const char* name : {"Lst_DateRembOrgChg", "Lst_TxRembOrgChg", "Lst_TxRembMajOrgChg",
                           "Lst_PrestServOrgChg", "Lst_DebAbatHOrgChg", "Lst_FinAbatHOrgChg",
                           "Lst_PourcentAbatOrgChg", "Lst_DebRevSeulOrgChg", "Lst_FinRevSeulOrgChg",
                           "Lst_DebRevMenOrgChg", "Lst_FinRevMenOrgChg", "Lst_BaremPrecOrgChg",
                           "Lst_BaremCoursOrgChg", "Lst_Activite", "Lst_ActSelect"}) {
    EXPECT_EQ(surface_.find(name)->font(), (toolkit::Font{"Courier New", 9, false})) << name;
  }
}

TEST_F(ScreenTest, NamesWhatTheListEditorsShow) {
  const std::vector<std::pair<const char*, const char*>> captions{
      {"Cdr_AttribOrgChg", "Attribution des notifications d'accord"},
      {"Opt_HeureOrgChg", "En heures"},
      {"Opt_MontantOrgChg", "En montant"},
      {"Cac_AjusTarif", "Ajustement tarifaire sur facture aidé"},
      {"Cac_CoutGlobal", "Coût global et déduction organisme sur facture aidé"},
      {"Cdr_TauxOrgChg", "Taux de remboursement "},
      {"Etq_DateRembOrgChg", "Date d'effet"},
      {"Etq_TxRembOrgChg", "Taux normal"},
      {"Etq_TxRembMajOrgChg", "Taux majoré"},
      {"Etq_PrestServOrgChg", "       Dont     Prest. services"},
      {"Cmd_AjoutTaux", "Ajouter"},
      {"Cmd_SuppTaux", "Supprimer"},
      {"Cmd_AnnulerTaux", "Annuler"},
      {"Cdr_AbatOrgChg", "Abattement participation bénéficiaire "},
      {"Etq_TrancheAppli", "Tranche d'heures"},
      {"Cmd_AjoutAbat", "Ajouter"},
      {"Cmd_SuppAbat", "Supprimer"},
      {"Cmd_AnnulerAbat", "Annuler"},
      {"Cdr_ParticipBenef", "Participation bénéficiaire "},
      {"Cdr_Bareme", "Barème en fonction"},
      {"Opt_Quotient", "du quotient familial"},
      {"Opt_Ressource", "des ressources"},
      {"Cdr_GestionParticipBenef", "Gestion de la participation bénéficiaire"},
      {"Opt_GestPartPourc", "en %"},
      {"Opt_GestPartMont", "en montant"},
      {"Cac_Abonnement", "Abonnement"},
      {"Etq_TrancheRevenus", "Tranches de revenus"},
      {"Etq_PersSeule", "Personne seule"},
      {"Etq_Menage", "Ménage"},
      {"Etq_Montant", "Montant au"},
      {"Cmd_AjoutPart", "Ajouter"},
      {"Cmd_SuppPart", "Supprimer"},
      {"Cmd_AnnulerPart", "Annuler"},
      {"Cmd_NouveauBareme", "Nouveau barème"}};
  for (const auto& [name, caption] : captions) {
    const Control* control = surface_.find(name);
    ASSERT_TRUE(control) << name;
    EXPECT_EQ(toolkit::withoutMnemonic(control->caption()), caption) << name;
  }
}

// Each page, with the bar and the tabs around it --------------------------------------------------

bool isField(const Control& control) {
  return control.kind() == Kind::TextBox || control.kind() == Kind::ComboBox ||
         control.kind() == Kind::ListBox;
}

// The control created after it in the same container, null when it is the last.
Control* next(const Control& control) {
  const auto& children = control.parent()->children();
  const auto at = std::find(children.begin(), children.end(), &control);
  return at + 1 == children.end() ? nullptr : *(at + 1);
}

bool leadsToAField(const Control& label) {
  const Control* field = next(label);
  return field && isField(*field);
}

// A table is one stop of the Tab key: the headings of its other columns lead nowhere new.
bool leadsToAStop(const Control& label) { return leadsToAField(label) && next(label)->tabStop(); }

int right(const Control& control) { return control.place().left + control.place().width; }
int bottom(const Control& control) { return control.place().top + control.place().height; }

// An edit zone stands below its column.
const Control* columnOf(const Control& zone) {
  for (const Control* child : zone.parent()->children()) {
    if (child->kind() == Kind::ListBox && child->place().left == zone.place().left &&
        zone.place().top - bottom(*child) == 60) {
      return child;
    }
  }
  return nullptr;
}

// The label of the field, or of the fields in whose row it stands, or of the column that it edits;
// else the frame that it is the first in.
const Control* captionOf(const Control& field) {
  if (const Control* column = columnOf(field)) return captionOf(*column);
  const Control* label = nullptr;
  bool first = true;
  for (const Control* child : field.parent()->children()) {
    if (child == &field) break;
    if (child->kind() == Kind::Label) {
      label = child;
    } else if (!isField(*child) || child->place().top != field.place().top) {
      label = nullptr;
    }
    first = false;
  }
  if (label) return label;
  return first && field.parent()->kind() == Kind::Frame ? field.parent() : nullptr;
}

// From the left edge of the page.
int leftOnPage(const Control& control) {
  int twips = 0;
  for (const Control* c = &control; c && c->kind() != Kind::TabPage; c = c->parent()) {
    twips += c->place().left;
  }
  return twips;
}

// Of two in one container: is the first read before the second?
bool readBefore(const Control& first, const Control& second) {
  if (bottom(first) <= second.place().top) return true;
  if (bottom(second) <= first.place().top) return false;
  return first.place().left < second.place().left;
}

// These have their letters while a row is open.
bool isOfARow(const std::string& name) {
  static const std::set<std::string> buttons = {"Cmd_OKTaux", "Cmd_AnnulerTaux", "Cmd_SuppTaux",
                                                "Cmd_OKAbat", "Cmd_AnnulerAbat", "Cmd_SuppAbat",
                                                "Cmd_OKPart", "Cmd_AnnulerPart", "Cmd_SuppPart"};
  return buttons.contains(name);
}

class PageTest : public ScreenTest, public testing::WithParamInterface<int> {
 protected:
  PageTest() { screen_.Ong_OrgPriseChg.setTab(GetParam()); }

  // The controls that a mnemonic is seen for, by letter, the tabs included.
  std::map<char32_t, std::vector<std::string>> mnemonics() {
    std::map<char32_t, std::vector<std::string>> letters;
    const auto add = [&](const std::string& caption, const std::string& name) {
      const char32_t letter = toolkit::mnemonicOf(caption);
      if (!letter) return;
      for (const std::string& other : letters[letter]) {
        ADD_FAILURE() << name << " and " << other << " share "
                      << std::string(1, static_cast<char>(letter));
      }
      letters[letter].push_back(name);
    };
    for (Control* control : seen()) {
      const bool entry = control->name() == "Etq_SigleOrgChg";  // in the place of its look-up
      if (!entry && control->kind() != Kind::TabPage) add(control->caption(), control->name());
    }
    for (int tab = 0; tab < 6; ++tab) {
      add(screen_.Ong_OrgPriseChg.page(tab).caption(), "tab " + std::to_string(tab));
    }
    return letters;
  }
  std::vector<Control*> seenOnPage() {
    std::vector<Control*> all;
    collect(screen_.Ong_OrgPriseChg.page(GetParam()), all);
    return all;
  }
};

INSTANTIATE_TEST_SUITE_P(Every, PageTest,
                         testing::Values(screen::kCoordonnees, screen::kRegles,
                                         screen::kPriseEnCharge, screen::kParticipation,
                                         screen::kBordereau, screen::kActivites));

TEST_P(PageTest, NoMnemonicIsSeenTwice) {
  mnemonics();
  for (Control* control : seen()) {
    const bool arrow = control->caption().ends_with("->") || control->caption().starts_with("<-");
    if (control->kind() != Kind::CommandButton || arrow || isOfARow(control->name())) continue;
    EXPECT_NE(toolkit::mnemonicOf(control->caption()), 0U) << control->name();
  }
}

// A caption goes without only when each of its letters is another's, or when the options that it
// stands over have mnemonics of their own.
TEST_P(PageTest, NoCaptionGoesWithoutAMnemonicThatHasALetterLeft) {
  const auto taken = mnemonics();
  for (Control* control : seenOnPage()) {
    if (toolkit::mnemonicOf(control->caption()) || isOfARow(control->name())) continue;
    if (control->isContainer()) {
      const auto& inside = dynamic_cast<Container&>(*control).children();
      const auto has = [](Control* child) { return toolkit::mnemonicOf(child->caption()) != 0; };
      if (std::any_of(inside.begin(), inside.end(), has)) continue;
    }
    const Control& around = *control->parent();
    if (around.kind() == Kind::Frame && toolkit::mnemonicOf(around.caption())) continue;
    if (control->kind() == Kind::Label && !leadsToAStop(*control)) continue;
    for (const char letter : control->caption()) {
      const char upper = static_cast<char>(letter >= 'a' && letter <= 'z' ? letter - 32 : letter);
      if (upper < 'A' || upper > 'Z') continue;
      EXPECT_TRUE(taken.contains(static_cast<char32_t>(upper)))
          << control->name() << " could have " << upper;
    }
  }
}

TEST_P(PageTest, EveryFieldHasACaption) {
  for (Control* control : seenOnPage()) {
    if (control->kind() == Kind::Frame || control->kind() == Kind::Label) continue;
    if (!isField(*control)) {
      const bool bar = control->kind() == Kind::ScrollBar;  // goes with the field before it
      EXPECT_NE(control->caption().empty(), !bar) << control->name();
      continue;
    }
    const Control* caption = captionOf(*control);
    EXPECT_TRUE(caption && !caption->caption().empty()) << control->name();
  }
}

TEST_P(PageTest, ALabelStandsBesideOrAboveItsField) {
  for (Control* control : seenOnPage()) {
    if (control->kind() != Kind::Label || !leadsToAField(*control)) continue;
    const Control& field = *next(*control);
    const bool beside =
        control->place().top == field.place().top + 75 && right(*control) <= field.place().left;
    const bool above =
        control->place().left == field.place().left && bottom(*control) == field.place().top;
    EXPECT_TRUE(beside || above) << control->name();
  }
}

TEST_P(PageTest, NothingSeenOverlapsOrLeavesItsContainer) {
  for (Control* control : seen()) {
    const Place& place = control->place();
    if (control->kind() == Kind::TabPage) continue;
    EXPECT_GT(place.width, 0) << control->name();
    EXPECT_GT(place.height, 0) << control->name();
    EXPECT_GE(place.left, 0) << control->name();
    EXPECT_GE(place.top, 0) << control->name();
    EXPECT_LE(right(*control), control->parent()->place().width) << control->name();
    EXPECT_LE(bottom(*control), control->parent()->place().height) << control->name();
    for (Control* sibling : control->parent()->children()) {
      if (sibling == control || !sibling->shown()) continue;
      if (sibling->place() == place) continue;  // the acronym's two fields and labels
      EXPECT_FALSE(overlap(place, sibling->place()))
          << control->name() << " and " << sibling->name();
    }
  }
}

// The lines that a label of this width breaks its caption into, 99 when a word is wider; blanks go
// with the break.
int linesNeeded(const std::string& caption, int width, int character) {
  int lines = 1;
  int used = 0;
  for (std::size_t from = 0; from < caption.size();) {
    const std::size_t word = std::min(caption.find_first_not_of(' ', from), caption.size());
    const std::size_t end = std::min(caption.find(' ', word), caption.size());
    const auto wide = [&](std::size_t begin) {
      return static_cast<int>(text::length(caption.substr(begin, end - begin))) * character;
    };
    const bool breaks = used > 0 && used + wide(from) > width;
    used = breaks ? wide(word) : used + wide(from);
    if (used > width) return 99;
    if (breaks) ++lines;
    from = end;
  }
  return lines;
}

// The widest of the usual dialog fonts takes about 6 pixels a character at 96 dpi; a button needs
// some room at both ends, an option or check box its mark, a frame its corners. A heading of two
// lines leaves less.
TEST_P(PageTest, CaptionsKeepSpareWidth) {
  const std::map<Kind, int> rooms = {{Kind::Label, 0},
                                     {Kind::CommandButton, 120},
                                     {Kind::OptionButton, 300},
                                     {Kind::CheckBox, 300},
                                     {Kind::Frame, 240}};
  for (Control* control : seen()) {
    const auto room = rooms.find(control->kind());
    if (room == rooms.end()) continue;
    if (control->kind() == Kind::Label && control->place().height == 2 * 225) {
      const std::string caption = toolkit::withoutMnemonic(control->caption());
      EXPECT_LE(linesNeeded(caption, control->place().width, 5 * 15), 2) << control->name();
      continue;
    }
    const auto characters =
        static_cast<int>(text::length(toolkit::withoutMnemonic(control->caption())));
    const int needed = characters * 6 * 15 * 115 / 100;
    EXPECT_LE(needed + room->second, control->place().width) << control->name();
  }
}

TEST_P(PageTest, TheOrderOfTheTabKeyIsTheReadingOrder) {
  std::map<Container*, std::vector<Control*>> stops;
  for (Control* control : seenOnPage()) {
    if (control->kind() != Kind::Label && (control->isContainer() || control->tabStop())) {
      stops[control->parent()].push_back(control);
    }
  }
  for (const auto& [container, order] : stops) {
    for (std::size_t i = 1; i < order.size(); ++i) {
      EXPECT_TRUE(readBefore(*order[i - 1], *order[i]))
          << order[i - 1]->name() << " and " << order[i]->name();
    }
  }
}

// What is particular to a page
// ---------------------------------------------------------------------

TEST_F(ScreenTest, FieldsLineUpInColumns) {
  const auto sameLeft = [&](std::initializer_list<const char*> names) {
    for (const char* name : names) {
      EXPECT_EQ(leftOnPage(*surface_.find(name)), leftOnPage(*surface_.find(*names.begin())))
          << name;
    }
  };
  sameLeft({"Txt_RaisonOrgChg", "Txt_Complement", "Txt_NumVoie", "Txt_Localite", "Txt_CodePostal",
            "Txt_Telephone", "Txt_Email", "Txt_InterlocDossOrgChg", "Txt_InterlocFactOrgChg",
            "Cbo_RenouvOrgChg", "Cbo_StatsOrgChg", "Txt_DebitOrgChg", "Txt_CreditOrgChg",
            "Txt_CpteProdAide", "Txt_CodeThesaurus", "Cbo_Entite", "Opt_DimJF"});
  sameLeft({"Txt_DesFacture", "Txt_CodeCptPrestationService"});
  sameLeft({"Cac_CoutGlobal", "Cbo_CptPrestationService"});
  sameLeft({"Cbo_DebitOrgChg", "Cbo_CreditOrgChg", "Cbo_CpteProdAide"});
  sameLeft({"Lst_ParamTriSelect", "Etq_IdentMagnetOrgChg"});
  sameLeft({"Opt_IndBordOrgChg", "Txt_NbExEmplOrgChg", "Txt_IdentMagnetOrgChg"});
  sameLeft({"Lst_ActSelect", "Opt_Semaine"});
}

TEST_F(ScreenTest, FramesAndFieldsEndInColumns) {
  const auto sameRight = [&](std::initializer_list<const char*> names) {
    const auto end = [&](const char* name) {
      const Control& control = *surface_.find(name);
      return leftOnPage(control) + control.place().width;
    };
    for (const char* name : names) EXPECT_EQ(end(name), end(*names.begin())) << name;
  };
  sameRight({"Ctr_Adresseorgchg", "Cdr_InterlocOrgChg", "Cdr_DemandesAccord", "Cdr_RenouvOrgChg",
             "Cdr_MiseEnForme", "Cdr_TypeBordereau", "Cdr_Exemplaire", "Cbo_Entite", "Lst_TypeAct",
             "Cdr_GestionExclu", "Cdr_AbatOrgChg", "Cdr_ParticipBenef"});
  sameRight({"Cdr_AttribOrgChg", "Cdr_TauxOrgChg"});
  sameRight({"Txt_RaisonOrgChg", "Txt_Email", "Lst_PieceRenouOrgChg", "Cbo_PeriodFactOrgChg",
             "Cbo_DebitOrgChg", "Cbo_CreditOrgChg", "Cbo_CpteProdAide", "Cbo_CptPrestationService",
             "Txt_DesFacture", "Cac_CoutGlobal", "Cmd_NouveauBareme", "Txt_DatBaremCours",
             "Cmd_HautBord", "Cmd_BasBord", "Bdh_NbExemp", "Txt_IdentMagnetOrgChg"});
}

TEST_F(ScreenTest, FramesStandLevelWithThoseBesideThem) {
  const auto sameTop = [&](std::initializer_list<const char*> names) {
    const Control& first = *surface_.find(*names.begin());
    for (const char* name : names) {
      EXPECT_EQ(surface_.find(name)->place().top, first.place().top) << name;
    }
  };
  const auto sameFoot = [&](std::initializer_list<const char*> names) {
    const Control& first = *surface_.find(*names.begin());
    for (const char* name : names) EXPECT_EQ(bottom(*surface_.find(name)), bottom(first)) << name;
  };
  const auto level = [&](std::initializer_list<const char*> names) {
    sameTop(names);
    sameFoot(names);
  };
  level({"Cdr_TypeOrg", "Cdr_PlafondOrg", "Cdr_DemandesAccord"});
  level({"Cdr_TauxOrgChg", "Cdr_AbatOrgChg"});
  level({"Cdr_Bareme", "Cdr_GestionParticipBenef"});
  sameTop({"Cdr_Tri", "Cdr_TypeBordereau"});
  sameFoot({"Cdr_Tri", "Cdr_Exemplaire"});
}

TEST_F(ScreenTest, FramesStandAsFarBelowEachOtherAsBeside) {
  const std::pair<const char*, const char*> columns[] = {{"Cdr_TypeOrg", "Cdr_RenouvOrgChg"},
                                                         {"Cdr_AttribOrgChg", "Cdr_TauxOrgChg"},
                                                         {"Cdr_MiseEnForme", "Cdr_Tri"},
                                                         {"Cdr_TypeBordereau", "Cdr_Exemplaire"}};
  for (const auto& [upper, lower] : columns) {
    EXPECT_EQ(surface_.find(lower)->place().top - bottom(*surface_.find(upper)), 120) << lower;
  }
}

TEST_F(ScreenTest, ThePagesAreUsedToTheirFoot) {
  for (const int tab :
       {screen::kRegles, screen::kPriseEnCharge, screen::kBordereau, screen::kActivites}) {
    const toolkit::TabPage& page = screen_.Ong_OrgPriseChg.page(tab);
    int last = 0;
    for (const Control* child : page.children()) {
      if (child->visible()) last = std::max(last, bottom(*child));
    }
    EXPECT_GE(page.place().height - last, 120) << tab;
    EXPECT_LE(page.place().height - last, 300) << tab;
  }
}

// A line is 20 characters of the label, a blank and the longest name of a type. At 144 dpi, where
// it is widest, a character of the fixed-pitch font takes 110 twips; border and scroll bar 350.
TEST_F(ScreenTest, TheActivityListsHoldAWholeLine) {
  for (ListBox* list : {&screen_.activites.Lst_Activite, &screen_.activites.Lst_ActSelect}) {
    EXPECT_GE(list->place().width, 34 * 110 + 350) << list->name();
  }
}

TEST_F(ScreenTest, TheTypesStandLineForLineBesideTheirActivities) {
  const ListBox& activities = screen_.activites.Lst_ActSelect;
  const ListBox& types = screen_.activites.Lst_TypeAct;
  EXPECT_EQ(types.place().top, activities.place().top);
  EXPECT_EQ(types.place().height, activities.place().height);
  EXPECT_EQ(types.font(), activities.font());
  EXPECT_LE(types.place().left - right(activities), 60);
  EXPECT_FALSE(types.scrollBar());
}

TEST_F(ScreenTest, TypingIsLimitedWhereTheDataHasItsLength) {
  EXPECT_EQ(screen_.bar.Txt_CodOrgChg.maxLength(), 3);
  EXPECT_EQ(screen_.activites.Txt_Entite.maxLength(), 3);
  EXPECT_EQ(screen_.regles.Txt_DebitOrgChg.maxLength(), 10);
  EXPECT_EQ(screen_.regles.Txt_CreditOrgChg.maxLength(), 10);
  EXPECT_EQ(screen_.regles.Txt_CpteProdAide.maxLength(), 10);
  EXPECT_EQ(screen_.priseEnCharge.Txt_CodeCptPrestationService.maxLength(), 10);
  EXPECT_EQ(screen_.bordereau.Txt_NbExEmplOrgChg.maxLength(), 1);
  EXPECT_EQ(screen_.bordereau.Txt_CodeThesaurus.maxLength(), 0);
  EXPECT_EQ(screen_.bordereau.Txt_IdentMagnetOrgChg.maxLength(), 0);
}

TEST_F(ScreenTest, EditZonesTakeADateOrANumber) {
  for (const char* name : {"Txt_DateRembOrgChg", "Txt_DatBaremPrec", "Txt_DatBaremCours"}) {
    const auto& date = dynamic_cast<const toolkit::TextBox&>(*surface_.find(name));
    EXPECT_EQ(date.maxLength(), 10) << name;
    EXPECT_FALSE(date.rightAligned()) << name;
  }
  for (const char* name : {"Txt_TxRembOrgChg", "Txt_TxRembMajOrgChg", "Txt_PrestServOrgChg",
                           "Txt_DebAbatHOrgChg", "Txt_FinAbatHOrgChg", "Txt_PourcentAbatOrgChg",
                           "Txt_DebRevSeulOrgChg", "Txt_FinRevSeulOrgChg", "Txt_DebRevMenOrgChg",
                           "Txt_FinRevMenOrgChg", "Txt_BaremCoursOrgChg"}) {
    const auto& number = dynamic_cast<const toolkit::TextBox&>(*surface_.find(name));
    EXPECT_EQ(number.maxLength(), 15) << name;
    EXPECT_TRUE(number.rightAligned()) << name;
  }
}

// The three tables --------------------------------------------------------------------------------

struct TableNames {
  const char* name;
  std::vector<const char*> lists;
  std::vector<const char*> zones;  // "" for a column without one
  const char* bar;
};

class TableTest : public ScreenTest, public testing::WithParamInterface<TableNames> {
 protected:
  ListBox& list(std::size_t column) {
    return dynamic_cast<ListBox&>(*surface_.find(GetParam().lists[column]));
  }
  ListBox& last() { return list(GetParam().lists.size() - 1); }
  toolkit::ScrollBar& bar() {
    return dynamic_cast<toolkit::ScrollBar&>(*surface_.find(GetParam().bar));
  }
};

INSTANTIATE_TEST_SUITE_P(
    Of, TableTest,
    testing::Values(
        TableNames{"Rates",
                   {"Lst_DateRembOrgChg", "Lst_TxRembOrgChg", "Lst_TxRembMajOrgChg",
                    "Lst_PrestServOrgChg"},
                   {"Txt_DateRembOrgChg", "Txt_TxRembOrgChg", "Txt_TxRembMajOrgChg",
                    "Txt_PrestServOrgChg"},
                   "Bdv_TauxOrgChg"},
        TableNames{"Deductions",
                   {"Lst_DebAbatHOrgChg", "Lst_FinAbatHOrgChg", "Lst_PourcentAbatOrgChg"},
                   {"Txt_DebAbatHOrgChg", "Txt_FinAbatHOrgChg", "Txt_PourcentAbatOrgChg"},
                   "Bdv_AbatOrgChg"},
        TableNames{"Scale",
                   {"Lst_DebRevSeulOrgChg", "Lst_FinRevSeulOrgChg", "Lst_DebRevMenOrgChg",
                    "Lst_FinRevMenOrgChg", "Lst_BaremPrecOrgChg", "Lst_BaremCoursOrgChg"},
                   {"Txt_DebRevSeulOrgChg", "Txt_FinRevSeulOrgChg", "Txt_DebRevMenOrgChg",
                    "Txt_FinRevMenOrgChg", "", "Txt_BaremCoursOrgChg"},
                   "Bdv_Bareme"}),
    [](const auto& table) { return std::string(table.param.name); });

TEST_P(TableTest, ColumnsTouchAndScrollByOneBar) {
  for (std::size_t i = 0; i < GetParam().lists.size(); ++i) {
    EXPECT_FALSE(list(i).scrollBar()) << list(i).name();
    EXPECT_EQ(list(i).place().top, list(0).place().top) << list(i).name();
    EXPECT_EQ(list(i).place().height, list(0).place().height) << list(i).name();
    if (i == 0) continue;
    EXPECT_EQ(list(i).place().left, right(list(i - 1))) << list(i).name();
  }
  EXPECT_EQ(last().place().width, 975);
  EXPECT_FALSE(bar().visible());
  EXPECT_FALSE(bar().tabStop());
}

// At 96 dpi a row of Courier New 9 takes 15 pixels, 14 in fonts that stand in for it; the border 4.
TEST_P(TableTest, TwelveRowsAreInViewAndNoThirteenth) {
  const int pixels = list(0).place().height / 15;
  EXPECT_EQ((pixels - 4) / 15, 12);
  EXPECT_EQ((pixels - 4) / 14, 12);
}

TEST_P(TableTest, AZoneStandsBelowItsColumn) {
  for (std::size_t i = 0; i < GetParam().zones.size(); ++i) {
    if (GetParam().zones[i][0] == '\0') continue;
    const Control& zone = *surface_.find(GetParam().zones[i]);
    EXPECT_EQ(zone.place().left, list(i).place().left) << zone.name();
    EXPECT_EQ(zone.place().width, list(i).place().width) << zone.name();
    EXPECT_EQ(zone.place().top, bottom(list(0)) + 60) << zone.name();
  }
}

// The last list, made wider, has the bar within its border: the rows keep the width they had.
TEST_P(TableTest, TheScrollBarStandsInTheRoomThatTheLastColumnGains) {
  Place wide = last().place();
  wide.width = 1215;
  EXPECT_EQ(bar().place(),
            (Place{wide.left + wide.width - 240 - 30, wide.top + 30, 240, wide.height - 60}));
  EXPECT_LE(wide.left + wide.width, last().parent()->place().width - 60);
  const auto& order = last().parent()->children();
  EXPECT_LT(std::find(order.begin(), order.end(), &bar()),
            std::find(order.begin(), order.end(), &last()));
}

// Dates stand on the left, in the lists as in the zones.
TEST_P(TableTest, NumbersStandOnTheRightInOneFont) {
  for (std::size_t i = 0; i < GetParam().lists.size(); ++i) {
    const bool date = std::string_view(GetParam().lists[i]) == "Lst_DateRembOrgChg";
    EXPECT_EQ(list(i).rightAligned(), !date) << list(i).name();
    if (GetParam().zones[i][0] == '\0') continue;
    const auto& zone = dynamic_cast<const toolkit::TextBox&>(*surface_.find(GetParam().zones[i]));
    EXPECT_EQ(zone.rightAligned(), list(i).rightAligned()) << zone.name();
    EXPECT_EQ(zone.font(), list(i).font()) << zone.name();
  }
}

TEST_P(TableTest, TheNumbersOfTheLastColumnKeepClearOfTheBar) {
  Place wide = last().place();
  wide.width = 1215;
  last().setPlace(wide);
  EXPECT_EQ(last().covered(), 0);
  bar().setVisible(true);
  EXPECT_EQ(last().covered(), right(last()) - bar().place().left);
  for (std::size_t i = 0; i + 1 < GetParam().lists.size(); ++i) EXPECT_EQ(list(i).covered(), 0);
}

TEST_F(ScreenTest, ABracketsColumnsAreHeadedByItsEnds) {
  for (const auto& [head, list, caption] :
       std::vector<std::tuple<const char*, const char*, const char*>>{
           {"Etq_DebAbatHOrgChg", "Lst_DebAbatHOrgChg", "de"},
           {"Etq_FinAbatHOrgChg", "Lst_FinAbatHOrgChg", "à"},
           {"Etq_DebRevSeulOrgChg", "Lst_DebRevSeulOrgChg", "de"},
           {"Etq_FinRevSeulOrgChg", "Lst_FinRevSeulOrgChg", "à"},
           {"Etq_DebRevMenOrgChg", "Lst_DebRevMenOrgChg", "de"},
           {"Etq_FinRevMenOrgChg", "Lst_FinRevMenOrgChg", "à"}}) {
    const auto& label = dynamic_cast<const toolkit::Label&>(*surface_.find(head));
    const Control& column = *surface_.find(list);
    EXPECT_EQ(label.caption(), caption) << head;
    EXPECT_TRUE(label.rightAligned()) << head;
    EXPECT_EQ(label.parent(), column.parent()) << head;
    EXPECT_EQ(right(label), right(column)) << head;
    EXPECT_EQ(bottom(label), column.place().top) << head;
  }
}

// Room -------------------------------------------------------------------------------------------

// In a container that gives more height than the control needs.
class RoomTest : public ScreenTest {
 protected:
  static constexpr int kMore = 1500;
  void give(int more) { surface_.setRoom({screen::kWidth + more, screen::kHeight + more}); }
  std::map<std::string, Place> places() {
    std::map<std::string, Place> all;
    collectPlaces(surface_, all);
    return all;
  }
  static void collectPlaces(const Container& container, std::map<std::string, Place>& all) {
    for (const Control* child : container.children()) {
      all[child->name()] = child->place();
      if (child->isContainer()) collectPlaces(dynamic_cast<const Container&>(*child), all);
    }
  }
};

TEST_F(RoomTest, TheNaturalSizeIsTheLeast) {
  EXPECT_EQ(surface_.least(), (toolkit::Extent{screen::kWidth, screen::kHeight}));
  const auto before = places();
  surface_.setRoom({100, 100});
  EXPECT_EQ(places(), before);
}

TEST_F(RoomTest, MoreMakesTheListsLongerByAllOfIt) {
  const auto before = places();
  give(kMore);
  const auto after = places();
  for (const char* name :
       {"Lst_PiecePossibleOrgChg", "Lst_PieceRenouOrgChg", "Lst_DateRembOrgChg",
        "Lst_PrestServOrgChg", "Bdv_TauxOrgChg", "Lst_FinAbatHOrgChg", "Lst_DebRevSeulOrgChg",
        "Lst_BaremCoursOrgChg", "Bdv_Bareme", "Lst_Activite", "Lst_ActSelect", "Lst_TypeAct"}) {
    EXPECT_EQ(after.at(name).height, before.at(name).height + kMore) << name;
    EXPECT_EQ(after.at(name).top, before.at(name).top) << name;
    EXPECT_EQ(after.at(name).width, before.at(name).width) << name;
  }
  EXPECT_EQ(after.at("Lst_ParamPossOrgChg").height + after.at("Lst_ParamTriPos").height,
            before.at("Lst_ParamPossOrgChg").height + before.at("Lst_ParamTriPos").height + kMore);
  EXPECT_GT(after.at("Lst_ParamTriPos").height, before.at("Lst_ParamTriPos").height);
}

TEST_F(RoomTest, WhatIsBelowTheListsGoesDownWithTheirEnd) {
  const auto before = places();
  give(kMore);
  const auto after = places();
  for (const char* name : {"Cbo_StatsOrgChg", "Txt_CpteProdAide", "Txt_DateRembOrgChg",
                           "Cmd_AjoutTaux", "Txt_DesFacture", "Cmd_NouveauBareme",
                           "Txt_BaremCoursOrgChg", "Txt_CodeThesaurus", "Cdr_GestionExclu"}) {
    EXPECT_EQ(after.at(name).top, before.at(name).top + kMore) << name;
  }
  for (const char* name : {"Txt_CodOrgChg", "Cmd_Sortir", "Txt_RaisonOrgChg", "Txt_Entite"}) {
    EXPECT_EQ(after.at(name), before.at(name)) << name;
  }
}

TEST_F(RoomTest, NothingCoversAnythingInIt) {
  give(kMore);
  for (int tab = 0; tab < 6; ++tab) {
    screen_.Ong_OrgPriseChg.setTab(tab);
    for (Control* control : seen()) {
      for (Control* sibling : control->parent()->children()) {
        if (sibling == control) break;
        const bool bar = control->kind() == Kind::ScrollBar || sibling->kind() == Kind::ScrollBar;
        if (bar || !sibling->shown() || sibling->place() == control->place()) continue;
        EXPECT_FALSE(overlap(control->place(), sibling->place()))
            << control->name() << " " << sibling->name();
      }
    }
  }
}

TEST_F(RoomTest, LessAgainPutsAllBack) {
  const auto before = places();
  give(kMore);
  give(0);
  EXPECT_EQ(places(), before);
}

TEST_F(RoomTest, AColumnWidenedForItsBarStaysSo) {
  for (Control* wide : {static_cast<Control*>(&screen_.priseEnCharge.Lst_PourcentAbatOrgChg),
                        static_cast<Control*>(&screen_.priseEnCharge.Txt_PourcentAbatOrgChg)}) {
    Place place = wide->place();
    place.width = 1215;
    wide->setPlace(place);
  }
  give(kMore);
  EXPECT_EQ(screen_.priseEnCharge.Lst_PourcentAbatOrgChg.place().width, 1215);
  EXPECT_EQ(screen_.priseEnCharge.Txt_PourcentAbatOrgChg.place().width, 1215);
  EXPECT_EQ(screen_.priseEnCharge.Txt_FinAbatHOrgChg.place().width,
            screen_.priseEnCharge.Lst_FinAbatHOrgChg.place().width);
}

TEST_F(ScreenTest, EveryFieldAndListHasANameForScreenReaders) {
  for (int tab = 0; tab < 6; ++tab) {
    screen_.Ong_OrgPriseChg.setTab(tab);
    for (Control* control : seen()) {
      if (!isField(*control) && control->kind() != Kind::ListBox) continue;
      const Control* caption = captionOf(*control);
      const std::string name = toolkit::accessibleName(*control);
      EXPECT_NE(name, "") << control->name();
      if (!caption || columnOf(*control)) continue;
      const auto letters = [](std::string text) {
        std::erase(text, ' ');
        return text;
      };
      EXPECT_EQ(letters(name), letters(toolkit::withoutMnemonic(caption->caption())))
          << control->name();
    }
  }
  EXPECT_EQ(toolkit::accessibleName(screen_.priseEnCharge.Txt_TxRembMajOrgChg), "Taux majoré");
  EXPECT_EQ(toolkit::accessibleName(screen_.participation.Txt_FinRevMenOrgChg), "Ménage");
}

TEST_F(ScreenTest, CopiesAreOneToNineByBarOrByTyping) {
  screen_.Ong_OrgPriseChg.setTab(screen::kBordereau);
  EXPECT_EQ(screen_.bordereau.Bdh_NbExemp.min(), 1);
  EXPECT_EQ(screen_.bordereau.Bdh_NbExemp.max(), 9);
  EXPECT_FALSE(screen_.bordereau.Bdh_NbExemp.tabStop());
  EXPECT_TRUE(screen_.bordereau.Txt_NbExEmplOrgChg.tabStop());
}

// Every page by the keyboard, with all of it enabled
// -------------------------------------------------

struct Letter {
  char32_t letter;
  const char* leadsTo;
};

class KeyboardOnAPage : public ScreenTest {
 protected:
  // The tab stops of the page: the buttons of the bar come after them.
  std::vector<std::string> walk(int tab, Caller at = Caller::here()) {
    const auto trace = called("walk", at);
    screen_.Ong_OrgPriseChg.setTab(tab);
    EXPECT_TRUE(user_.go(screen_.Ong_OrgPriseChg));
    std::vector<std::string> order;
    while (user_.tab() && surface_.focus() != &screen_.bar.Cmd_Ajouter) {
      order.push_back(surface_.focus()->name());
    }
    EXPECT_PRED_FORMAT1(hasFocus, screen_.bar.Cmd_Ajouter);
    return order;
  }
  void expectLetters(int tab, const std::vector<Letter>& letters, Caller at = Caller::here()) {
    const auto trace = called("expectLetters", at);
    screen_.Ong_OrgPriseChg.setTab(tab);
    for (const auto& [letter, leadsTo] : letters) {
      EXPECT_TRUE(user_.go(screen_.Ong_OrgPriseChg));
      EXPECT_TRUE(user_.alt(letter)) << leadsTo;
      EXPECT_EQ(surface_.focus()->name(), leadsTo);
    }
  }
  toolkit::headless::User user_{surface_};
};

// Of two controls anywhere on the page, by the boxes around them that stand in one container.
bool readBeforeOnPage(const Control& first, const Control& second) {
  const auto around = [](const Control& control) {
    std::vector<const Control*> outwards;
    for (const Control* c = &control; c; c = c->parent()) outwards.push_back(c);
    std::reverse(outwards.begin(), outwards.end());
    return outwards;
  };
  const auto a = around(first);
  const auto b = around(second);
  std::size_t depth = 0;
  while (a[depth] == b[depth]) ++depth;
  return readBefore(*a[depth], *b[depth]);
}

TEST_F(KeyboardOnAPage, TabGoesFromStopToStopAsThePageIsRead) {
  const int stops[] = {13, 19, 23, 17, 14, 7};
  for (int tab = 0; tab < 6; ++tab) {
    SCOPED_TRACE(screen_.Ong_OrgPriseChg.page(tab).caption());
    const std::vector<std::string> order = walk(tab);
    ASSERT_EQ(static_cast<int>(order.size()), stops[tab]);
    for (std::size_t i = 0; i + 1 < order.size(); ++i) {
      EXPECT_TRUE(readBeforeOnPage(*surface_.find(order[i]), *surface_.find(order[i + 1])))
          << order[i] << " before " << order[i + 1];
    }
  }
}

TEST_F(KeyboardOnAPage, OfTheManagementRules) {
  EXPECT_PRED_FORMAT2(
      same, walk(screen::kRegles),
      (std::vector<std::string>{
          "Opt_TypePrincipalOrgChg", "Opt_PlafGlobalOrgChg", "Cac_DemAccordOrgChg",
          "Cac_FactAnticip", "Cbo_RenouvOrgChg", "Lst_PiecePossibleOrgChg", "Cmd_DroiteRenouv",
          "Cmd_GaucheRenouv", "Lst_PieceRenouOrgChg", "Cbo_StatsOrgChg", "Cbo_PeriodFactOrgChg",
          "Cac_LettresInfo", "Cac_IncidCompta", "Txt_DebitOrgChg", "Cbo_DebitOrgChg",
          "Txt_CreditOrgChg", "Cbo_CreditOrgChg", "Txt_CpteProdAide", "Cbo_CpteProdAide"}));
  expectLetters(screen::kRegles, {{'Y', "Opt_TypePrincipalOrgChg"},
                                  {'H', "Cbo_RenouvOrgChg"},
                                  {'L', "Lst_PiecePossibleOrgChg"},
                                  {'C', "Lst_PieceRenouOrgChg"},
                                  {'Q', "Cbo_StatsOrgChg"},
                                  {'T', "Cbo_PeriodFactOrgChg"},
                                  {'M', "Cac_IncidCompta"},
                                  {'D', "Txt_DebitOrgChg"}});
}

TEST_F(KeyboardOnAPage, OfTheCoverage) {
  EXPECT_PRED_FORMAT2(
      same, walk(screen::kPriseEnCharge),
      (std::vector<std::string>{"Opt_HeureOrgChg",         "Lst_DateRembOrgChg",
                                "Txt_DateRembOrgChg",      "Txt_TxRembOrgChg",
                                "Txt_TxRembMajOrgChg",     "Txt_PrestServOrgChg",
                                "Cmd_AjoutTaux",           "Cmd_OKTaux",
                                "Cmd_AnnulerTaux",         "Cmd_SuppTaux",
                                "Lst_DebAbatHOrgChg",      "Txt_DebAbatHOrgChg",
                                "Txt_FinAbatHOrgChg",      "Txt_PourcentAbatOrgChg",
                                "Cmd_AjoutAbat",           "Cmd_OKAbat",
                                "Cmd_AnnulerAbat",         "Cmd_SuppAbat",
                                "Txt_DesFacture",          "Cac_AjusTarif",
                                "Cac_CoutGlobal",          "Txt_CodeCptPrestationService",
                                "Cbo_CptPrestationService"}));
  expectLetters(screen::kPriseEnCharge, {{'H', "Opt_HeureOrgChg"},
                                         {'M', "Opt_MontantOrgChg"},
                                         {'X', "Lst_DateRembOrgChg"},
                                         {'J', "Cmd_AjoutTaux"},
                                         {'T', "Cmd_AjoutAbat"},
                                         {'D', "Txt_DesFacture"},
                                         {'L', "Cac_CoutGlobal"},
                                         {'C', "Txt_CodeCptPrestationService"}});
}

TEST_F(KeyboardOnAPage, OfTheParticipation) {
  EXPECT_PRED_FORMAT2(same, walk(screen::kParticipation),
                      (std::vector<std::string>{
                          "Opt_Quotient", "Opt_GestPartPourc", "Cac_Abonnement", "Txt_DatBaremPrec",
                          "Txt_DatBaremCours", "Lst_DebRevSeulOrgChg", "Lst_BaremCoursOrgChg",
                          "Txt_DebRevSeulOrgChg", "Txt_FinRevSeulOrgChg", "Txt_DebRevMenOrgChg",
                          "Txt_FinRevMenOrgChg", "Txt_BaremCoursOrgChg", "Cmd_AjoutPart",
                          "Cmd_OKPart", "Cmd_AnnulerPart", "Cmd_SuppPart", "Cmd_NouveauBareme"}));
  expectLetters(screen::kParticipation, {{'Q', "Opt_Quotient"},
                                         {'D', "Opt_Ressource"},
                                         {'T', "Opt_GestPartMont"},
                                         {'L', "Lst_DebRevSeulOrgChg"},
                                         {'C', "Lst_BaremCoursOrgChg"},
                                         {'J', "Cmd_AjoutPart"},
                                         {'M', "Cmd_NouveauBareme"}});
}

TEST_F(KeyboardOnAPage, OfTheSlipParameters) {
  EXPECT_PRED_FORMAT2(
      same, walk(screen::kBordereau),
      (std::vector<std::string>{"Lst_ParamPossOrgChg", "Cmd_DroiteBord", "Cmd_GaucheBord",
                                "Lst_ParamSelecOrgChg", "Cmd_HautBord", "Cmd_BasBord",
                                "Lst_ParamTriPos", "Cmd_DroiteTri", "Cmd_GaucheTri",
                                "Lst_ParamTriSelect", "Opt_IndBordOrgChg", "Txt_NbExEmplOrgChg",
                                "Txt_CodeThesaurus", "Txt_IdentMagnetOrgChg"}));
  expectLetters(screen::kBordereau, {{'L', "Lst_ParamPossOrgChg"},
                                     {'C', "Lst_ParamSelecOrgChg"},
                                     {'M', "Cmd_HautBord"},
                                     {'D', "Cmd_BasBord"},
                                     {'T', "Lst_ParamTriPos"},
                                     {'Y', "Opt_IndBordOrgChg"},
                                     {'X', "Txt_NbExEmplOrgChg"},
                                     {'H', "Txt_CodeThesaurus"}});
}

TEST_F(KeyboardOnAPage, OfTheCoveredActivities) {
  EXPECT_PRED_FORMAT2(
      same, walk(screen::kActivites),
      (std::vector<std::string>{"Txt_Entite", "Cbo_Entite", "Lst_Activite", "Cmd_PasseDroit",
                                "Cmd_PasseGauche", "Lst_ActSelect", "Opt_Totalite"}));
  expectLetters(screen::kActivites, {{'J', "Txt_Entite"},
                                     {'L', "Lst_Activite"},
                                     {'C', "Lst_ActSelect"},
                                     {'Y', "Lst_TypeAct"},
                                     {'T', "Opt_Totalite"},
                                     {'D', "Opt_DimJF"},
                                     {'M', "Opt_Semaine"}});
}

// The whole control by the keyboard
// -----------------------------------------------------------------

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
  EXPECT_PRED_FORMAT2(
      same, order,
      (std::vector<std::string>{
          "Txt_CodOrgChg", "Cbo_SigleOrgChg", "Txt_RaisonOrgChg", "Txt_Complement", "Txt_NumVoie",
          "Cbo_NatureVoie", "Txt_NomVoie", "Txt_Localite", "Txt_CodePostal", "Txt_Ville",
          "Txt_Telephone", "Txt_Fax", "Txt_Email", "Txt_InterlocDossOrgChg",
          "Txt_InterlocFactOrgChg", "Cmd_Supprimer", "Cmd_OK", "Cmd_Annuler", "Cmd_Sortir"}));
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

// Letters that controls share: in each mode, only one of them is usable.
class SharedLetters : public Keyboard {
 protected:
  void expectUnique(const char* mode, Caller at = Caller::here()) {
    const auto trace = called("expectUnique", at);
    std::map<char32_t, std::string> letters;
    const std::function<void(Container&)> walk = [&](Container& container) {
      for (Control* child : container.children()) {
        const char32_t letter = toolkit::mnemonicOf(child->caption());
        if (letter && child->usable() && child->kind() != Kind::TabPage) {
          EXPECT_TRUE(letters.emplace(letter, child->name()).second)
              << mode << ": " << child->name() << " and " << letters[letter];
        }
        if (auto* inner = dynamic_cast<Container*>(child)) walk(*inner);
      }
    };
    walk(control_->surface());
    const auto& tabs = child<toolkit::SSTab>("Ong_OrgPriseChg");
    for (int tab = 0; tabs.usable() && tab < tabs.tabs(); ++tab) {
      const char32_t letter = toolkit::mnemonicOf(tabs.page(tab).caption());
      if (tabs.tabEnabled(tab)) {
        EXPECT_TRUE(letters.emplace(letter, "a tab").second)
            << mode << ": a tab and " << letters[letter];
      }
    }
  }
  void expectLeadsTo(char32_t letter, const char* name, Caller at = Caller::here()) {
    const auto trace = called("expectLeadsTo", at);
    bool pressed = false;
    auto& aimed = button(name);
    const auto before = std::exchange(aimed.onClick, [&pressed] { pressed = true; });
    EXPECT_TRUE(user_->alt(letter)) << name;
    EXPECT_TRUE(pressed) << name;
    aimed.onClick = before;
  }
};

TEST_F(SharedLetters, AreUniqueWithoutABody) {
  for (const int tab : {screen::kPriseEnCharge, screen::kParticipation}) {
    child<toolkit::SSTab>("Ong_OrgPriseChg").setTab(tab);
    expectUnique("no body");
    expectLeadsTo('A', "Cmd_Ajouter");
  }
}

TEST_F(SharedLetters, BelongToTheBarWhileNoRowIsOpen) {
  lookUp("001");
  for (const int tab : {screen::kPriseEnCharge, screen::kParticipation}) {
    child<toolkit::SSTab>("Ong_OrgPriseChg").setTab(tab);
    expectUnique("list mode");
    expectLeadsTo('O', "Cmd_OK");
    expectLeadsTo('N', "Cmd_Annuler");
    expectLeadsTo('U', "Cmd_Supprimer");
  }
}

TEST_F(SharedLetters, BelongToTheEditorWhoseRowIsOpen) {
  lookUp("001");
  struct Editor {
    char32_t page;
    char32_t add;
    const char* ok;
    const char* cancel;
  };
  for (const Editor& editor : {Editor{'P', 'J', "Cmd_OKTaux", "Cmd_AnnulerTaux"},
                               Editor{'P', 'T', "Cmd_OKAbat", "Cmd_AnnulerAbat"},
                               Editor{'F', 'J', "Cmd_OKPart", "Cmd_AnnulerPart"}}) {
    user_->alt(editor.page);
    user_->alt(editor.add);
    ASSERT_TRUE(button(editor.ok).usable()) << editor.ok;
    expectUnique(editor.ok);
    expectLeadsTo('K', editor.ok);
    expectLeadsTo('L', editor.cancel);
    desktop_.answer(toolkit::Answer::Yes);
    user_->alt('L');
    ASSERT_FALSE(button(editor.ok).usable()) << editor.ok;
  }
}

TEST_F(Keyboard, TheAcronymsMnemonicLeadsToTheFieldThatIsSeen) {
  press("Cmd_Ajouter");
  user_->go(box("Txt_Ville"));
  EXPECT_TRUE(user_->alt('I'));
  EXPECT_PRED_FORMAT1(hasFocus, box("Txt_SigleOrgChg"));
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
  ASSERT_PRED_FORMAT1(hasFocus, possible);
  possible.userSelect(0, {0});  // by the list's own keys
  user_->tab();
  user_->press(toolkit::Key::Space);
  user_->alt('P');
  user_->alt('H');
  user_->alt('J');
  user_->type("01/01/2026\t22,5\t24\t20");
  user_->alt('K');
  ASSERT_PRED_FORMAT1(hasFocus, button("Cmd_AjoutTaux"));
  user_->alt('O');
  expectNoBox();
  EXPECT_EQ(attribute("004", attribut::SigleOrgChg), "NEUF");
  EXPECT_EQ(attribute("004", attribut::AdrComplement), "Bât. B");
  EXPECT_EQ(attribute("004", attribut::AttribOrgChg), "H");
  EXPECT_EQ(attribute("004", attribut::DateRembOrgChg), "21186");
  EXPECT_EQ(attribute("004", attribut::TxRembOrgChg), "2250");
  EXPECT_EQ(attribute("004", attribut::Entite), "010");
  EXPECT_EQ(attribute("004", attribut::ParamSelecOrgChg), "2");
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
  for (int i = 1; i <= attribut::Dernier; ++i) record.set(i, "x");
  panel_.vider();
  panel_.ecrire(record, store::adresse::Premier);
  for (int i = 1; i <= attribut::Dernier; ++i) {
    const bool own = i >= store::adresse::Premier && i <= store::adresse::Dernier;
    EXPECT_EQ(record.get(i), own && record.get(i).empty() ? "" : "x") << i;
  }
}

TEST_F(Address, TheFirstSettingOffersTheKindsOfStreet) {
  initialise(true, true, false);
  EXPECT_PRED_FORMAT2(same, linesOf(screen_.coordonnees.adresse.Cbo_NatureVoie),
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
