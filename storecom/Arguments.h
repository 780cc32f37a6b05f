// The arguments of a late-bound call, in the order in which the member declares them.
#pragma once

#include <ole2.h>

#include <cstddef>
#include <string>
#include <vector>

namespace storecom {

// Positions are numbered from 0; named arguments stand where their names belong. The accessors
// throw com::Error: DISP_E_PARAMNOTOPTIONAL when the argument is missing, DISP_E_TYPEMISMATCH or
// DISP_E_OVERFLOW when it does not convert.
class Arguments {
 public:
  // DISP_E_BADPARAMCOUNT for more than `most`, the assigned value not counted.
  Arguments(const DISPPARAMS& parameters, bool isPut, std::size_t most);

  bool has(std::size_t position) const;
  int number(std::size_t position) const;
  // DISP_E_TYPEMISMATCH for a fraction, and for what is neither a number nor a text of digits.
  long wholeNumber(std::size_t position) const;
  bool boolean(std::size_t position) const;
  // A text, in which U+00FE and U+00FD stand for themselves.
  std::string text(std::size_t position) const;
  // A record's text, in which they are its marks.
  std::string record(std::size_t position) const;
  // What a property is assigned.
  std::string assigned() const;

 private:
  const VARIANT& at(std::size_t position) const;

  std::vector<const VARIANT*> values_;
  const VARIANT* assigned_ = nullptr;
};

}  // namespace storecom
