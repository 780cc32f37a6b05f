#include "screen/Grid.h"
#include "screen/Layout.h"
#include "screen/Table.h"

namespace screen {

using namespace grid;

namespace {

constexpr int kModes = 330;
constexpr int kModesHeight = 300 + 2 * kChoiceRow + 60;
constexpr int kBaremeWidth = 3000;
constexpr int kGestionLeft = kLabelInFrame + kBaremeWidth + kGap;
constexpr int kGestionWidth = 4500;

// The brackets are headed by what they are, the participations by the dates that they hold from.
constexpr int kUpperHeads = kModes + kModesHeight + 180;
constexpr int kDates = kUpperHeads + kHeadHeight;
constexpr int kHeads = kDates + kFieldHeight + 60;
constexpr int kLists = kHeads + kHeadHeight;

constexpr int kBracket = 1800;  // one end of it
constexpr int kParticipations = kLabelInFrame + 4 * kBracket;
constexpr int kPrevious = kInFrameEnd - kParticipations - kLastColumnWithBar;
constexpr int kCurrent = kParticipations + kPrevious;

constexpr int kNewScale = 1740;

void placeModes(Participation& page) {
  page.Cdr_Bareme.setPlace({kLabelInFrame, kModes, kBaremeWidth, kModesHeight});
  choice(page.Opt_Quotient, kLabelInFrame, 300, kBaremeWidth - kLabelInFrame - 60);
  choice(page.Opt_Ressource, kLabelInFrame, 300 + kChoiceRow, kBaremeWidth - kLabelInFrame - 60);
  page.Cdr_GestionParticipBenef.setPlace({kGestionLeft, kModes, kGestionWidth, kModesHeight});
  choice(page.Opt_GestPartPourc, kLabelInFrame, 300, kGestionWidth - kLabelInFrame - 60);
  choice(page.Opt_GestPartMont, kLabelInFrame, 300 + kChoiceRow,
         kGestionWidth - kLabelInFrame - 60);
  constexpr int kAbonnement = kGestionLeft + kGestionWidth + 2 * kGap;
  choice(page.Cac_Abonnement, kAbonnement, kModes + 300, kInFrameEnd - kAbonnement);
}

// Whose bracket it is stands above the headings of its two columns.
void placeBracketHeads(Label& whose, Label& from, Label& to, int left) {
  whose.setPlace(
      {left, kHeads - kLabelHeight, kBracket - kEndHead, kLists - kHeads + kLabelHeight});
  head(from, left + kBracket - kEndHead, kHeads, kEndHead);
  head(to, left + 2 * kBracket - kEndHead, kHeads, kEndHead);
}

void placeHeads(Participation& page) {
  head(page.Etq_TrancheRevenus, kLabelInFrame, kUpperHeads, 4 * kBracket);
  head(page.Etq_Montant, kParticipations, kUpperHeads, kPrevious);
  field(page.Txt_DatBaremPrec, kParticipations, kDates, kLastColumnWithBar);
  field(page.Txt_DatBaremCours, kCurrent, kDates, kLastColumnWithBar);
  placeBracketHeads(page.Etq_PersSeule, page.Etq_DebRevSeulOrgChg, page.Etq_FinRevSeulOrgChg,
                    kLabelInFrame);
  placeBracketHeads(page.Etq_Menage, page.Etq_DebRevMenOrgChg, page.Etq_FinRevMenOrgChg,
                    kLabelInFrame + 2 * kBracket);
  head(page.Etq_BaremPrecOrgChg, kParticipations, kHeads, kPrevious);
  head(page.Etq_BaremCoursOrgChg, kCurrent, kHeads, kLastColumn);
}

}  // namespace

void placeParticipation(Participation& page, int more) {
  const int foot = kLists + tableHeight(more);
  page.Cdr_ParticipBenef.setPlace({kFrameLeft, 120, kFrameWidth, foot + kFrameFoot});
  placeModes(page);
  placeHeads(page);
  placeTable({{{page.Lst_DebRevSeulOrgChg, &page.Txt_DebRevSeulOrgChg, kBracket},
               {page.Lst_FinRevSeulOrgChg, &page.Txt_FinRevSeulOrgChg, kBracket},
               {page.Lst_DebRevMenOrgChg, &page.Txt_DebRevMenOrgChg, kBracket},
               {page.Lst_FinRevMenOrgChg, &page.Txt_FinRevMenOrgChg, kBracket},
               {page.Lst_BaremPrecOrgChg, nullptr, kPrevious},
               {page.Lst_BaremCoursOrgChg, &page.Txt_BaremCoursOrgChg, kLastColumn}},
              page.Bdv_Bareme,
              {&page.Cmd_AjoutPart, &page.Cmd_OKPart, &page.Cmd_AnnulerPart, &page.Cmd_SuppPart}},
             kLabelInFrame, kLists, more);
  button(page.Cmd_NouveauBareme, kInFrameEnd - kNewScale, foot - kButtonHeight, kNewScale);
}

}  // namespace screen
