#include "com/ComBorder.h"

#include <ole2.h>
#include <wrl/client.h>

#include <new>

#include "com/Module.h"
#include "com/Variant.h"
#include "store/StoreError.h"

namespace com {

using Microsoft::WRL::ComPtr;

void check(HRESULT result, const char* what) {
  if (FAILED(result)) throw Error(result, what);
}

namespace {

void leaveErrorInfo(std::string_view description) {
  ComPtr<ICreateErrorInfo> info;
  check(CreateErrorInfo(&info), "CreateErrorInfo");
  check(info->SetSource(Bstr(errorSource()).get()), "SetSource");
  check(info->SetDescription(Bstr(wide(description)).get()), "SetDescription");
  ComPtr<IErrorInfo> finished;
  check(info.As(&finished), "IErrorInfo");
  SetErrorInfo(0, finished.Get());
}

HRESULT codeOf(const std::exception& failure) {
  if (const auto* coded = dynamic_cast<const Error*>(&failure)) return coded->code();
  if (const auto* store = dynamic_cast<const store::StoreError*>(&failure)) {
    return static_cast<HRESULT>(store->code());
  }
  if (dynamic_cast<const std::invalid_argument*>(&failure) != nullptr) return E_INVALIDARG;
  return dynamic_cast<const std::bad_alloc*>(&failure) != nullptr ? E_OUTOFMEMORY : E_FAIL;
}

}  // namespace

void describeError(std::string_view description) noexcept {
  try {
    leaveErrorInfo(description);
  } catch (const std::exception&) {
    // The HRESULT alone has to do.
    SetErrorInfo(0, nullptr);
  }
}

HRESULT failureOf(const std::exception& failure) noexcept {
  describeError(failure.what());
  const HRESULT code = codeOf(failure);
  return FAILED(code) ? code : E_FAIL;
}

}  // namespace com
