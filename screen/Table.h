// A table of an editor: parallel lists that touch each other, a zone for each column that is
// edited, and the editor's buttons; written once for its three uses.
#pragma once

#include <array>
#include <vector>

#include "screen/Screen.h"

namespace screen {

struct TableColumn {
  ListBox& list;
  TextBox* zone;  // null where nothing is edited
  int width;      // of the last column, without the room of the scroll bar
};

struct Table {
  std::vector<TableColumn> columns;
  ScrollBar& bar;
  std::array<CommandButton*, 4> buttons;
};

// The last column with and without the scroll bar, in twips.
inline constexpr int kLastColumn = 975;
inline constexpr int kLastColumnWithBar = 1215;

// From the top of the lists to the foot of the buttons.
int tableHeight(int more);
// Within the container of its parts. A last column that has been widened for the scroll bar stays
// so.
void placeTable(const Table& table, int left, int top, int more);

}  // namespace screen
