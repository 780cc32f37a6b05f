// A list of what is possible and one of what is chosen, with the buttons that move lines between
// them; written once for its four uses.
#pragma once

#include "screen/Screen.h"

namespace screen {

struct TwoLists {
  Label& possibleHead;
  ListBox& possible;
  CommandButton& toRight;
  CommandButton& toLeft;
  Label& chosenHead;
  ListBox& chosen;
};

// Twips, within the lists' container; the width is that of lists and buttons together, the height
// that of headings and lists.
struct TwoListsPlace {
  int left;
  int top;
  int width;
  int height;
};

void placeTwoLists(const TwoLists& lists, const TwoListsPlace& place);

}  // namespace screen
