// The control's place in its container: activation, windows, frame, modal state.
#pragma once

#include <ocidl.h>
#include <ole2.h>
#include <wrl/client.h>

#include <functional>
#include <memory>

#include "ocx/Ambients.h"
#include "ocx/DesignWindow.h"
#include "toolkit/Surface.h"
#include "toolkit/win32/SurfaceWindow.h"
#include "toolkit/win32/WindowsDesktop.h"

namespace ocx {

// Not active, in place (windows exist), or UI active (the frame knows it as its active object).
// Any call to the container may come back with another one here, a closing one included.
class InPlace final : public toolkit::win32::ModalHost {
 public:
  // `object` is what the frame gets as its active object; `keepAlive` what each window procedure
  // holds while it runs.
  InPlace(IOleInPlaceActiveObject& object, std::function<std::shared_ptr<void>()> keepAlive);

  std::function<void()> onAmbients;  // they have been read again
  // What is shown; told before anything else is called. Taken down before the surface goes.
  void setSurface(toolkit::Surface& surface) { surface_ = &surface; }

  IOleClientSite* site() const { return site_.Get(); }
  IOleControlSite* controlSite() const { return controlSite_.Get(); }
  // The container's site, and its ambients with it; null takes everything down.
  void setSite(IOleClientSite* site);
  const Ambients& ambients() const { return ambients_; }
  void readAmbients();

  // The HRESULTs are those of IOleObject::DoVerb. In design mode the window is one that only shows
  // the control, and there is no UI activation.
  HRESULT activate();
  HRESULT activateUi(const MSG* message);
  void deactivateUi();
  void deactivate();
  void hide();
  // May be called before there is a window.
  void setRectangles(const RECT& place, const RECT& clip);

  bool active() const { return inPlaceSite_ != nullptr; }
  // Null without a window.
  HWND window() const;
  // S_OK when the message was used up here, else the container's own answer to it (S_FALSE when it
  // has none).
  HRESULT translate(MSG& message);
  // A mnemonic that the container has found to be this control's.
  void mnemonic(char32_t letter);

  // Windows and site go at once. Until `reopen`, whatever still runs meets ControlClosed.
  void takeDown();
  void reopen() { closed_ = false; }

  HWND owner() const override;
  bool closed() const override;
  void enableModeless(bool enable) override;
  void restoreFocus() override;
  HWND surfaceWindow() const override { return window(); }
  std::shared_ptr<void> keepAlive() const override { return keepAlive_ ? keepAlive_() : nullptr; }

 private:
  HRESULT enterPlace();
  HRESULT makeWindow();
  void makeWindowIn(HWND parent);
  void show(bool visible);
  void changeMode();
  HRESULT tellUiActive();
  void showActiveObject();
  void dropFrame();
  void takeFocus();
  void applyClip();
  void keyboardMoved(bool inside);
  void tellFocus(bool inside);

  IOleInPlaceActiveObject& object_;
  toolkit::Surface* surface_ = nullptr;
  std::function<std::shared_ptr<void>()> keepAlive_;

  Microsoft::WRL::ComPtr<IOleClientSite> site_;
  Microsoft::WRL::ComPtr<IOleControlSite> controlSite_;
  Ambients ambients_;

  Microsoft::WRL::ComPtr<IOleInPlaceSite> inPlaceSite_;  // while active
  Microsoft::WRL::ComPtr<IOleInPlaceFrame> frame_;
  Microsoft::WRL::ComPtr<IOleInPlaceUIWindow> document_;
  std::unique_ptr<toolkit::win32::SurfaceWindow> windows_;  // in user mode
  std::unique_ptr<DesignWindow> picture_;                   // in design mode
  RECT place_{};
  RECT clip_{};
  bool clipped_ = false;
  bool uiActive_ = false;
  bool focusTold_ = false;
  bool closed_ = false;
  int modal_ = 0;   // boxes and forms that run
  int barred_ = 0;  // of those, the ones that this frame was told of
};

}  // namespace ocx
