#include "screen/Screen.h"

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

void setFixedPitch(Screen& screen) {
  const toolkit::Font courier{"Courier New", 9, false};
  PriseEnCharge& prise = screen.priseEnCharge;
  Participation& part = screen.participation;
  Activites& activites = screen.activites;
  for (ListBox* list :
       {&prise.Lst_DateRembOrgChg, &prise.Lst_TxRembOrgChg, &prise.Lst_TxRembMajOrgChg,
        &prise.Lst_PrestServOrgChg, &prise.Lst_DebAbatHOrgChg, &prise.Lst_FinAbatHOrgChg,
        &prise.Lst_PourcentAbatOrgChg, &part.Lst_DebRevSeulOrgChg, &part.Lst_FinRevSeulOrgChg,
        &part.Lst_DebRevMenOrgChg, &part.Lst_FinRevMenOrgChg, &part.Lst_BaremPrecOrgChg,
        &part.Lst_BaremCoursOrgChg, &activites.Lst_Activite, &activites.Lst_ActSelect,
        &activites.Lst_TypeAct}) {
    list->setFont(courier);
  }
}

void hidePage(toolkit::TabPage& page) {
  for (toolkit::Control* child : page.children()) child->setVisible(false);
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
  surface.setPlace({0, 0, kWidth, kHeight});
  placeBar(*this);
  placeCoordonnees(coordonnees);
  fillFixedLists(*this);
  setFixedPitch(*this);
  bar.Txt_CodOrgChg.setMaxLength(3);
  bordereau.Lst_LongParam.setVisible(false);
  activites.Lst_CodActSelect.setVisible(false);
  hidePage(Ong_OrgPriseChg.page(kPriseEnCharge));
  hidePage(Ong_OrgPriseChg.page(kParticipation));
  priseEnCharge.Cdr_AttribOrgChg.setVisible(true);
  priseEnCharge.Etq_CptPrestationService.setVisible(true);
  priseEnCharge.Txt_CodeCptPrestationService.setVisible(true);
  priseEnCharge.Cbo_CptPrestationService.setVisible(true);
  bordereau.Bdh_NbExemp.setRange(1, 9);
}

}  // namespace screen
