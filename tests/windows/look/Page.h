// The control's own pages in real windows, in any font and at any dots per inch.
#pragma once

#include <windows.h>

#include <functional>
#include <vector>

#include "screen/Screen.h"
#include "toolkit/win32/SurfaceWindow.h"

namespace look {

// The font, the dots per inch and the colours that a host gives.
toolkit::win32::Ambience ambienceOf(int points, unsigned dpi);

class Page {
 public:
  // In a window of its own, with so many pixels for the surface; all it needs when none are given.
  explicit Page(const toolkit::win32::Ambience& ambience, SIZE room = {});
  Page(const Page&) = delete;
  Page& operator=(const Page&) = delete;
  ~Page();

  screen::Screen& screen() { return screen_; }
  toolkit::Surface& surface() { return surface_; }
  toolkit::win32::SurfaceWindow& windows() { return *windows_; }
  HWND host() const { return host_; }
  HWND field() const { return field_; }  // a field of the host's own
  HWND windowOf(const toolkit::Control& control) const;
  // In pixels of the surface's window.
  RECT placeOf(const toolkit::Control& control) const;
  void pump();

  // Every control below, containers before what is in them; with the page in front that it is on.
  void each(const std::function<void(toolkit::Control&)>& visit);
  // The page in front has every control that it has.
  void bringForward(int tab);

 private:
  toolkit::Surface surface_{"Ctr_OrgPriseCharge"};
  screen::Screen screen_{surface_};
  HWND host_ = nullptr;
  HWND field_ = nullptr;
  std::unique_ptr<toolkit::win32::SurfaceWindow> windows_;
};

// All that the system's class draws in a window's client area.
class Picture {
 public:
  explicit Picture(HWND window);
  int width() const { return width_; }
  int height() const { return height_; }
  COLORREF at(int x, int y) const { return pixels_[index(y) * index(width_) + index(x)]; }

 private:
  static std::size_t index(int pixel) { return static_cast<std::size_t>(pixel); }

  int width_ = 0;
  int height_ = 0;
  std::vector<COLORREF> pixels_;
};

}  // namespace look
