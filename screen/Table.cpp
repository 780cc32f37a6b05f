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

int widthOf(const toolkit::Control& placed, int width) {
  return placed.place().width > 0 ? placed.place().width : width;
}

}  // namespace

int tableHeight(int more) { return kButtons + kButtonHeight + more; }

void placeTable(const Table& table, int left, int top, int more) {
  int column = left;
  for (const TableColumn& c : table.columns) {
    c.list.setPlace({column, top, widthOf(c.list, c.width), kTwelveRows + more});
    if (c.zone) field(*c.zone, column, top + kZones + more, widthOf(*c.zone, c.width));
    column += c.width;
  }
  // Within the border of the last list as it is while the bar is shown, like a bar of its own.
  constexpr int kBarWidth = kLastColumnWithBar - kLastColumn;
  const int end = column - table.columns.back().width + kLastColumnWithBar;
  table.bar.setPlace({end - kBarWidth - kListBorder, top + kListBorder, kBarWidth,
                      kTwelveRows + more - 2 * kListBorder});
  int button = left;
  for (CommandButton* b : table.buttons) {
    grid::button(*b, button, top + kButtons + more, kButtonWidth);
    button += kButtonColumn;
  }
}

}  // namespace screen
