// What the container's interfaces ask and this control has no more than the default answer to.
#pragma once

#include <ocidl.h>
#include <ole2.h>

#include "com/ComBorder.h"
#include "ocx/Answers.h"

namespace ocx {

// No monikers, no data to be made from, no verbs beyond those of every control, nothing to update.
class OleObjectDefaults : public IOleObject {
 public:
  HRESULT STDMETHODCALLTYPE SetHostNames(LPCOLESTR, LPCOLESTR) override {
    return com::comBorder([] { return S_OK; });
  }
  HRESULT STDMETHODCALLTYPE SetMoniker(DWORD, IMoniker*) override {
    return com::comBorder([] { return E_NOTIMPL; });
  }
  HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker** moniker) override {
    return com::comBorder([&] { return give<IMoniker*>(moniker, nullptr, E_NOTIMPL); });
  }
  HRESULT STDMETHODCALLTYPE InitFromData(IDataObject*, BOOL, DWORD) override {
    return com::comBorder([] { return E_NOTIMPL; });
  }
  HRESULT STDMETHODCALLTYPE GetClipboardData(DWORD, IDataObject** data) override {
    return com::comBorder([&] { return give<IDataObject*>(data, nullptr, E_NOTIMPL); });
  }
  HRESULT STDMETHODCALLTYPE EnumVerbs(IEnumOLEVERB** verbs) override {
    return com::comBorder([&] { return give<IEnumOLEVERB*>(verbs, nullptr, OLEOBJ_E_NOVERBS); });
  }
  HRESULT STDMETHODCALLTYPE Update() override {
    return com::comBorder([] { return S_OK; });
  }
  HRESULT STDMETHODCALLTYPE IsUpToDate() override {
    return com::comBorder([] { return S_OK; });
  }
  HRESULT STDMETHODCALLTYPE SetColorScheme(LOGPALETTE*) override {
    return com::comBorder([] { return E_NOTIMPL; });
  }

 protected:
  ~OleObjectDefaults() = default;
};

// No help of its own, nothing to undo.
class InPlaceObjectDefaults : public IOleInPlaceObject {
 public:
  HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override {
    return com::comBorder([] { return E_NOTIMPL; });
  }
  HRESULT STDMETHODCALLTYPE ReactivateAndUndo() override {
    return com::comBorder([] { return INPLACE_E_NOTUNDOABLE; });
  }

 protected:
  ~InPlaceObjectDefaults() = default;
};

// No tools around the frame, nothing that changes when a window of the host comes to the front.
class ActiveObjectDefaults : public IOleInPlaceActiveObject {
 public:
  HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override {
    return com::comBorder([] { return E_NOTIMPL; });
  }
  HRESULT STDMETHODCALLTYPE OnFrameWindowActivate(BOOL) override {
    return com::comBorder([] { return S_OK; });
  }
  HRESULT STDMETHODCALLTYPE OnDocWindowActivate(BOOL) override {
    return com::comBorder([] { return S_OK; });
  }
  HRESULT STDMETHODCALLTYPE ResizeBorder(LPCRECT, IOleInPlaceUIWindow*, BOOL) override {
    return com::comBorder([] { return S_OK; });
  }
  HRESULT STDMETHODCALLTYPE EnableModeless(BOOL) override {
    return com::comBorder([] { return S_OK; });
  }

 protected:
  ~ActiveObjectDefaults() = default;
};

// No palette, no frozen pictures.
class ViewObjectDefaults : public IViewObject2 {
 public:
  HRESULT STDMETHODCALLTYPE GetColorSet(DWORD, LONG, void*, DVTARGETDEVICE*, HDC,
                                        LOGPALETTE** colors) override {
    return com::comBorder([&] { return give<LOGPALETTE*>(colors, nullptr, S_FALSE); });
  }
  HRESULT STDMETHODCALLTYPE Freeze(DWORD, LONG, void*, DWORD*) override {
    return com::comBorder([] { return E_NOTIMPL; });
  }
  HRESULT STDMETHODCALLTYPE Unfreeze(DWORD) override {
    return com::comBorder([] { return E_NOTIMPL; });
  }

 protected:
  ~ViewObjectDefaults() = default;
};

}  // namespace ocx
