#include "screen/Table.h"

#include "screen/Grid.h"

namespace screen {

using namespace grid;

namespace {

constexpr int kZones = kTwelveRows + 60;  // below the lists
constexpr int kButtons = kZones + kFieldHeight + kGap;
constexpr int kButtonWidth = 1110;
constexpr int kButtonColumn = kButtonWidth + 60;
constexpr int kListBorder = 30;

}  // namespace

int tableHeight() { return kButtons + kButtonHeight; }

void placeTable(const Table& table, int left, int top) {
  int column = left;
  for (const TableColumn& c : table.columns) {
    c.list.setPlace({column, top, c.width, kTwelveRows});
    if (c.zone) field(*c.zone, column, top + kZones, c.width);
    column += c.width;
  }
  // Within the border of the last list as it is while the bar is shown, like a bar of its own.
  constexpr int kBarWidth = kLastColumnWithBar - kLastColumn;
  const int end = column - table.columns.back().width + kLastColumnWithBar;
  table.bar.setPlace(
      {end - kBarWidth - kListBorder, top + kListBorder, kBarWidth, kTwelveRows - 2 * kListBorder});
  int button = left;
  for (CommandButton* b : table.buttons) {
    grid::button(*b, button, top + kButtons, kButtonWidth);
    button += kButtonColumn;
  }
}

}  // namespace screen
