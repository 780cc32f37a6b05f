#pragma once

#include <ole2.h>

#include "com/ComBorder.h"
#include "com/Module.h"

namespace ocx {

class ClassFactory final : public IClassFactory {
 public:
  // The new object has one reference, the caller's.
  static ClassFactory* make() { return new ClassFactory; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** object) override {
    return com::comBorder([&] { return query(wanted, object); });
  }
  ULONG STDMETHODCALLTYPE AddRef() override {
    return com::comBorder<ULONG>([&] { return ++references_; });
  }
  ULONG STDMETHODCALLTYPE Release() override {
    return com::comBorder<ULONG>([&] { return release(); });
  }
  // The control does not take part in aggregation.
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID wanted, void** object) override {
    return com::comBorder([&] { return create(outer, wanted, object); });
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
    return com::comBorder([&] {
      com::lockModule(lock != FALSE);
      return S_OK;
    });
  }

 private:
  ClassFactory() = default;
  ClassFactory(const ClassFactory&) = delete;
  ClassFactory& operator=(const ClassFactory&) = delete;
  ~ClassFactory() = default;

  HRESULT query(REFIID wanted, void** object);
  ULONG release();
  static HRESULT create(IUnknown* outer, REFIID wanted, void** object);

  com::Alive alive_;
  ULONG references_ = 1;
};

}  // namespace ocx
