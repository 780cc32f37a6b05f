// Where exceptions end and HRESULTs begin: every vtable method and every exported function of a COM
// library is one call of comBorder.
#pragma once

#include <windows.h>

#include <exception>
#include <stdexcept>
#include <string>
#include <string_view>

namespace com {

// A failure with the HRESULT that the caller gets.
class Error : public std::runtime_error {
 public:
  Error(HRESULT code, const std::string& description)
      : std::runtime_error(description), code_(code) {}
  HRESULT code() const { return code_; }

 private:
  HRESULT code_;
};

// Throws Error when the result is a failure.
void check(HRESULT result, const char* what);

// Leaves the description (UTF-8) in the thread's IErrorInfo for the caller.
void describeError(std::string_view description) noexcept;

// The HRESULT of an exception, its text left in IErrorInfo: an Error's and a store::StoreError's
// own code (E_FAIL when that is no failure), E_INVALIDARG for std::invalid_argument, E_OUTOFMEMORY
// for std::bad_alloc, E_FAIL otherwise.
HRESULT failureOf(const std::exception& failure) noexcept;

// Runs the body and gives back its result; an exception becomes an HRESULT, or the zero of any
// other result type. E_ABORT for what is no std::exception: the control was closed meanwhile.
template <class Result = HRESULT, class Body>
Result comBorder(const Body& body) noexcept {
  HRESULT result = E_ABORT;
  try {
    return body();
  } catch (const std::exception& failure) {
    result = failureOf(failure);
  } catch (...) {
    result = E_ABORT;
  }
  if constexpr (std::is_same_v<Result, HRESULT>) {
    return result;
  } else {
    return Result{};
  }
}

}  // namespace com
