#include "tests/windows/look/Page.h"

#include <memory>
#include <string>
#include <string_view>

#include "toolkit/win32/Scale.h"
#include "toolkit/win32/WideText.h"

namespace look {

using toolkit::Container;
using toolkit::Control;

namespace {

constexpr int kFieldHeight = 24;

struct Search {
  std::wstring name;
  HWND found = nullptr;
};

BOOL CALLBACK compareName(HWND window, LPARAM parameter) {
  static const UINT message = RegisterWindowMessageW(L"WM_GETCONTROLNAME");
  auto& search = *reinterpret_cast<Search*>(parameter);
  wchar_t name[64] = {};
  SendMessageW(window, message, 64, reinterpret_cast<LPARAM>(name));
  if (search.name != name) return TRUE;
  search.found = window;
  return FALSE;
}

void visitBelow(const Container& container, const std::function<void(Control&)>& visit) {
  for (Control* child : container.children()) {
    visit(*child);
    if (child->isContainer()) visitBelow(static_cast<const Container&>(*child), visit);
  }
}

}  // namespace

toolkit::win32::Ambience ambienceOf(int points, unsigned dpi) {
  toolkit::win32::Ambience ambience;
  ambience.fontSize = points * 100;
  ambience.dpi = dpi;
  return ambience;
}

Page::Page(const toolkit::win32::Ambience& ambience, SIZE room) {
  if (room.cx == 0) {
    const toolkit::win32::Scale scale(ambience.dpi, toolkit::win32::growthOf(ambience));
    room = scale.pixels(surface_.least());
  }
  host_ = CreateWindowExW(0, L"STATIC", L"Host", WS_POPUP | WS_CLIPCHILDREN, 0, 0, room.cx,
                          room.cy + kFieldHeight, nullptr, nullptr, nullptr, nullptr);
  field_ = CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE, 0, room.cy, 100, kFieldHeight,
                           host_, nullptr, nullptr, nullptr);
  windows_ = std::make_unique<toolkit::win32::SurfaceWindow>(
      surface_, host_, RECT{0, 0, room.cx, room.cy}, ambience);
  windows_->show(true);
  ShowWindow(host_, SW_SHOW);
  SetForegroundWindow(host_);
  pump();
}

Page::~Page() {
  windows_.reset();
  DestroyWindow(host_);
  pump();
}

void Page::pump() {
  MSG message{};
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
}

HWND Page::windowOf(const Control& control) const {
  Search search{toolkit::win32::wide(control.name())};
  EnumChildWindows(host_, &compareName, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

RECT Page::placeOf(const Control& control) const {
  RECT place{};
  GetWindowRect(windowOf(control), &place);
  MapWindowPoints(nullptr, windows_->handle(), reinterpret_cast<POINT*>(&place), 2);
  return place;
}

void Page::bringForward(int tab) {
  screen_.Ong_OrgPriseChg.setTab(tab);
  pump();
}

void Page::each(const std::function<void(Control&)>& visit) {
  for (int tab = 0; tab < screen_.Ong_OrgPriseChg.tabs(); ++tab) {
    bringForward(tab);
    visitBelow(screen_.Ong_OrgPriseChg.page(tab), visit);
  }
  for (Control* child : surface_.children()) visit(*child);
}

Picture::Picture(HWND window) {
  RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_UPDATENOW);
  RECT client{};
  GetClientRect(window, &client);
  width_ = client.right;
  height_ = client.bottom;
  pixels_.resize(index(width_) * index(height_));
  const HDC source = GetDC(window);
  const HDC memory = CreateCompatibleDC(source);
  const HBITMAP bitmap = CreateCompatibleBitmap(source, width_, height_);
  const HGDIOBJ before = SelectObject(memory, bitmap);
  BitBlt(memory, 0, 0, width_, height_, source, 0, 0, SRCCOPY);
  SelectObject(memory, before);
  BITMAPINFO form{};
  form.bmiHeader = {sizeof(BITMAPINFOHEADER), width_, -height_, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  GetDIBits(memory, bitmap, 0, static_cast<UINT>(height_), pixels_.data(), &form, DIB_RGB_COLORS);
  for (COLORREF& pixel : pixels_) {  // stored blue first
    pixel = RGB((pixel >> 16) & 0xFF, (pixel >> 8) & 0xFF, pixel & 0xFF);
  }
  DeleteObject(bitmap);
  DeleteDC(memory);
  ReleaseDC(window, source);
}

}  // namespace look
