// An object of the container's that a control holds: counts who holds it, and does not die of it.
#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <utility>

#include "tests/windows/container/Rules.h"

namespace container {

// The container owns the object; references() are those held by others, zero when nobody leaks.
template <class... Interfaces>
class HostObject : public Interfaces... {
 public:
  HostObject(std::shared_ptr<Rules> rules, std::string name)
      : rules_(std::move(rules)), name_(std::move(name)) {}
  HostObject(const HostObject&) = delete;
  HostObject& operator=(const HostObject&) = delete;
  virtual ~HostObject() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) final {
    if (out == nullptr) return E_POINTER;
    *out = find(id);
    if (*out == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() final { return static_cast<ULONG>(++references_); }
  ULONG STDMETHODCALLTYPE Release() final {
    if (references_ == 0) {
      rules_->overReleased(name_);
      return 0;
    }
    return static_cast<ULONG>(--references_);
  }

  long references() const { return references_; }
  const std::string& name() const { return name_; }

 protected:
  // The interface asked for, null when the object does not have it.
  virtual void* find(REFIID id) = 0;
  Rules& rules() { return *rules_; }

 private:
  std::shared_ptr<Rules> rules_;
  std::string name_;
  long references_ = 0;
};

}  // namespace container
