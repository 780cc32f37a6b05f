#include "toolkit/win32/SurfaceWindow.h"

#include "toolkit/win32/SurfaceImplementation.h"
#include "toolkit/win32/WindowClasses.h"

namespace toolkit::win32 {

SurfaceWindow::SurfaceWindow(Surface& surface, HWND parent, const RECT& place,
                             const Ambience& ambience)
    : implementation_(std::make_shared<Implementation>(surface, *this, ambience)) {
  try {
    implementation_->create(parent, place);
  } catch (const std::exception&) {
    implementation_->destroy();
    throw;
  }
}

SurfaceWindow::~SurfaceWindow() { implementation_->destroy(); }

HWND SurfaceWindow::handle() const { return implementation_->window(); }

void SurfaceWindow::setPlace(const RECT& place) { implementation_->setPlace(place); }

void SurfaceWindow::show(bool visible) {
  if (handle()) ShowWindow(handle(), visible ? SW_SHOWNA : SW_HIDE);
}

void SurfaceWindow::setAmbience(const Ambience& ambience) {
  implementation_->setAmbience(ambience);
}

void SurfaceWindow::deliver() {
  const auto self = implementation_;
  self->deliver();
}

bool SurfaceWindow::translate(const MSG& message) {
  const auto self = implementation_;
  return self->keyboard().translate(message);
}

void SurfaceWindow::takeFocus() {
  const auto self = implementation_;
  self->keyboard().take();
}

bool SurfaceWindow::mnemonic(char32_t letter) {
  const auto self = implementation_;
  return self->keyboard().mnemonic(letter);
}

void SurfaceWindow::showCues() {
  if (handle()) implementation_->keyboard().showCues();
}

bool SurfaceWindow::hasKeyboard() const { return implementation_->keyboard().isHere(); }

void SurfaceWindow::keepTabs() { implementation_->keyboard().keepTabs(); }

void SurfaceWindow::keepHourglass(HWND surfaceWindow, bool keep) {
  if (!surfaceWindow) return;
  if (keep) {
    SetPropW(surfaceWindow, kHourglassProperty, reinterpret_cast<HANDLE>(1));
  } else {
    RemovePropW(surfaceWindow, kHourglassProperty);
  }
}

}  // namespace toolkit::win32
