// Makes one kind of object for whoever asks the library for its class.
#pragma once

#include <ole2.h>
#include <wrl/client.h>

#include "com/Module.h"

namespace storecom {

class ClassFactory final : public IClassFactory {
 public:
  using Maker = Microsoft::WRL::ComPtr<IUnknown> (*)();

  explicit ClassFactory(Maker maker) : maker_(maker) {}
  ClassFactory(const ClassFactory&) = delete;
  ClassFactory& operator=(const ClassFactory&) = delete;

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override;
  STDMETHODIMP_(ULONG) Release() override;

  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** object) override;
  STDMETHODIMP LockServer(BOOL lock) override;

 private:
  ~ClassFactory() = default;

  com::Alive alive_;
  Maker maker_;
  ULONG references_ = 1;
};

}  // namespace storecom
