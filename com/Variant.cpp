#include "com/Variant.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <new>

#include "com/ComBorder.h"
#include "text/Utf8.h"

namespace com {

using Microsoft::WRL::ComPtr;

namespace {

// For the functions of Windows that only read their argument, without saying so.
VARIANT* readOnly(const VARIANT& value) { return const_cast<VARIANT*>(&value); }

// Numbers become text the same way whatever the user's settings are.
Variant converted(const VARIANT& value, VARTYPE type) {
  const Variant plain = Variant::copyOf(value);
  Variant result;
  check(VariantChangeTypeEx(result.out(), readOnly(plain.get()), LOCALE_INVARIANT, 0, type),
        "a value has the wrong type");
  return result;
}

}  // namespace

std::wstring wide(std::string_view utf8) {
  const std::u16string text = text::toUtf16(utf8);
  return {text.begin(), text.end()};
}

std::string utf8(std::wstring_view wide) {
  return text::fromUtf16(std::u16string(wide.begin(), wide.end()));
}

std::string recordText(std::wstring_view wide) {
  std::string result;
  result.reserve(wide.size());
  std::size_t start = 0;
  for (std::size_t at = 0; at <= wide.size(); ++at) {
    const bool end = at == wide.size();
    if (end || wide[at] == L'\u00FE' || wide[at] == L'\u00FD') {
      result += utf8(wide.substr(start, at - start));
      if (!end) result += static_cast<char>(wide[at]);
      start = at + 1;
    }
  }
  return result;
}

Bstr::Bstr(std::wstring_view text)
    : text_(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {
  if (text_ == nullptr) throw std::bad_alloc();
}

Variant& Variant::operator=(Variant&& other) noexcept {
  if (this != &other) {
    VariantClear(&value_);
    value_ = other.release();
  }
  return *this;
}

Variant Variant::ofText(std::wstring_view text) {
  Variant result;
  result.value_.bstrVal = Bstr(text).release();
  result.value_.vt = VT_BSTR;
  return result;
}

Variant Variant::ofNumber(long number) {
  Variant result;
  result.value_.vt = VT_I4;
  result.value_.lVal = number;
  return result;
}

Variant Variant::ofShort(short number) {
  Variant result;
  result.value_.vt = VT_I2;
  result.value_.iVal = number;
  return result;
}

Variant Variant::ofBoolean(bool value) {
  Variant result;
  result.value_.vt = VT_BOOL;
  result.value_.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
  return result;
}

Variant Variant::ofObject(IDispatch* object) {
  Variant result;
  result.value_.vt = VT_DISPATCH;
  result.value_.pdispVal = object;
  if (object != nullptr) object->AddRef();
  return result;
}

Variant Variant::copyOf(const VARIANT& value) {
  Variant result;
  check(VariantCopyInd(&result.value_, readOnly(value)), "a value cannot be read");
  return result;
}

VARIANT* Variant::out() {
  VariantClear(&value_);
  return &value_;
}

VARIANT Variant::release() {
  const VARIANT value = value_;
  VariantInit(&value_);
  return value;
}

std::wstring textOf(const VARIANT& value) {
  if (value.vt == VT_BSTR) return std::wstring(viewOf(value.bstrVal));
  return std::wstring(viewOf(converted(value, VT_BSTR).get().bstrVal));
}

long numberOf(const VARIANT& value) { return converted(value, VT_I4).get().lVal; }

bool booleanOf(const VARIANT& value) { return converted(value, VT_BOOL).get().boolVal != 0; }

std::wstring textOrNullOf(const VARIANT& value) {
  const Variant plain = Variant::copyOf(value);
  return plain.get().vt == VT_NULL ? std::wstring() : textOf(plain.get());
}

namespace {

bool isNumber(VARTYPE type) {
  constexpr VARTYPE kNumbers[] = {VT_I1, VT_UI1, VT_I2, VT_UI2, VT_I4, VT_UI4,     VT_INT,  VT_UINT,
                                  VT_I8, VT_UI8, VT_R4, VT_R8,  VT_CY, VT_DECIMAL, VT_ERROR};
  return std::find(std::begin(kNumbers), std::end(kNumbers), type) != std::end(kNumbers);
}

}  // namespace

std::optional<std::uint32_t> lowBitsOf(const VARIANT& value) {
  const Variant plain = Variant::copyOf(value);
  const VARIANT& number = plain.get();
  if (!isNumber(number.vt)) return std::nullopt;
  if (number.vt == VT_ERROR) {  // converted to no number
    return static_cast<std::uint32_t>(number.scode);
  }
  if (number.vt == VT_UI8) {  // the upper half does not fit in what the others become
    return static_cast<std::uint32_t>(number.ullVal);
  }
  if (number.vt == VT_CY) {  // whose conversion to whole numbers is one off below zero
    constexpr LONGLONG kUnit = 10000;
    return static_cast<std::uint32_t>(number.cyVal.int64 / kUnit);
  }
  try {
    return static_cast<std::uint32_t>(converted(number, VT_I8).get().llVal);
  } catch (const Error&) {
    return std::nullopt;
  }
}

std::optional<long> wholeNumberOf(const VARIANT& value) {
  try {
    const double number = converted(value, VT_R8).get().dblVal;
    const bool fits = number >= std::numeric_limits<long>::min() &&
                      number <= std::numeric_limits<long>::max() && number == std::floor(number);
    return fits ? std::optional<long>(static_cast<long>(number)) : std::nullopt;
  } catch (const Error&) {
    return std::nullopt;
  }
}

bool isNothing(const VARIANT& value) {
  switch (value.vt) {
    case VT_EMPTY:
    case VT_NULL:
      return true;
    case VT_DISPATCH:
    case VT_UNKNOWN:
      return value.punkVal == nullptr;
    default:
      return false;
  }
}

ComPtr<IDispatch> objectOf(const VARIANT& value) {
  const Variant plain = Variant::copyOf(value);
  ComPtr<IDispatch> object;
  switch (plain.get().vt) {
    case VT_EMPTY:
    case VT_NULL:
      break;
    case VT_DISPATCH:
      object = plain.get().pdispVal;
      break;
    case VT_UNKNOWN:
      if (plain.get().punkVal != nullptr) {
        check(plain.get().punkVal->QueryInterface(IID_PPV_ARGS(&object)),
              "an object without automation");
      }
      break;
    default:
      throw Error(DISP_E_TYPEMISMATCH, "an object is expected");
  }
  return object;
}

namespace {

// The bytes that hold a value of this type, 0 for a type that is not written back.
std::size_t widthOf(VARTYPE type) {
  switch (type) {
    case VT_I1:
    case VT_UI1:
      return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
      return 2;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR:
      return 4;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
      return 8;
    default:
      return 0;
  }
}

}  // namespace

void writeBack(VARIANT& argument, const Variant& value) {
  if (argument.vt == (VT_BYREF | VT_VARIANT)) {
    VARIANT& target = *argument.pvarVal;
    if ((target.vt & VT_BYREF) != 0) {
      writeBack(target, value);
    } else {
      check(VariantCopy(&target, readOnly(value.get())), "an argument cannot be written back");
    }
    return;
  }
  if ((argument.vt & VT_BYREF) == 0) return;
  const auto type = static_cast<VARTYPE>(argument.vt & ~VT_BYREF);
  Variant result = converted(value.get(), type);
  if (type == VT_BSTR) {
    SysFreeString(*argument.pbstrVal);
    *argument.pbstrVal = result.release().bstrVal;
    return;
  }
  const std::size_t width = widthOf(type);
  if (width == 0) throw Error(DISP_E_TYPEMISMATCH, "an argument cannot be written back");
  CopyMemory(argument.byref, &result.get().byref, width);
}

}  // namespace com
