#include "storecom/Arguments.h"

#include <algorithm>
#include <optional>

#include "com/ComBorder.h"
#include "com/Variant.h"

namespace storecom {

using com::Error;

namespace {

// Left out on purpose: `rec.DCount()` from a language that fills in what is optional.
bool isMissing(const VARIANT& value) {
  return value.vt == VT_ERROR && value.scode == DISP_E_PARAMNOTFOUND;
}

bool isDigits(const std::wstring& text) {
  return !text.empty() &&
         std::all_of(text.begin(), text.end(), [](wchar_t c) { return c >= L'0' && c <= L'9'; });
}

}  // namespace

Arguments::Arguments(const DISPPARAMS& parameters, bool isPut, std::size_t most) {
  const UINT named = parameters.cNamedArgs;
  // The others come last to first, behind the named ones.
  for (UINT i = parameters.cArgs; i > named; --i) values_.push_back(&parameters.rgvarg[i - 1]);
  for (UINT i = 0; i < named; ++i) {
    const DISPID id = parameters.rgdispidNamedArgs[i];
    if (id == DISPID_PROPERTYPUT) {
      assigned_ = &parameters.rgvarg[i];
      continue;
    }
    const auto position = static_cast<std::size_t>(id);
    if (id < 0 || position >= most) throw Error(DISP_E_PARAMNOTFOUND, "no such argument");
    values_.resize(std::max(values_.size(), position + 1));
    values_[position] = &parameters.rgvarg[i];
  }
  if (isPut && assigned_ == nullptr && !values_.empty()) {
    assigned_ = values_.back();
    values_.pop_back();
  }
  if (values_.size() > most) throw Error(DISP_E_BADPARAMCOUNT, "too many arguments");
}

bool Arguments::has(std::size_t position) const {
  return position < values_.size() && values_[position] != nullptr &&
         !isMissing(*values_[position]);
}

const VARIANT& Arguments::at(std::size_t position) const {
  if (!has(position)) throw Error(DISP_E_PARAMNOTOPTIONAL, "an argument is missing");
  return *values_[position];
}

int Arguments::number(std::size_t position) const { return com::numberOf(at(position)); }

long Arguments::wholeNumber(std::size_t position) const {
  const com::Variant plain = com::Variant::copyOf(at(position));
  const VARTYPE type = plain.get().vt;
  // What a locale takes for a text's separators is no matter of ours.
  const bool digits = type != VT_BSTR || isDigits(com::textOf(plain.get()));
  const bool countable = digits && type != VT_EMPTY && type != VT_BOOL && type != VT_DATE;
  const std::optional<long> number = com::wholeNumberOf(plain.get());
  if (!countable || !number) throw Error(DISP_E_TYPEMISMATCH, "a whole number is expected");
  return *number;
}

bool Arguments::boolean(std::size_t position) const { return com::booleanOf(at(position)); }

std::string Arguments::text(std::size_t position) const {
  return com::utf8(com::textOf(at(position)));
}

std::string Arguments::record(std::size_t position) const {
  return com::recordText(com::textOf(at(position)));
}

std::string Arguments::assigned() const {
  if (assigned_ == nullptr) throw Error(DISP_E_PARAMNOTOPTIONAL, "there is nothing to assign");
  return com::recordText(com::textOf(*assigned_));
}

}  // namespace storecom
