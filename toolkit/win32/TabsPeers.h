// The tabbed dialog and its pages.
#pragma once

#include "toolkit/SSTab.h"
#include "toolkit/win32/ControlPeer.h"

namespace toolkit::win32 {

// A tab is pressed only if the object lets it come to the front.
class TabsPeer final : public ControlPeer {
 public:
  TabsPeer(Host& host, SSTab& tabs) : ControlPeer(host, tabs), tabs_(tabs) {}
  LRESULT notified(const NMHDR& header) override;
  void drawItem(const DRAWITEMSTRUCT& item) override;
  void applyPlace() override;
  void applyFont() override;
  void redrawTabs();
  void captionChanged(TabPage& page);
  // What the tabs leave to the pages, in pixels of the tabs' window.
  RECT pageArea();

 protected:
  Blueprint blueprint() const override;
  void created() override;
  void copy(Aspect what) override;
  void applyEnabled() override;
  LRESULT message(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
  LRESULT leftKey(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
  LRESULT dialogCode() const override { return DLGC_WANTARROWS; }
  bool understands(UINT message, WPARAM wParam, LPARAM lParam) const override;

 private:
  void nameTab(int tab, UINT message);
  void sizeTabs();
  void sizeByCaption(int padding);
  void sizeAlike(int width, int margin);
  int lineHeight();
  int captionWidth(int tab);
  bool isTab(WPARAM position) const { return position < static_cast<WPARAM>(tabs_.tabs()); }

  SSTab& tabs_;
};

// One window of our class, child of the tabs' window.
class PagePeer final : public ControlPeer {
 public:
  PagePeer(Host& host, TabPage& page) : ControlPeer(host, page), page_(page) {}
  void applyPlace() override;
  void applyFont() override {}

 protected:
  Blueprint blueprint() const override { return {}; }
  HWND makeWindow(HWND parent, const RECT& place) override;
  void copy(Aspect what) override;
  bool windowVisible() const override;
  LRESULT message(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
  void applyEnabled() override;

 private:
  SSTab& tabs() const { return static_cast<SSTab&>(*page_.parent()); }
  TabPage& page_;
};

}  // namespace toolkit::win32
