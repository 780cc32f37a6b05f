#include "screen/Grid.h"
#include "screen/Layout.h"
#include "screen/TwoLists.h"

namespace screen {

using namespace grid;

namespace {

constexpr int kHeads = 300;  // of lists within a frame

// Possible and selected parameters, with the order of the latter beside them.
constexpr int kFormeTop = 120;
constexpr int kOrder = 1140;  // width of the buttons that change the order
constexpr int kOrderLeft = kInFrameEnd - kOrder;

constexpr int kTriWidth = 7080;

constexpr int kSideLeft = kFrameLeft + kTriWidth + kGap;
constexpr int kSideWidth = kFrameEnd - kSideLeft;
constexpr int kTypeHeight = 1320;

// The two frames with lists share what there is.
struct Heights {
  explicit Heights(int more) : forme(3840 + more - more / 3), tri(2400 + more / 3) {}
  int forme;
  int tri;
  int triTop() const { return kFormeTop + forme + kGap; }
};

void placeMiseEnForme(Bordereau& page, int height) {
  const int listEnd = height - kFrameFoot;
  page.Cdr_MiseEnForme.setPlace({kFrameLeft, kFormeTop, kFrameWidth, height});
  placeTwoLists({page.Etq_ParamPossOrgChg, page.Lst_ParamPossOrgChg, page.Cmd_DroiteBord,
                 page.Cmd_GaucheBord, page.Etq_ParamSelecOrgChg, page.Lst_ParamSelecOrgChg},
                {kLabelInFrame, kHeads, kOrderLeft - kGap - kLabelInFrame, listEnd - kHeads});
  constexpr int kButtons = kHeads + kHeadHeight;
  button(page.Cmd_HautBord, kOrderLeft, kButtons, kOrder);
  button(page.Cmd_BasBord, kOrderLeft, kButtons + kButtonHeight + 60, kOrder);
  const int counter = listEnd - kLabelHeight;
  page.Etq_Largeur.setPlace({kOrderLeft, counter - kLabelHeight, kOrder, kLabelHeight});
  page.Etq_NbCarSelect.setPlace({kOrderLeft, counter, kOrder, kLabelHeight});
}

void placeSide(Bordereau& page, const Heights& heights) {
  constexpr int kChoice = kSideWidth - 2 * kLabelInFrame;
  page.Cdr_TypeBordereau.setPlace({kSideLeft, heights.triTop(), kSideWidth, kTypeHeight});
  int top = 330;
  for (OptionButton* option :
       {&page.Opt_IndBordOrgChg, &page.Opt_RecapBordOrgChg, &page.Opt_MFPBordOrgChg}) {
    choice(*option, kLabelInFrame, top, kChoice);
    top += kChoiceRow;
  }
  constexpr int kCopies = kTypeHeight + kGap;
  page.Cdr_Exemplaire.setPlace(
      {kSideLeft, heights.triTop() + kCopies, kSideWidth, heights.tri - kCopies});
  field(page.Txt_NbExEmplOrgChg, kLabelInFrame, 390, 420);
  page.Bdh_NbExemp.setPlace({kLabelInFrame + 480, 390, kChoice - 480, kFieldHeight});
}

}  // namespace

void placeBordereau(Bordereau& page, int more) {
  const Heights heights(more);
  placeMiseEnForme(page, heights.forme);
  page.Cdr_Tri.setPlace({kFrameLeft, heights.triTop(), kTriWidth, heights.tri});
  placeTwoLists(
      {page.Etq_ParamTriPos, page.Lst_ParamTriPos, page.Cmd_DroiteTri, page.Cmd_GaucheTri,
       page.Etq_ParamTriSelect, page.Lst_ParamTriSelect},
      {kLabelInFrame, kHeads, kTriWidth - 2 * kLabelInFrame, heights.tri - kHeads - kFrameFoot});
  placeSide(page, heights);
  const int codes = heights.triTop() + heights.tri + 180;
  const int second = kFrameLeft + page.Lst_ParamTriSelect.place().left;
  constexpr int kSecondField = kSideLeft + kLabelInFrame;
  label(page.Etq_CodeThesaurus, kLabels, codes, kLabelWidth);
  field(page.Txt_CodeThesaurus, kFields, codes, second - kFields - 2 * kGap);
  label(page.Etq_IdentMagnetOrgChg, second, codes, kSecondField - second - 60);
  field(page.Txt_IdentMagnetOrgChg, kSecondField, codes, kFieldsEnd - kSecondField);
}

}  // namespace screen
