#include "screen/Grid.h"
#include "screen/Layout.h"
#include "screen/TwoLists.h"

namespace screen {

using namespace grid;

namespace {

// What a body is, side by side.
constexpr int kTop = 120;
constexpr int kThreeChoices = 300 + 3 * kChoiceRow + 30;
constexpr int kTypeWidth = 2160;
constexpr int kPlafondLeft = kFrameLeft + kTypeWidth + kGap;
constexpr int kPlafondWidth = 4440;
constexpr int kDemandesLeft = kPlafondLeft + kPlafondWidth + kGap;
constexpr int kDemandesWidth = kFrameEnd - kDemandesLeft;

constexpr int kRenouvTop = kTop + kThreeChoices + kGap;
constexpr int kRenouvHeight = 3375;

constexpr int kSecondLabels = 5940;
constexpr int kSecondFields = 8280;

void choiceInFrame(toolkit::Control& control, int row, int width) {
  choice(control, kLabelInFrame, 300 + row * kChoiceRow, width - kLabelInFrame - 60);
}

void placeOrganisme(Regles& page) {
  page.Cdr_TypeOrg.setPlace({kFrameLeft, kTop, kTypeWidth, kThreeChoices});
  choiceInFrame(page.Opt_TypePrincipalOrgChg, 0, kTypeWidth);
  choiceInFrame(page.Opt_TypeComplOrgChg, 1, kTypeWidth);
  page.Cdr_PlafondOrg.setPlace({kPlafondLeft, kTop, kPlafondWidth, kThreeChoices});
  choiceInFrame(page.Opt_PlafGlobalOrgChg, 0, kPlafondWidth);
  choiceInFrame(page.Opt_PlafMensOrgChg, 1, kPlafondWidth);
  choiceInFrame(page.Opt_PlafMensRepOrgChg, 2, kPlafondWidth);
  page.Cdr_DemandesAccord.setPlace({kDemandesLeft, kTop, kDemandesWidth, kThreeChoices});
  choiceInFrame(page.Cac_DemAccordOrgChg, 0, kDemandesWidth);
  choiceInFrame(page.Cac_FactAnticip, 1, kDemandesWidth);
}

void placeRenouvellement(Regles& page, int height) {
  page.Cdr_RenouvOrgChg.setPlace({kFrameLeft, kRenouvTop, kFrameWidth, height});
  label(page.Etq_RenouvOrgChg, kLabelInFrame, 300, kLabelWidth);
  field(page.Cbo_RenouvOrgChg, kInFrame, 300, 3000);
  constexpr int kHeads = 300 + kRow + 30;
  placeTwoLists({page.Etq_PiecePossibleOrgChg, page.Lst_PiecePossibleOrgChg, page.Cmd_DroiteRenouv,
                 page.Cmd_GaucheRenouv, page.Etq_PieceRenouOrgChg, page.Lst_PieceRenouOrgChg},
                {kLabelInFrame, kHeads, kInFrameEnd - kLabelInFrame, height - kHeads - kFrameFoot});
}

void placeCompte(Label& caption, TextBox& number, ComboBox& name, int top) {
  label(caption, kLabels, top, kLabelWidth);
  field(number, kFields, top, 1260);
  field(name, kFields + 1320, top, kFieldsEnd - kFields - 1320);
}

}  // namespace

void placeRegles(Regles& page, int more) {
  placeOrganisme(page);
  placeRenouvellement(page, kRenouvHeight + more);
  int top = kRenouvTop + kRenouvHeight + more + 180;
  label(page.Etq_StatsOrgChg, kLabels, top, kLabelWidth);
  field(page.Cbo_StatsOrgChg, kFields, top, 3000);
  label(page.Etq_PeriodFactOrgChg, kSecondLabels, top, kSecondFields - kSecondLabels - 60);
  field(page.Cbo_PeriodFactOrgChg, kSecondFields, top, kFieldsEnd - kSecondFields);
  top += kRow;
  choice(page.Cac_LettresInfo, kLabels, top, 4500);
  choice(page.Cac_IncidCompta, kSecondLabels, top, kFieldsEnd - kSecondLabels);
  top += kRow - 30;
  placeCompte(page.Etq_DebitOrgChg, page.Txt_DebitOrgChg, page.Cbo_DebitOrgChg, top);
  placeCompte(page.Etq_CreditOrgChg, page.Txt_CreditOrgChg, page.Cbo_CreditOrgChg, top + kRow);
  placeCompte(page.Etq_CpteProdAide, page.Txt_CpteProdAide, page.Cbo_CpteProdAide, top + 2 * kRow);
}

}  // namespace screen
