#include "screen/Grid.h"
#include "screen/Layout.h"
#include "screen/TwoLists.h"

namespace screen {

using namespace grid;

// The lines of the activities are 34 characters of the fixed-pitch font, with room for the list's
// scroll bar; the types stand line for line beside the selected ones.
void placeActivites(Activites& page, int more) {
  constexpr int kEntity = 180;
  constexpr int kCode = 600;
  label(page.Etq_Entite, kFrameLeft, kEntity, kFields - kCode - 120 - kFrameLeft);
  field(page.Txt_Entite, kFields - kCode - 60, kEntity, kCode);
  field(page.Cbo_Entite, kFields, kEntity, kFrameEnd - kFields);

  constexpr int kHeads = 720;
  const int lists = 5400 + more;  // with their headings
  constexpr int kTypes = 900;
  constexpr int kTypesLeft = kFrameEnd - kTypes;
  placeTwoLists({page.Etq_Activite, page.Lst_Activite, page.Cmd_PasseDroit, page.Cmd_PasseGauche,
                 page.Etq_ActSelect, page.Lst_ActSelect},
                {kFrameLeft, kHeads, kFrameWidth - kTypes - 60, lists});
  head(page.Etq_Type, kTypesLeft, kHeads, kTypes);
  page.Lst_TypeAct.setPlace({kTypesLeft, kHeads + kHeadHeight, kTypes, lists - kHeadHeight});

  page.Cdr_GestionExclu.setPlace({kFrameLeft, kHeads + lists + 150, kFrameWidth, 720});
  choice(page.Opt_Totalite, kLabelInFrame, 330, 1800);
  choice(page.Opt_DimJF, kInFrame, 330, 2400);
  choice(page.Opt_Semaine, page.Lst_ActSelect.place().left - kFrameLeft, 330, 1800);
}

}  // namespace screen
