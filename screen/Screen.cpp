#include "screen/Screen.h"

#include <vector>

#include "screen/Layout.h"

namespace screen {
namespace {

void fill(ComboBox& combo, std::initializer_list<const char*> lines) {
  for (const char* line : lines) combo.addItem(line);
}

void fillFixedLists(Screen& screen) {
  fill(screen.regles.Cbo_RenouvOrgChg,
       {"Pas de gestion renouvellement", "Renouvellement à - 1 mois", "Renouvellement à - 2 mois",
        "Renouvellement à - 3 mois", "Renouvellement à - 4 mois", "Renouvellement à - 5 mois",
        "Renouvellement à - 6 mois"});
  fill(screen.regles.Cbo_PeriodFactOrgChg,
       {"Mensuelle", "Trimestrielle", "A fin de prise en charge"});
  for (const char* line :
       {"Secteur", "Numéro de dossier", "Nom - prénom", "Nom patronymique", "Période", "Ville"}) {
    screen.bordereau.Lst_ParamTriPos.addItem(line);
  }
}

void setCompletion(Screen& screen) {
  Regles& regles = screen.regles;
  for (ComboBox* fixed :
       {&regles.Cbo_RenouvOrgChg, &regles.Cbo_PeriodFactOrgChg, &regles.Cbo_StatsOrgChg}) {
    fixed->setCompletes(true);
  }
}

// The lists of the three tables, column by column.
std::vector<std::vector<ListBox*>> tables(Screen& screen) {
  PriseEnCharge& prise = screen.priseEnCharge;
  Participation& part = screen.participation;
  return {{&prise.Lst_DateRembOrgChg, &prise.Lst_TxRembOrgChg, &prise.Lst_TxRembMajOrgChg,
           &prise.Lst_PrestServOrgChg},
          {&prise.Lst_DebAbatHOrgChg, &prise.Lst_FinAbatHOrgChg, &prise.Lst_PourcentAbatOrgChg},
          {&part.Lst_DebRevSeulOrgChg, &part.Lst_FinRevSeulOrgChg, &part.Lst_DebRevMenOrgChg,
           &part.Lst_FinRevMenOrgChg, &part.Lst_BaremPrecOrgChg, &part.Lst_BaremCoursOrgChg}};
}

// Tab goes from code and acronym into the page in front, and to the buttons at its end. The tabs
// themselves have their letters and Ctrl+PageUp and PageDown.
void setOrder(Screen& screen, toolkit::Surface& surface) {
  screen.Ong_OrgPriseChg.setTabStop(false);
  CommandBar& bar = screen.bar;
  for (CommandButton* button :
       {&bar.Cmd_Ajouter, &bar.Cmd_Supprimer, &bar.Cmd_OK, &bar.Cmd_Annuler, &bar.Cmd_Sortir}) {
    surface.moveLast(*button);
  }
}

// Numbers stand as in the zones below them: on the right, in the font of the lists.
void setNumbers(Screen& screen) {
  PriseEnCharge& prise = screen.priseEnCharge;
  Participation& part = screen.participation;
  for (ListBox* list :
       {&prise.Lst_TxRembOrgChg, &prise.Lst_TxRembMajOrgChg, &prise.Lst_DebAbatHOrgChg,
        &prise.Lst_FinAbatHOrgChg, &part.Lst_DebRevSeulOrgChg, &part.Lst_FinRevSeulOrgChg,
        &part.Lst_DebRevMenOrgChg, &part.Lst_FinRevMenOrgChg, &part.Lst_BaremPrecOrgChg}) {
    list->setRightAligned();
  }
  prise.Lst_PrestServOrgChg.setRightAligned(&prise.Bdv_TauxOrgChg);
  prise.Lst_PourcentAbatOrgChg.setRightAligned(&prise.Bdv_AbatOrgChg);
  part.Lst_BaremCoursOrgChg.setRightAligned(&part.Bdv_Bareme);
  for (Label* head :
       {&prise.Etq_TxRembOrgChg, &prise.Etq_TxRembMajOrgChg, &prise.Etq_DebAbatHOrgChg,
        &prise.Etq_FinAbatHOrgChg, &prise.Etq_PourcentOrgChg, &part.Etq_DebRevSeulOrgChg,
        &part.Etq_FinRevSeulOrgChg, &part.Etq_DebRevMenOrgChg, &part.Etq_FinRevMenOrgChg,
        &part.Etq_BaremPrecOrgChg, &part.Etq_BaremCoursOrgChg}) {
    head->setRightAligned();
  }
}

// Tab stops once at a table, at its first column. Under a new scale that one is closed and only the
// current participations are open.
void setTables(Screen& screen) {
  for (const std::vector<ListBox*>& table : tables(screen)) {
    for (ListBox* list : table) {
      list->setScrollBar(false);
      list->setTabStop(list == table.front());
    }
  }
  screen.participation.Lst_BaremCoursOrgChg.setTabStop(true);
  for (ScrollBar* bar : {&screen.priseEnCharge.Bdv_TauxOrgChg, &screen.priseEnCharge.Bdv_AbatOrgChg,
                         &screen.participation.Bdv_Bareme}) {
    bar->setLargeChange(12);
    bar->setVisible(false);
  }
}

const toolkit::Font& courier() {
  static const toolkit::Font font{"Courier New", 9, false};
  return font;
}

void setFixedPitch(Screen& screen) {
  Activites& activites = screen.activites;
  for (const std::vector<ListBox*>& table : tables(screen)) {
    for (ListBox* list : table) list->setFont(courier());
  }
  for (ListBox* list :
       {&activites.Lst_Activite, &activites.Lst_ActSelect, &activites.Lst_TypeAct}) {
    list->setFont(courier());
  }
}

void setEditZones(Screen& screen) {
  PriseEnCharge& prise = screen.priseEnCharge;
  Participation& part = screen.participation;
  for (TextBox* date :
       {&prise.Txt_DateRembOrgChg, &part.Txt_DatBaremPrec, &part.Txt_DatBaremCours}) {
    date->setMaxLength(10);
  }
  for (TextBox* number :
       {&prise.Txt_TxRembOrgChg, &prise.Txt_TxRembMajOrgChg, &prise.Txt_PrestServOrgChg,
        &prise.Txt_DebAbatHOrgChg, &prise.Txt_FinAbatHOrgChg, &prise.Txt_PourcentAbatOrgChg,
        &part.Txt_DebRevSeulOrgChg, &part.Txt_FinRevSeulOrgChg, &part.Txt_DebRevMenOrgChg,
        &part.Txt_FinRevMenOrgChg, &part.Txt_BaremCoursOrgChg}) {
    number->setMaxLength(15);
    number->setRightAligned(true);
    number->setFont(courier());
  }
  prise.Txt_DateRembOrgChg.setFont(courier());
}

// Elsewhere a field is named by the label before it.
void nameEditZones(Screen& screen) {
  PriseEnCharge& prise = screen.priseEnCharge;
  Participation& part = screen.participation;
  prise.Txt_DateRembOrgChg.setLabel(prise.Etq_DateRembOrgChg);
  prise.Txt_TxRembOrgChg.setLabel(prise.Etq_TxRembOrgChg);
  prise.Txt_TxRembMajOrgChg.setLabel(prise.Etq_TxRembMajOrgChg);
  prise.Txt_DebAbatHOrgChg.setLabel(prise.Etq_TrancheAppli);
  prise.Txt_FinAbatHOrgChg.setLabel(prise.Etq_TrancheAppli);
  part.Txt_DebRevSeulOrgChg.setLabel(part.Etq_PersSeule);
  part.Txt_FinRevSeulOrgChg.setLabel(part.Etq_PersSeule);
  part.Txt_DebRevMenOrgChg.setLabel(part.Etq_Menage);
  part.Txt_FinRevMenOrgChg.setLabel(part.Etq_Menage);
}

void limitLengths(Screen& screen) {
  screen.bar.Txt_CodOrgChg.setMaxLength(3);
  screen.activites.Txt_Entite.setMaxLength(3);
  screen.bordereau.Txt_NbExEmplOrgChg.setMaxLength(1);
  for (TextBox* account :
       {&screen.regles.Txt_DebitOrgChg, &screen.regles.Txt_CreditOrgChg,
        &screen.regles.Txt_CpteProdAide, &screen.priseEnCharge.Txt_CodeCptPrestationService}) {
    account->setMaxLength(10);
  }
}

}  // namespace

Screen::Screen(toolkit::Surface& surface)
    : bar(&surface),
      Ong_OrgPriseChg(
          &surface, "Ong_OrgPriseChg",
          {"Coo&rdonnées", "Règles de &gestion", "&Prise en charge", "Participation béné&ficiaire",
           "Paramètres &bordereau", "Activités cou&vertes"}),
      coordonnees(&Ong_OrgPriseChg.page(kCoordonnees)),
      regles(&Ong_OrgPriseChg.page(kRegles)),
      priseEnCharge(&Ong_OrgPriseChg.page(kPriseEnCharge)),
      participation(&Ong_OrgPriseChg.page(kParticipation)),
      bordereau(&Ong_OrgPriseChg.page(kBordereau)),
      activites(&Ong_OrgPriseChg.page(kActivites)) {
  surface.setLeast({kWidth, kHeight});
  surface.onRoom = [this, &surface](toolkit::Extent room) { place(surface, room.height); };
  place(surface, kHeight);
  fillFixedLists(*this);
  setCompletion(*this);
  setOrder(*this, surface);
  setTables(*this);
  setNumbers(*this);
  setFixedPitch(*this);
  setEditZones(*this);
  nameEditZones(*this);
  limitLengths(*this);
  bar.Etq_Consultation.setVisible(false);
  bar.Etq_Consultation.setFont({"", 0, true});
  bordereau.Lst_LongParam.setVisible(false);
  activites.Lst_CodActSelect.setVisible(false);
  activites.Lst_TypeAct.setScrollBar(false);
  activites.Lst_TypeAct.setTabStop(false);
  bordereau.Etq_Largeur.setCentered(true);
  bordereau.Etq_NbCarSelect.setCentered(true);
  bordereau.Bdh_NbExemp.setRange(1, 9);
}

void Screen::place(toolkit::Surface& surface, int height) {
  if (surface.place().height == height) return;
  surface.setPlace({0, 0, kWidth, height});
  const int more = height - kHeight;
  placeBar(*this, more);
  placeCoordonnees(coordonnees);
  placeRegles(regles, more);
  placePriseEnCharge(priseEnCharge, more);
  placeParticipation(participation, more);
  placeBordereau(bordereau, more);
  placeActivites(activites, more);
}

}  // namespace screen
