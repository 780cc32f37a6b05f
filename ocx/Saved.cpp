#include "ocx/Saved.h"

#include <wrl/client.h>

#include <array>

#include "com/ComBorder.h"
#include "com/Variant.h"

namespace ocx {

using Microsoft::WRL::ComPtr;

namespace {

constexpr const wchar_t* kStream = L"Contents";
constexpr const wchar_t* kWidth = L"_ExtentX";
constexpr const wchar_t* kHeight = L"_ExtentY";
constexpr const wchar_t* kVersionName = L"_Version";
constexpr LONG kMark = 0x4C534554;  // "TESL"
constexpr LONG kVersion = 1;
constexpr LONG kLargest = 1000000;  // ten metres

SIZEL checked(LONG width, LONG height) {
  if (width < 0 || height < 0 || width > kLargest || height > kLargest) {
    throw com::Error(E_INVALIDARG, "a saved size is out of range");
  }
  return {width, height};
}

LONG numberFrom(IPropertyBag& bag, IErrorLog* log, const wchar_t* name, LONG absent) {
  com::Variant value;
  VARIANT* out = value.out();
  out->vt = VT_I4;
  const HRESULT result = bag.Read(name, out, log);
  return FAILED(result) || value.get().vt == VT_EMPTY ? absent : com::numberOf(value.get());
}

void numberTo(IPropertyBag& bag, const wchar_t* name, LONG number) {
  VARIANT value;
  VariantInit(&value);
  value.vt = VT_I4;
  value.lVal = number;
  com::check(bag.Write(name, &value), "a property cannot be saved");
}

}  // namespace

Saved readSaved(IStream& stream) {
  std::array<LONG, kSavedBytes / sizeof(LONG)> words{};
  ULONG read = 0;
  com::check(stream.Read(words.data(), kSavedBytes, &read), "the saved control cannot be read");
  if (read != kSavedBytes || words[0] != kMark || words[1] != kVersion) {
    throw com::Error(STG_E_INVALIDHEADER, "this is no saved control");
  }
  return {checked(words[2], words[3])};
}

void writeSaved(const Saved& saved, IStream& stream) {
  const std::array<LONG, kSavedBytes / sizeof(LONG)> words{kMark, kVersion, saved.extent.cx,
                                                           saved.extent.cy};
  ULONG written = 0;
  com::check(stream.Write(words.data(), kSavedBytes, &written), "the control cannot be saved");
  if (written != kSavedBytes) throw com::Error(STG_E_MEDIUMFULL, "the control cannot be saved");
}

Saved readSaved(IPropertyBag& bag, IErrorLog* log, const Saved& defaults) {
  return {checked(numberFrom(bag, log, kWidth, defaults.extent.cx),
                  numberFrom(bag, log, kHeight, defaults.extent.cy))};
}

void writeSaved(const Saved& saved, IPropertyBag& bag) {
  numberTo(bag, kVersionName, kVersion);
  numberTo(bag, kWidth, saved.extent.cx);
  numberTo(bag, kHeight, saved.extent.cy);
}

Saved readSaved(IStorage& storage) {
  ComPtr<IStream> stream;
  com::check(storage.OpenStream(kStream, nullptr, STGM_READ | STGM_SHARE_EXCLUSIVE, 0, &stream),
             "the saved control cannot be opened");
  return readSaved(*stream.Get());
}

void writeSaved(const Saved& saved, IStorage& storage) {
  ComPtr<IStream> stream;
  com::check(
      storage.CreateStream(kStream, STGM_CREATE | STGM_WRITE | STGM_SHARE_EXCLUSIVE, 0, 0, &stream),
      "the control cannot be saved");
  writeSaved(saved, *stream.Get());
}

}  // namespace ocx
