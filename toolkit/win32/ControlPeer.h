// What the peers of all kinds have in common: one standard window, mirrored from one control.
#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

#include "toolkit/win32/SurfaceImplementation.h"

namespace toolkit::win32 {

// The object decides, the window follows: the peer sees every message before its window does, asks
// the object, and only then lets the window act. While it copies state into the window it ignores
// what the window tells.
class ControlPeer : public Peer, public std::enable_shared_from_this<ControlPeer> {
 public:
  using Host = SurfaceWindow::Implementation;

  ControlPeer(Host& host, Control& control) : host_(host), control_(control) {}

  // Creates the window with the object's state.
  void create();
  // Lets go of the window; from then on nothing is told to the object.
  void detach();
  bool attached() const { return window_ != nullptr; }

  HWND window() const { return window_; }
  virtual HWND focusWindow() const { return window_; }
  Control& control() const { return control_; }

  void update(Aspect what) final;
  // Copies everything that differs.
  void refresh();
  virtual void applyFont();
  virtual void applyPlace();

  // What a standard window tells or asks its parent.
  virtual void commanded(WORD) {}
  virtual void scrolled(WORD) {}
  virtual LRESULT notified(const NMHDR&) { return 0; }
  virtual void drawItem(const DRAWITEMSTRUCT&) {}
  // The brush for the window's background, null for the system's own colours; for a field that is
  // read-only or pale, the surface's own, on which its text is read as a caption is.
  HBRUSH ground(HDC context, UINT message);
  // The same, of what is neither.
  virtual HBRUSH colors(HDC context, UINT message);

 protected:
  // Marks that state is being copied into the window.
  class Copying {
   public:
    explicit Copying(ControlPeer& peer) : peer_(peer) { ++peer_.copying_; }
    Copying(const Copying&) = delete;
    Copying& operator=(const Copying&) = delete;
    ~Copying() { --peer_.copying_; }

   private:
    ControlPeer& peer_;
  };

  struct Blueprint {
    const wchar_t* className = nullptr;
    DWORD style = 0;
    DWORD extendedStyle = 0;
  };
  virtual Blueprint blueprint() const = 0;
  virtual HWND makeWindow(HWND parent, const RECT& place);
  virtual void created() {}
  // Copies what differs in this aspect, other than place, enabling and visibility.
  virtual void copy(Aspect what) = 0;

  // A message to a subclassed window, before the window sees it.
  virtual LRESULT message(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  // A key that the surface left. By default the window gets it.
  virtual LRESULT leftKey(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  virtual LRESULT character(HWND window, WPARAM wParam, LPARAM lParam);
  // A mouse button pressed, the focus having arrived. By default the window gets it.
  virtual LRESULT pressed(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  // What the window itself needs of a dialog's keys. Never that it is a button or a static: a
  // dialog would look for mnemonics among them past the surface.
  virtual LRESULT dialogCode() const { return 0; }
  // Tells the object what windows do not notify (the caret), before an event needs it.
  virtual void reportSilent() {}
  // Brings the window up to date before it looks at any message.
  virtual void flush() {}
  // May a message of the window's own class that comes from outside (WM_USER and above) reach it?
  // Its pointers are not made fit for this process, as those of the system's messages are.
  virtual bool understands(UINT, WPARAM, LPARAM) const { return false; }
  // A window inside this one is gone.
  virtual void lost(HWND) {}

  // What the window's own switches follow: what is between it and the window that holds it.
  bool windowEnabled() const;
  bool looksEnabled() const;
  virtual bool windowVisible() const;
  virtual void applyEnabled();
  void applyReadOnly();

  // What the user has not asked to see yet: the lines below mnemonics, as a format of DrawText, and
  // the mark of the focus.
  UINT hiddenPrefix() const;
  bool hidesFocus() const;

  // A line that is painted here: before its text, its ground and the ink, which is `ink` while it
  // is not chosen; after it, the mark of the focus.
  static void beginLine(const DRAWITEMSTRUCT& item, COLORREF ink);
  void endLine(const DRAWITEMSTRUCT& item) const;

  void subclass(HWND window);
  // To the standard window's own procedure.
  LRESULT pass(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
  LRESULT pass(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    return pass(window_, message, wParam, lParam);
  }
  std::wstring windowText();
  void setWindowText(const std::wstring& text);
  bool copying() const { return copying_ > 0; }
  Host& host() const { return host_; }
  RECT placeInPixels() const;

 private:
  friend class SurfaceKeyboard;
  friend class SurfaceWindow::Implementation;

  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  LRESULT keyMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  LRESULT press(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  void applyVisible();
  void redraw() const;
  // Of a combo that is read-only: its window would choose another line, and be put right after.
  bool isForNobody(UINT message, WPARAM wParam) const;
  LRESULT giveName(WPARAM room, LPARAM buffer) const;
  void forget(HWND window);

  struct Subclassed {
    HWND window;
    WNDPROC original;
  };

  Host& host_;
  Control& control_;
  HWND window_ = nullptr;
  std::vector<Subclassed> subclassed_;
  int copying_ = 0;
};

// The peer for a control of any kind below a surface.
std::shared_ptr<ControlPeer> makePeer(SurfaceWindow::Implementation& host, Control& control);

// "WM_GETCONTROLNAME", by which test tools know controls apart.
UINT controlNameMessage();

}  // namespace toolkit::win32
