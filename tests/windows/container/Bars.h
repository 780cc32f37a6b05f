// The frame and the document window that a container gives to a control.
#pragma once

#include <ole2.h>
#include <wrl/client.h>

#include <functional>
#include <memory>
#include <utility>

#include "tests/windows/container/HostObject.h"

namespace container {

class FrameObject final : public HostObject<IOleInPlaceFrame> {
 public:
  FrameObject(std::shared_ptr<Rules> rules, HWND window)
      : HostObject(std::move(rules), "frame"), window_(window) {}

  HRESULT STDMETHODCALLTYPE GetWindow(HWND* out) override;
  HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL enter) override;
  HRESULT STDMETHODCALLTYPE GetBorder(RECT* border) override;
  HRESULT STDMETHODCALLTYPE RequestBorderSpace(const BORDERWIDTHS* widths) override;
  HRESULT STDMETHODCALLTYPE SetBorderSpace(const BORDERWIDTHS* widths) override;
  HRESULT STDMETHODCALLTYPE SetActiveObject(IOleInPlaceActiveObject* object,
                                            LPCOLESTR name) override;
  HRESULT STDMETHODCALLTYPE InsertMenus(HMENU menu, OLEMENUGROUPWIDTHS* widths) override;
  HRESULT STDMETHODCALLTYPE SetMenu(HMENU menu, HOLEMENU oleMenu, HWND object) override;
  HRESULT STDMETHODCALLTYPE RemoveMenus(HMENU menu) override;
  HRESULT STDMETHODCALLTYPE SetStatusText(LPCOLESTR text) override;
  HRESULT STDMETHODCALLTYPE EnableModeless(BOOL enable) override;
  HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG* message, WORD id) override;

  IOleInPlaceActiveObject* activeObject() const { return active_.Get(); }
  void forget() { active_.Reset(); }

  // Called from within EnableModeless.
  std::function<void(bool enable)> onModeless;

 private:
  void* find(REFIID id) override;

  HWND window_;
  Microsoft::WRL::ComPtr<IOleInPlaceActiveObject> active_;
};

class DocumentObject final : public HostObject<IOleInPlaceUIWindow> {
 public:
  DocumentObject(std::shared_ptr<Rules> rules, HWND window)
      : HostObject(std::move(rules), "document"), window_(window) {}

  HRESULT STDMETHODCALLTYPE GetWindow(HWND* out) override;
  HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL enter) override;
  HRESULT STDMETHODCALLTYPE GetBorder(RECT* border) override;
  HRESULT STDMETHODCALLTYPE RequestBorderSpace(const BORDERWIDTHS* widths) override;
  HRESULT STDMETHODCALLTYPE SetBorderSpace(const BORDERWIDTHS* widths) override;
  HRESULT STDMETHODCALLTYPE SetActiveObject(IOleInPlaceActiveObject* object,
                                            LPCOLESTR name) override;

  void forget() { active_.Reset(); }

 private:
  void* find(REFIID id) override;

  HWND window_;
  Microsoft::WRL::ComPtr<IOleInPlaceActiveObject> active_;
};

}  // namespace container
