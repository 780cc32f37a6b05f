// Owners of BSTR and VARIANT, and the one place where text crosses between UTF-8 and UTF-16.
#pragma once

#include <ole2.h>
#include <wrl/client.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace com {

// Mark bytes 0xFE and 0xFD come out as the characters U+00FE and U+00FD.
std::wstring wide(std::string_view utf8);
// A text: U+00FE and U+00FD stay characters.
std::string utf8(std::wstring_view wide);
// A record: U+00FE and U+00FD are its marks and become the bytes 0xFE and 0xFD.
std::string recordText(std::wstring_view wide);

class Bstr {
 public:
  explicit Bstr(std::wstring_view text);  // std::bad_alloc
  Bstr(const Bstr&) = delete;
  Bstr& operator=(const Bstr&) = delete;
  ~Bstr() { SysFreeString(text_); }
  BSTR get() const { return text_; }
  // The caller owns it from now on.
  BSTR release() {
    BSTR text = text_;
    text_ = nullptr;
    return text;
  }

 private:
  BSTR text_;
};

// What a BSTR argument holds; a null one is empty.
inline std::wstring_view viewOf(BSTR text) {
  return text == nullptr ? std::wstring_view() : std::wstring_view(text, SysStringLen(text));
}

class Variant {
 public:
  Variant() { VariantInit(&value_); }
  Variant(Variant&& other) noexcept : value_(other.value_) { VariantInit(&other.value_); }
  Variant& operator=(Variant&& other) noexcept;
  Variant(const Variant&) = delete;
  Variant& operator=(const Variant&) = delete;
  ~Variant() { VariantClear(&value_); }

  static Variant ofText(std::wstring_view text);
  static Variant ofNumber(long number);
  static Variant ofShort(short number);
  static Variant ofBoolean(bool value);
  static Variant ofObject(IDispatch* object);  // adds a reference
  // A copy by value: VT_BYREF is followed. DISP_E_TYPEMISMATCH when there is nothing to follow.
  static Variant copyOf(const VARIANT& value);

  const VARIANT& get() const { return value_; }
  // To be filled by a call; what it held is cleared first.
  VARIANT* out();
  // The caller owns the contents from now on.
  VARIANT release();

 private:
  VARIANT value_;
};

// Each follows VT_BYREF and converts; Error with DISP_E_TYPEMISMATCH or DISP_E_OVERFLOW when the
// value cannot be converted. Empty reads as "", 0, false, and no object.
std::wstring textOf(const VARIANT& value);
long numberOf(const VARIANT& value);
bool booleanOf(const VARIANT& value);
// The same, but Null reads as "" too.
std::wstring textOrNullOf(const VARIANT& value);
// The low 32 bits of a number of any type; nothing when it is none, or beyond 64 bits.
std::optional<std::uint32_t> lowBitsOf(const VARIANT& value);
// Nothing when the value is no whole number that a long holds.
std::optional<long> wholeNumberOf(const VARIANT& value);
// Empty, Null, or an object that is none.
bool isNothing(const VARIANT& value);
// The object of a VT_DISPATCH or VT_UNKNOWN; null for an empty or null value.
Microsoft::WRL::ComPtr<IDispatch> objectOf(const VARIANT& value);

// Gives a VT_BYREF argument a new value, converted to the type that it refers to (through
// VT_BYREF|VT_VARIANT as well). A value that is not VT_BYREF is left alone.
void writeBack(VARIANT& argument, const Variant& value);

}  // namespace com
