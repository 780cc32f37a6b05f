// A COM enumerator over a fixed list.
#pragma once

#include <ole2.h>

#include <cstddef>
#include <utility>
#include <vector>

#include "com/ComBorder.h"
#include "com/Module.h"

namespace ocx {

// `handOver(held, element)` copies one element out, references included.
template <class Interface, class Element, class Held,
          void (*handOver)(const Held& held, Element& element)>
class Enumerator final : public Interface {
 public:
  // The new object has one reference, the caller's.
  static Interface* make(std::vector<Held> items) { return new Enumerator(std::move(items), 0); }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** object) override {
    return com::comBorder([&] { return query(wanted, object); });
  }
  ULONG STDMETHODCALLTYPE AddRef() override {
    return com::comBorder<ULONG>([&] { return ++references_; });
  }
  ULONG STDMETHODCALLTYPE Release() override {
    return com::comBorder<ULONG>([&] { return release(); });
  }
  HRESULT STDMETHODCALLTYPE Next(ULONG count, Element* elements, ULONG* fetched) override {
    return com::comBorder([&] { return next(count, elements, fetched); });
  }
  HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
    return com::comBorder([&] { return skip(count); });
  }
  HRESULT STDMETHODCALLTYPE Reset() override {
    return com::comBorder([&] {
      at_ = 0;
      return S_OK;
    });
  }
  HRESULT STDMETHODCALLTYPE Clone(Interface** copy) override {
    return com::comBorder([&] { return clone(copy); });
  }

 private:
  Enumerator(std::vector<Held> items, std::size_t at) : items_(std::move(items)), at_(at) {}
  Enumerator(const Enumerator&) = delete;
  Enumerator& operator=(const Enumerator&) = delete;
  ~Enumerator() = default;

  HRESULT query(REFIID wanted, void** object) {
    if (object == nullptr) return E_POINTER;
    const bool known = wanted == __uuidof(IUnknown) || wanted == __uuidof(Interface);
    *object = known ? static_cast<Interface*>(this) : nullptr;
    references_ += known ? 1 : 0;
    return known ? S_OK : E_NOINTERFACE;
  }

  ULONG release() {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  HRESULT next(ULONG count, Element* elements, ULONG* fetched) {
    if (elements == nullptr || (fetched == nullptr && count != 1)) return E_POINTER;
    ULONG given = 0;
    while (given < count && at_ < items_.size()) {
      handOver(items_[at_], elements[given]);
      ++at_;
      ++given;
    }
    if (fetched != nullptr) *fetched = given;
    return given == count ? S_OK : S_FALSE;
  }

  HRESULT skip(ULONG count) {
    const std::size_t left = items_.size() - at_;
    at_ += count < left ? count : left;
    return count <= left ? S_OK : S_FALSE;
  }

  HRESULT clone(Interface** copy) {
    if (copy == nullptr) return E_POINTER;
    *copy = new Enumerator(items_, at_);
    return S_OK;
  }

  com::Alive alive_;
  ULONG references_ = 1;
  std::vector<Held> items_;
  std::size_t at_;
};

}  // namespace ocx
