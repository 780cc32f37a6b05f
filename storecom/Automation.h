// What every object of the library has in common: late binding by its part of the type library.
#pragma once

#include <ole2.h>
#include <wrl/client.h>

#include "com/Module.h"
#include "com/Owned.h"
#include "com/Variant.h"
#include "storecom/Arguments.h"

namespace storecom {

// Counted from 1: whoever makes one owns a reference. Single-threaded, as its apartment is.
class Automation : public IDispatch, public ISupportErrorInfo {
 public:
  Automation(const Automation&) = delete;
  Automation& operator=(const Automation&) = delete;

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override;
  STDMETHODIMP_(ULONG) Release() override;

  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
  STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                             DISPID* ids) override;
  STDMETHODIMP Invoke(DISPID member, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters,
                      VARIANT* result, EXCEPINFO* exception, UINT* wrong) override;

  STDMETHODIMP InterfaceSupportsErrorInfo(REFIID iid) override;

 protected:
  // The dispatch interface that the type library describes it by.
  explicit Automation(const GUID& dispatch) : dispatch_(dispatch) {}
  virtual ~Automation() = default;

  // How many arguments a member takes at most, -1 when there is no such member.
  virtual int mostArguments(DISPID member, bool isPut) const = 0;
  // A method called or a property read, or a property put. Whatever is thrown reaches the caller
  // as an exception with its code and description.
  virtual com::Variant call(DISPID member, const Arguments& arguments) = 0;
  virtual void put(DISPID member, const Arguments& arguments);

 private:
  Microsoft::WRL::ComPtr<ITypeInfo> typeInfo() const;
  com::Variant run(DISPID member, bool isPut, const DISPPARAMS& parameters);

  com::Alive alive_;
  const GUID dispatch_;
  ULONG references_ = 1;
};

// A new object, and the one reference to it.
template <class Object, class... Values>
Microsoft::WRL::ComPtr<Object> make(Values&&... values) {
  return com::owned(new Object(std::forward<Values>(values)...));
}

}  // namespace storecom
