// What hears of a control's properties, views and end.
#pragma once

#include <ocidl.h>
#include <ole2.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

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

// Hears of the events of a control: the first one's number is 1.
class EventSink final : public HostObject<IDispatch> {
 public:
  // `wanted` is the interface by which it is known; IID_IDispatch: by that alone.
  EventSink(std::shared_ptr<Rules> rules, const IID& wanted)
      : HostObject(std::move(rules), "event sink"), wanted_(wanted) {}

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override {
    *info = nullptr;
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* given, VARIANT*,
                                   EXCEPINFO*, UINT*) override {
    rules().onEvent("event " + std::to_string(id));
    told_.push_back(toldOf(id, *given));
    if (onEvent) onEvent(id);
    return answer;
  }

  // "2 004 true", "4 Cmd_OK_Click -2147221501 ...": number and arguments of each event.
  const std::vector<std::string>& told() const { return told_; }
  std::function<void(DISPID id)> onEvent;
  HRESULT answer = S_OK;

 private:
  void* find(REFIID id) override {
    if (id == IID_IUnknown || id == IID_IDispatch || id == wanted_) {
      return static_cast<IDispatch*>(this);
    }
    return nullptr;
  }
  static std::string toldOf(DISPID id, const DISPPARAMS& given);

  const IID wanted_;
  std::vector<std::string> told_;
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
