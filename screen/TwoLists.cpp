#include "screen/TwoLists.h"

#include "screen/Grid.h"

namespace screen {

using namespace grid;

void placeTwoLists(const TwoLists& lists, const TwoListsPlace& place) {
  constexpr int kArrows = 960;
  constexpr int kBetween = 60;
  const int width = (place.width - kArrows) / 2 - kGap;
  const int arrows = place.left + width + kGap;
  const int chosen = arrows + kArrows + kGap;
  const int top = place.top + kHeadHeight;
  const int height = place.height - kHeadHeight;
  head(lists.possibleHead, place.left, place.top, width);
  lists.possible.setPlace({place.left, top, width, height});
  const int middle = top + height / 2;
  button(lists.toRight, arrows, middle - kButtonHeight - kBetween / 2, kArrows);
  button(lists.toLeft, arrows, middle + kBetween / 2, kArrows);
  head(lists.chosenHead, chosen, place.top, width);
  lists.chosen.setPlace({chosen, top, width, height});
}

}  // namespace screen
