#include "tests/unit/toolkit/Layout.h"

#include <algorithm>

namespace toolkit::test {

namespace {

constexpr int kGap = 120;
constexpr int kWidth = 2400;
constexpr int kCaption = 450;  // room for a frame's caption, or for the tabs

int heightOf(Kind kind) {
  switch (kind) {
    case Kind::ListBox:
    case Kind::ScrollBar:
      return 1800;
    default:
      return 330;
  }
}

Place flow(Container& container, int top, int left);

Place placeOf(Control& control, int left, int top) {
  if (!control.isContainer()) return {left, top, kWidth, heightOf(control.kind())};
  auto& container = static_cast<Container&>(control);
  Place inner;
  if (control.kind() == Kind::SSTab) {
    for (Control* page : container.children()) {
      const Place place = flow(static_cast<Container&>(*page), kGap, kGap);
      page->setPlace({kGap, kCaption, place.width, place.height});
      inner.width = std::max(inner.width, place.width);
      inner.height = std::max(inner.height, place.height);
    }
    // Wide enough for every tab to be in sight.
    const int tabs = static_cast<int>(container.children().size()) * 1500;
    return {left, top, std::max(inner.width + 2 * kGap, tabs), inner.height + kCaption + kGap};
  }
  inner = flow(container, kCaption, kGap);
  return {left, top, inner.width, inner.height};
}

// Gives the size that the container needs.
Place flow(Container& container, int top, int left) {
  int width = kWidth + 2 * kGap;
  for (Control* child : container.children()) {
    const Place place = placeOf(*child, left, top);
    child->setPlace(place);
    top += place.height + kGap;
    width = std::max(width, place.width + 2 * kGap);
  }
  return {0, 0, width, top};
}

}  // namespace

void layOut(Surface& surface) { surface.setPlace(flow(surface, kGap, kGap)); }

}  // namespace toolkit::test
