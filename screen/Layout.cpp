#include "screen/Layout.h"
#include "screen/Grid.h"

namespace screen {

using namespace grid;

namespace {

constexpr int kMargin = 120;

void labelInFrame(toolkit::Control& control, int top) {
  label(control, kLabelInFrame, top, kLabelWidth);
}

void wideInFrame(toolkit::Control& control, int top) {
  field(control, kInFrame, top, kInFrameEnd - kInFrame);
}

void placeAdresse(Adresse& adresse) {
  int top = 300;
  labelInFrame(adresse.Etq_Complement, top);
  wideInFrame(adresse.Txt_Complement, top);
  top += kRow;
  labelInFrame(adresse.Etq_Voie, top);
  field(adresse.Txt_NumVoie, kInFrame, top, 900);
  field(adresse.Cbo_NatureVoie, kInFrame + 960, top, 1800);
  field(adresse.Txt_NomVoie, kInFrame + 2820, top, kInFrameEnd - kInFrame - 2820);
  top += kRow;
  labelInFrame(adresse.Etq_Localite, top);
  wideInFrame(adresse.Txt_Localite, top);
  top += kRow;
  labelInFrame(adresse.Etq_CodePostal, top);
  field(adresse.Txt_CodePostal, kInFrame, top, 1200);
  field(adresse.Txt_Ville, kInFrame + 1260, top, kInFrameEnd - kInFrame - 1260);
  top += kRow;
  labelInFrame(adresse.Etq_Telephone, top);
  field(adresse.Txt_Telephone, kInFrame, top, 2400);
  label(adresse.Etq_Fax, kInFrame + 2640, top, 600);
  field(adresse.Txt_Fax, kInFrame + 3300, top, 2400);
  top += kRow;
  labelInFrame(adresse.Etq_Email, top);
  wideInFrame(adresse.Txt_Email, top);
  top += kRow;
  adresse.Ctr_Adresseorgchg.setPlace({kFrameLeft, 720, kFrameWidth, top + 60});
}

}  // namespace

void placeBar(Screen& screen, int more) {
  CommandBar& bar = screen.bar;
  const int top = kMargin;
  label(bar.Etq_CodOrgChg, kMargin, top, 600);
  field(bar.Txt_CodOrgChg, 780, top, 600);
  for (Label* sigle : {&bar.Etq_RechercheSigle, &bar.Etq_SigleOrgChg}) {
    label(*sigle, 1620, top, 600);
  }
  field(bar.Cbo_SigleOrgChg, 2280, top, 2760);
  field(bar.Txt_SigleOrgChg, 2280, top, 2760);
  int left = 5280;
  for (CommandButton* button :
       {&bar.Cmd_Ajouter, &bar.Cmd_Supprimer, &bar.Cmd_OK, &bar.Cmd_Annuler, &bar.Cmd_Sortir}) {
    button->setPlace({left, 90, 1128, 375});
    left += 1218;
  }
  label(bar.Etq_Consultation, 5280, top, 2 * 1218);

  const toolkit::Place tabs{kMargin, 600, kWidth - 2 * kMargin, kHeight + more - 600 - kMargin};
  screen.Ong_OrgPriseChg.setPlace(tabs);
  // For a surface drawn without windows; in windows the tabs say where their pages lie.
  for (int tab = 0; tab < screen.Ong_OrgPriseChg.tabs(); ++tab) {
    screen.Ong_OrgPriseChg.page(tab).setPlace({60, 360, tabs.width - 120, tabs.height - 420});
  }
}

void placeCoordonnees(Coordonnees& page) {
  label(page.Etq_RaisonOrgChg, kLabels, 240, kLabelWidth);
  field(page.Txt_RaisonOrgChg, kFields, 240, kFieldsEnd - kFields);
  placeAdresse(page.adresse);
  page.Cdr_InterlocOrgChg.setPlace({kFrameLeft, 3780, kFrameWidth, 1260});
  labelInFrame(page.Etq_InterlocDossOrgChg, 300);
  wideInFrame(page.Txt_InterlocDossOrgChg, 300);
  labelInFrame(page.Etq_InterlocFactOrgChg, 300 + kRow);
  wideInFrame(page.Txt_InterlocFactOrgChg, 300 + kRow);
}

}  // namespace screen
