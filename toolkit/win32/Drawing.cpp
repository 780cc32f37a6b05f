// A surface on paper: what its windows would show, without windows.
#include <algorithm>

#include "toolkit/Buttons.h"
#include "toolkit/ComboBox.h"
#include "toolkit/Frame.h"
#include "toolkit/ListBox.h"
#include "toolkit/SSTab.h"
#include "toolkit/ScrollBar.h"
#include "toolkit/TextBox.h"
#include "toolkit/win32/Palette.h"
#include "toolkit/win32/Scale.h"
#include "toolkit/win32/SurfaceWindow.h"
#include "toolkit/win32/WideText.h"

namespace toolkit::win32 {

namespace {

constexpr int kTwipsPerPoint = 20;
constexpr int kDrawnFor = 8;  // points: what is larger in the ambient font is so in the bounds too
constexpr int kTabHeight = 360;  // twips
constexpr int kMark = 195;       // side of a check or option mark, in twips
constexpr int kArrow = 255;      // width of a combo's or scroll bar's arrow, in twips

// From the twips of a surface to the logical units of a device context, whatever they are.
class Sheet {
 public:
  Sheet(HDC context, const RECT& bounds, const Place& surface, const Ambience& ambience)
      : context_(context),
        bounds_(bounds),
        ambience_(ambience),
        width_(surface.width > 0 ? surface.width : (bounds.right - bounds.left) * 15),
        height_(surface.height > 0 ? surface.height : (bounds.bottom - bounds.top) * 15),
        palette_(ambience),
        ground_(CreateSolidBrush(palette_.back())) {}

  HDC context() const { return context_; }
  const Palette& palette() const { return palette_; }
  HBRUSH ground() const { return ground_.get(); }
  LONG x(int twips) const {
    return bounds_.left + MulDiv(twips, bounds_.right - bounds_.left, std::max(1, width_));
  }
  LONG y(int twips) const {
    return bounds_.top + MulDiv(twips, bounds_.bottom - bounds_.top, std::max(1, height_));
  }
  RECT area(int left, int top, int width, int height) const {
    return {x(left), y(top), x(left + width), y(top + height)};
  }
  OwnedFont font(const Font& font) const {
    const int points = font.size > 0 ? font.size : kDrawnFor;
    const LONG height = y(points * kTwipsPerPoint) - y(0);
    return makeFont(font.name.empty() ? ambience_.fontName : wide(font.name),
                    static_cast<int>(std::max(1L, height)), font.bold);
  }

 private:
  HDC context_;
  RECT bounds_;
  Ambience ambience_;
  int width_;
  int height_;
  Palette palette_;
  OwnedBrush ground_;
};

bool looksEnabled(const Control& control) { return control.reachable() && !control.pale(); }

void write(const Sheet& sheet, const Control& control, std::string_view text, RECT area, UINT how,
           COLORREF color) {
  const OwnedFont font = sheet.font(control.font());
  const Selected selected(sheet.context(), font.get());
  SetTextColor(sheet.context(), color);
  SetBkMode(sheet.context(), TRANSPARENT);
  DrawTextW(sheet.context(), wide(text).c_str(), -1, &area, how);
}

// On the ground of the surface.
void write(const Sheet& sheet, const Control& control, std::string_view text, RECT area, UINT how) {
  write(sheet, control, text, area, how,
        sheet.palette().text(control.color(), looksEnabled(control)));
}

void writeInField(const Sheet& sheet, const Control& control, std::string_view text,
                  const RECT& area, UINT how) {
  write(
      sheet, control, text, area, how,
      looksEnabled(control) ? sheet.palette().field(control.color()) : GetSysColor(COLOR_GRAYTEXT));
}

void drawField(const Sheet& sheet, RECT area, bool typed) {
  FillRect(sheet.context(), &area, GetSysColorBrush(typed ? COLOR_WINDOW : COLOR_BTNFACE));
  DrawEdge(sheet.context(), &area, EDGE_SUNKEN, BF_RECT);
}

RECT inside(const Sheet& sheet, RECT area) {
  InflateRect(&area, -(sheet.x(45) - sheet.x(0)), -(sheet.y(30) - sheet.y(0)));
  return area;
}

void drawText(const Sheet& sheet, const TextBox& box, const RECT& area) {
  drawField(sheet, area, looksEnabled(box) && !box.readOnly());
  writeInField(
      sheet, box, box.text(), inside(sheet, area),
      DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | (box.rightAligned() ? DT_RIGHT : DT_LEFT));
}

void drawCombo(const Sheet& sheet, const ComboBox& combo, RECT area) {
  drawField(sheet, area, looksEnabled(combo) && !combo.readOnly());
  RECT arrow = area;
  arrow.left = std::max(area.left, area.right - (sheet.x(kArrow) - sheet.x(0)));
  DrawFrameControl(sheet.context(), &arrow, DFC_SCROLL,
                   DFCS_SCROLLCOMBOBOX | (looksEnabled(combo) ? 0U : DFCS_INACTIVE));
  area.right = arrow.left;
  writeInField(sheet, combo, combo.text(), inside(sheet, area),
               DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
}

void drawList(const Sheet& sheet, const ListBox& list, const RECT& area) {
  drawField(sheet, area, list.reachable());
  std::string lines;
  for (int line = list.topIndex(); line < list.listCount(); ++line) lines += list.list(line) + '\n';
  RECT room = inside(sheet, area);
  room.right -= sheet.x(list.covered()) - sheet.x(0);
  writeInField(sheet, list, lines, room, DT_NOPREFIX | (list.rightAligned() ? DT_RIGHT : DT_LEFT));
}

void drawMarked(const Sheet& sheet, const Control& control, RECT area, UINT mark) {
  RECT box = area;
  box.right = box.left + (sheet.x(kMark) - sheet.x(0));
  const LONG height = sheet.y(kMark) - sheet.y(0);
  box.top += std::max(0L, (area.bottom - area.top - height) / 2);
  box.bottom = box.top + height;
  DrawFrameControl(sheet.context(), &box, DFC_BUTTON,
                   mark | (control.reachable() ? 0U : DFCS_INACTIVE));
  area.left = box.right + (sheet.x(60) - sheet.x(0));
  write(sheet, control, control.caption(), area, DT_SINGLELINE | DT_VCENTER);
}

void drawFrame(const Sheet& sheet, const Frame& frame, RECT area) {
  const OwnedFont font = sheet.font(frame.font());
  const Selected selected(sheet.context(), font.get());
  SIZE size{};
  const std::wstring caption = wide(withoutMnemonic(frame.caption()));
  GetTextExtentPoint32W(sheet.context(), caption.c_str(), static_cast<int>(caption.size()), &size);
  RECT edge = area;
  edge.top += size.cy / 2;
  DrawEdge(sheet.context(), &edge, EDGE_ETCHED, BF_RECT);
  RECT title{area.left + size.cy / 2, area.top, area.left + size.cy / 2 + size.cx,
             area.top + size.cy};
  if (caption.empty()) return;
  FillRect(sheet.context(), &title, sheet.ground());
  write(sheet, frame, frame.caption(), title, DT_SINGLELINE);
}

void drawTabs(const Sheet& sheet, const SSTab& tabs, const Place& at) {
  const int count = std::max(1, tabs.tabs());
  for (int tab = 0; tab < tabs.tabs(); ++tab) {
    RECT head = sheet.area(at.left + at.width * tab / count, at.top, at.width / count, kTabHeight);
    DrawEdge(sheet.context(), &head, EDGE_RAISED, BF_LEFT | BF_TOP | BF_RIGHT);
    write(sheet, tabs.page(tab), tabs.page(tab).caption(), head,
          DT_SINGLELINE | DT_CENTER | DT_VCENTER);
  }
  RECT body = sheet.area(at.left, at.top + kTabHeight, at.width, at.height - kTabHeight);
  DrawEdge(sheet.context(), &body, EDGE_RAISED, BF_RECT);
}

void drawControl(const Sheet& sheet, const Control& control, const Place& at) {
  const RECT area = sheet.area(at.left, at.top, at.width, at.height);
  switch (control.kind()) {
    case Kind::TextBox:
      drawText(sheet, static_cast<const TextBox&>(control), area);
      break;
    case Kind::ComboBox:
      drawCombo(sheet, static_cast<const ComboBox&>(control), area);
      break;
    case Kind::ListBox:
      drawList(sheet, static_cast<const ListBox&>(control), area);
      break;
    case Kind::OptionButton:
      drawMarked(sheet, control, area,
                 DFCS_BUTTONRADIO |
                     (static_cast<const OptionButton&>(control).value() ? DFCS_CHECKED : 0U));
      break;
    case Kind::CheckBox:
      drawMarked(
          sheet, control, area,
          DFCS_BUTTONCHECK | (static_cast<const CheckBox&>(control).value() ? DFCS_CHECKED : 0U));
      break;
    case Kind::CommandButton: {
      RECT face = area;
      DrawFrameControl(sheet.context(), &face, DFC_BUTTON, DFCS_BUTTONPUSH);
      write(sheet, control, control.caption(), area, DT_SINGLELINE | DT_CENTER | DT_VCENTER,
            GetSysColor(looksEnabled(control) ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
      break;
    }
    case Kind::Label: {
      const auto& label = static_cast<const Label&>(control);
      UINT alignment = label.centered() ? DT_CENTER : DT_LEFT;
      if (label.rightAligned()) alignment = DT_RIGHT;
      write(sheet, control, control.caption(), area, DT_WORDBREAK | alignment);
      break;
    }
    case Kind::Frame:
      drawFrame(sheet, static_cast<const Frame&>(control), area);
      break;
    case Kind::ScrollBar: {
      RECT bar = area;
      FillRect(sheet.context(), &bar, GetSysColorBrush(COLOR_SCROLLBAR));
      break;
    }
    case Kind::SSTab:
      drawTabs(sheet, static_cast<const SSTab&>(control), at);
      break;
    default:
      break;
  }
}

void drawWithin(const Sheet& sheet, const Container& container, int left, int top) {
  for (const Control* child : container.children()) {
    if (!child->shown()) continue;
    Place at = child->place();
    at.left += left;
    at.top += top;
    if (child->kind() == Kind::TabPage && child->place() == Place{}) at.top += kTabHeight;
    drawControl(sheet, *child, at);
    if (child->kind() == Kind::Frame || child->kind() == Kind::SSTab ||
        child->kind() == Kind::TabPage) {
      drawWithin(sheet, static_cast<const Container&>(*child), at.left, at.top);
    }
  }
}

}  // namespace

void SurfaceWindow::draw(const Surface& surface, HDC context, const RECT& bounds,
                         const Ambience& ambience) {
  const int saved = SaveDC(context);
  const Sheet sheet(context, bounds, surface.place(), ambience);
  RECT all = bounds;
  FillRect(context, &all, sheet.ground());
  drawWithin(sheet, surface, 0, 0);
  RestoreDC(context, saved);
}

}  // namespace toolkit::win32
