// A dispatch interface that is called by numbers alone: it has no type library and knows no names.
#pragma once

#include <oaidl.h>

namespace host {

class NamelessDispatch : public IDispatch {
 public:
  NamelessDispatch() = default;
  NamelessDispatch(const NamelessDispatch&) = delete;
  NamelessDispatch& operator=(const NamelessDispatch&) = delete;

  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
  STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                             DISPID* ids) override;

 protected:
  ~NamelessDispatch() = default;
};

}  // namespace host
