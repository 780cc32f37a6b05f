// What hears of a control's properties, views and end.
#pragma once

#include <ocidl.h>
#include <ole2.h>

#include <functional>
#include <memory>
#include <utility>

#include "tests/windows/container/HostObject.h"

namespace container {

class PropertySink final : public HostObject<IPropertyNotifySink> {
 public:
  explicit PropertySink(std::shared_ptr<Rules> rules)
      : HostObject(std::move(rules), "property sink") {}

  HRESULT STDMETHODCALLTYPE OnChanged(DISPID property) override {
    rules().onChanged(property);
    ++changes_;
    if (onChanged) onChanged(property);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE OnRequestEdit(DISPID) override {
    rules().called("OnRequestEdit");
    return S_OK;
  }

  int changes() const { return changes_; }
  std::function<void(DISPID property)> onChanged;

 private:
  void* find(REFIID id) override {
    if (id == IID_IUnknown || id == IID_IPropertyNotifySink)
      return static_cast<IPropertyNotifySink*>(this);
    return nullptr;
  }

  int changes_ = 0;
};

class AdviseSink final : public HostObject<IAdviseSink> {
 public:
  AdviseSink(std::shared_ptr<Rules> rules, const char* name) : HostObject(std::move(rules), name) {}

  void STDMETHODCALLTYPE OnDataChange(FORMATETC*, STGMEDIUM*) override {
    rules().called("OnDataChange");
  }
  void STDMETHODCALLTYPE OnViewChange(DWORD, LONG) override { rules().called("OnViewChange"); }
  void STDMETHODCALLTYPE OnRename(IMoniker*) override { rules().called("OnRename"); }
  void STDMETHODCALLTYPE OnSave() override { rules().called("OnSave"); }
  void STDMETHODCALLTYPE OnClose() override {
    rules().called("OnClose");
    ++closes_;
  }

  int closes() const { return closes_; }

 private:
  void* find(REFIID id) override {
    if (id == IID_IUnknown || id == IID_IAdviseSink) return static_cast<IAdviseSink*>(this);
    return nullptr;
  }

  int closes_ = 0;
};

}  // namespace container
