#include "screen/Grid.h"
#include "screen/Layout.h"
#include "screen/TwoLists.h"

namespace screen {

using namespace grid;

namespace {

constexpr int kHeads = 300;  // of lists within a frame

// Possible and selected parameters, with the order of the latter beside them.
constexpr int kFormeTop = 120;
constexpr int kFormeHeight = 3840;
constexpr int kFormeListEnd = kFormeHeight - kFrameFoot;
constexpr int kOrder = 1140;  // width of the buttons that change the order
constexpr int kOrderLeft = kInFrameEnd - kOrder;

constexpr int kTriTop = kFormeTop + kFormeHeight + kGap;
constexpr int kTriHeight = 2400;
constexpr int kTriWidth = 7080;

constexpr int kSideLeft = kFrameLeft + kTriWidth + kGap;
constexpr int kSideWidth = kFrameEnd - kSideLeft;
constexpr int kTypeHeight = 1320;
constexpr int kCopiesTop = kTriTop + kTypeHeight + kGap;

void placeMiseEnForme(Bordereau& page) {
  page.Cdr_MiseEnForme.setPlace({kFrameLeft, kFormeTop, kFrameWidth, kFormeHeight});
  placeTwoLists({page.Etq_ParamPossOrgChg, page.Lst_ParamPossOrgChg, page.Cmd_DroiteBord,
                 page.Cmd_GaucheBord, page.Etq_ParamSelecOrgChg, page.Lst_ParamSelecOrgChg},
                {kLabelInFrame, kHeads, kOrderLeft - kGap - kLabelInFrame, kFormeListEnd - kHeads});
  constexpr int kButtons = kHeads + kHeadHeight;
  button(page.Cmd_HautBord, kOrderLeft, kButtons, kOrder);
  button(page.Cmd_BasBord, kOrderLeft, kButtons + kButtonHeight + 60, kOrder);
  constexpr int kCounter = kFormeListEnd - kLabelHeight;
  page.Etq_Largeur.setPlace({kOrderLeft, kCounter - kLabelHeight, kOrder, kLabelHeight});
  page.Etq_NbCarSelect.setPlace({kOrderLeft, kCounter, kOrder, kLabelHeight});
}

void placeSide(Bordereau& page) {
  constexpr int kChoice = kSideWidth - 2 * kLabelInFrame;
  page.Cdr_TypeBordereau.setPlace({kSideLeft, kTriTop, kSideWidth, kTypeHeight});
  int top = 330;
  for (OptionButton* option :
       {&page.Opt_IndBordOrgChg, &page.Opt_RecapBordOrgChg, &page.Opt_MFPBordOrgChg}) {
    choice(*option, kLabelInFrame, top, kChoice);
    top += kChoiceRow;
  }
  page.Cdr_Exemplaire.setPlace(
      {kSideLeft, kCopiesTop, kSideWidth, kTriTop + kTriHeight - kCopiesTop});
  field(page.Txt_NbExEmplOrgChg, kLabelInFrame, 390, 420);
  page.Bdh_NbExemp.setPlace({kLabelInFrame + 480, 390, kChoice - 480, kFieldHeight});
}

}  // namespace

void placeBordereau(Bordereau& page) {
  placeMiseEnForme(page);
  page.Cdr_Tri.setPlace({kFrameLeft, kTriTop, kTriWidth, kTriHeight});
  placeTwoLists(
      {page.Etq_ParamTriPos, page.Lst_ParamTriPos, page.Cmd_DroiteTri, page.Cmd_GaucheTri,
       page.Etq_ParamTriSelect, page.Lst_ParamTriSelect},
      {kLabelInFrame, kHeads, kTriWidth - 2 * kLabelInFrame, kTriHeight - kHeads - kFrameFoot});
  placeSide(page);
  constexpr int kCodes = kTriTop + kTriHeight + 180;
  const int second = kFrameLeft + page.Lst_ParamTriSelect.place().left;
  constexpr int kSecondField = kSideLeft + kLabelInFrame;
  label(page.Etq_CodeThesaurus, kLabels, kCodes, kLabelWidth);
  field(page.Txt_CodeThesaurus, kFields, kCodes, second - kFields - 2 * kGap);
  label(page.Etq_IdentMagnetOrgChg, second, kCodes, kSecondField - second - 60);
  field(page.Txt_IdentMagnetOrgChg, kSecondField, kCodes, kFieldsEnd - kSecondField);
}

}  // namespace screen
