#include "ocx/Persistence.h"

#include <utility>

namespace ocx {

bool Persistence::setExtent(const SIZEL& extent) {
  if (extent.cx == saved_.extent.cx && extent.cy == saved_.extent.cy) return false;
  saved_.extent = extent;
  dirty_ = true;
  return true;
}

void Persistence::followNaturalExtent() {
  const SIZEL before = std::exchange(natural_, naturalExtent_());
  if (saved_.extent.cx == before.cx && saved_.extent.cy == before.cy) saved_.extent = natural_;
}

HRESULT Persistence::initNew() {
  setNaturalExtent();
  dirty_ = true;
  return S_OK;
}

HRESULT Persistence::initNew(IStorage* storage) {
  return storage == nullptr ? E_POINTER : initNew();
}

HRESULT Persistence::loadFrom(IStream* stream) {
  if (stream == nullptr) return E_POINTER;
  saved_ = readSaved(*stream);
  dirty_ = false;
  return S_OK;
}

HRESULT Persistence::loadFrom(IPropertyBag* bag, IErrorLog* log) {
  if (bag == nullptr) return E_POINTER;
  saved_ = readSaved(*bag, log, saved_);
  dirty_ = false;
  return S_OK;
}

HRESULT Persistence::loadFrom(IStorage* storage) {
  if (storage == nullptr) return E_POINTER;
  saved_ = readSaved(*storage);
  dirty_ = false;
  return S_OK;
}

HRESULT Persistence::saveTo(IStream* stream, bool clearDirty) {
  if (stream == nullptr) return E_POINTER;
  writeSaved(saved_, *stream);
  dirty_ = dirty_ && !clearDirty;
  return S_OK;
}

HRESULT Persistence::saveTo(IPropertyBag* bag, bool clearDirty) {
  if (bag == nullptr) return E_POINTER;
  writeSaved(saved_, *bag);
  dirty_ = dirty_ && !clearDirty;
  return S_OK;
}

HRESULT Persistence::saveTo(IStorage* storage) {
  if (storage == nullptr) return E_POINTER;
  writeSaved(saved_, *storage);
  return S_OK;
}

HRESULT Persistence::saveCompleted() {
  dirty_ = false;
  if (onSaved) onSaved();
  return S_OK;
}

}  // namespace ocx
