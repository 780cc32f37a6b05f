// What the container keeps of the control with its own document, in each of the ways that it may
// ask.
#pragma once

#include <ocidl.h>
#include <ole2.h>

#include <functional>

#include "ocx/Answers.h"
#include "ocx/Part.h"
#include "ocx/Saved.h"
#include "ocx/TessalineTypes.h"

namespace ocx {

class Persistence final : public Part<IPersistStreamInit, IPersistPropertyBag, IPersistStorage> {
 public:
  // `naturalExtent` is the size of a control that has not been given another one.
  Persistence(Lifetime& whole, std::function<SIZEL()> naturalExtent)
      : Part(whole), naturalExtent_(std::move(naturalExtent)) {}
  ~Persistence() = default;

  std::function<void()> onSaved;  // the container says that a document is complete

  // Hundredths of a millimetre.
  const SIZEL& extent() const { return saved_.extent; }
  // Was it another one?
  bool setExtent(const SIZEL& extent);
  void setNaturalExtent() { saved_.extent = natural_ = naturalExtent_(); }
  // The natural one may have become another; a size that nobody has set follows it.
  void followNaturalExtent();
  bool dirty() const { return dirty_; }

  HRESULT STDMETHODCALLTYPE GetClassID(CLSID* type) override {
    return enter([&] { return give(type, __uuidof(Ctr_OrgPriseCharge)); });
  }
  HRESULT STDMETHODCALLTYPE IsDirty() override {
    return enter([&] { return dirty_ ? S_OK : S_FALSE; });
  }
  HRESULT STDMETHODCALLTYPE InitNew() override {
    return enter([&] { return initNew(); });
  }
  HRESULT STDMETHODCALLTYPE Load(IStream* stream) override {
    return enter([&] { return loadFrom(stream); });
  }
  HRESULT STDMETHODCALLTYPE Save(IStream* stream, BOOL clearDirty) override {
    return enter([&] { return saveTo(stream, clearDirty != FALSE); });
  }
  HRESULT STDMETHODCALLTYPE GetSizeMax(ULARGE_INTEGER* size) override {
    return enter([&] { return give(size, ULARGE_INTEGER{.QuadPart = kSavedBytes}); });
  }
  HRESULT STDMETHODCALLTYPE Load(IPropertyBag* bag, IErrorLog* log) override {
    return enter([&] { return loadFrom(bag, log); });
  }
  HRESULT STDMETHODCALLTYPE Save(IPropertyBag* bag, BOOL clearDirty, BOOL) override {
    return enter([&] { return saveTo(bag, clearDirty != FALSE); });
  }
  HRESULT STDMETHODCALLTYPE InitNew(IStorage* storage) override {
    return enter([&] { return initNew(storage); });
  }
  HRESULT STDMETHODCALLTYPE Load(IStorage* storage) override {
    return enter([&] { return loadFrom(storage); });
  }
  HRESULT STDMETHODCALLTYPE Save(IStorage* storage, BOOL) override {
    return enter([&] { return saveTo(storage); });
  }
  HRESULT STDMETHODCALLTYPE SaveCompleted(IStorage*) override {
    return enter([&] { return saveCompleted(); });
  }
  HRESULT STDMETHODCALLTYPE HandsOffStorage() override {
    return enter([] { return S_OK; });
  }

 private:
  HRESULT initNew();
  HRESULT initNew(IStorage* storage);
  HRESULT loadFrom(IStream* stream);
  HRESULT loadFrom(IPropertyBag* bag, IErrorLog* log);
  HRESULT loadFrom(IStorage* storage);
  HRESULT saveTo(IStream* stream, bool clearDirty);
  HRESULT saveTo(IPropertyBag* bag, bool clearDirty);
  HRESULT saveTo(IStorage* storage);
  HRESULT saveCompleted();

  std::function<SIZEL()> naturalExtent_;
  SIZEL natural_{};
  Saved saved_;
  bool dirty_ = false;
};

}  // namespace ocx
