#include "screen/Grid.h"
#include "screen/Layout.h"
#include "screen/Table.h"

namespace screen {

using namespace grid;

namespace {

constexpr int kAttribution = 720;

// The two editors side by side; a heading may take two lines.
constexpr int kEditors = 120 + kAttribution + kGap;
constexpr int kHeads = 270;
constexpr int kLowerHeads = kHeads + kLabelHeight;
constexpr int kLists = kLowerHeads + kHeadHeight;

constexpr int kDate = 1350;
constexpr int kRate = 1260;
constexpr int kRates = kDate + 2 * kRate + kLastColumnWithBar + 2 * kLabelInFrame;
constexpr int kDeductionsLeft = kFrameLeft + kRates + kGap;
constexpr int kDeductions = kFrameEnd - kDeductionsLeft;
constexpr int kHours = (kDeductions - 2 * kLabelInFrame - kLastColumnWithBar) / 2;

void placeTaux(PriseEnCharge& page, int height, int more) {
  page.Cdr_TauxOrgChg.setPlace({kFrameLeft, kEditors, kRates, height});
  placeTable({{{page.Lst_DateRembOrgChg, &page.Txt_DateRembOrgChg, kDate},
               {page.Lst_TxRembOrgChg, &page.Txt_TxRembOrgChg, kRate},
               {page.Lst_TxRembMajOrgChg, &page.Txt_TxRembMajOrgChg, kRate},
               {page.Lst_PrestServOrgChg, &page.Txt_PrestServOrgChg, kLastColumn}},
              page.Bdv_TauxOrgChg,
              {&page.Cmd_AjoutTaux, &page.Cmd_OKTaux, &page.Cmd_AnnulerTaux, &page.Cmd_SuppTaux}},
             kLabelInFrame, kLists, more);
  head(page.Etq_DateRembOrgChg, kLabelInFrame, kLowerHeads, kDate);
  head(page.Etq_TxRembOrgChg, kLabelInFrame + kDate, kLowerHeads, kRate);
  head(page.Etq_TxRembMajOrgChg, kLabelInFrame + kDate + kRate, kLowerHeads, kRate);
  // Narrow enough for "Dont" to stand alone in the first of its lines.
  page.Etq_PrestServOrgChg.setPlace(
      {kLabelInFrame + kDate + 2 * kRate, kHeads, kLastColumnWithBar + 45, kLists - kHeads});
}

void placeAbattement(PriseEnCharge& page, int height, int more) {
  page.Cdr_AbatOrgChg.setPlace({kDeductionsLeft, kEditors, kDeductions, height});
  placeTable({{{page.Lst_DebAbatHOrgChg, &page.Txt_DebAbatHOrgChg, kHours},
               {page.Lst_FinAbatHOrgChg, &page.Txt_FinAbatHOrgChg, kHours},
               {page.Lst_PourcentAbatOrgChg, &page.Txt_PourcentAbatOrgChg, kLastColumn}},
              page.Bdv_AbatOrgChg,
              {&page.Cmd_AjoutAbat, &page.Cmd_OKAbat, &page.Cmd_AnnulerAbat, &page.Cmd_SuppAbat}},
             kLabelInFrame, kLists, more);
  page.Etq_TrancheAppli.setPlace({kLabelInFrame, kHeads, kHours - kEndHead, kLists - kHeads});
  head(page.Etq_DebAbatHOrgChg, kLabelInFrame + kHours - kEndHead, kLowerHeads, kEndHead);
  head(page.Etq_FinAbatHOrgChg, kLabelInFrame + 2 * kHours - kEndHead, kLowerHeads, kEndHead);
  head(page.Etq_PourcentOrgChg, kLabelInFrame + 2 * kHours, kLowerHeads, kLastColumn);
}

// What the invoice shows, and the account.
void placeFacture(PriseEnCharge& page, int top) {
  constexpr int kField = 3720;
  constexpr int kLabel = kField - kLabels - 60;
  label(page.Etq_DesFacture, kLabels, top, kLabel);
  field(page.Txt_DesFacture, kField, top, kFieldsEnd - kField);
  top += kRow;
  constexpr int kSecond = kField + 1320;
  choice(page.Cac_AjusTarif, kLabels, top, kSecond - kLabels - kGap);
  choice(page.Cac_CoutGlobal, kSecond, top, kFieldsEnd - kSecond);
  top += kRow - 30;
  label(page.Etq_CptPrestationService, kLabels, top, kLabel);
  field(page.Txt_CodeCptPrestationService, kField, top, 1260);
  field(page.Cbo_CptPrestationService, kSecond, top, kFieldsEnd - kSecond);
}

}  // namespace

void placePriseEnCharge(PriseEnCharge& page, int more) {
  page.Cdr_AttribOrgChg.setPlace({kFrameLeft, 120, kRates, kAttribution});
  choice(page.Opt_HeureOrgChg, kLabelInFrame, 330, 1800);
  choice(page.Opt_MontantOrgChg, kInFrame, 330, 1800);
  const int height = kLists + tableHeight(more) + kFrameFoot;
  placeTaux(page, height, more);
  placeAbattement(page, height, more);
  placeFacture(page, kEditors + height + 210);
}

}  // namespace screen
