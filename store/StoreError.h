#pragma once

#include <stdexcept>
#include <string>

namespace store {

// Codes are HRESULT values, as the store's objects give them.
inline constexpr unsigned kRecordNotFound = 0x8004000BU;
inline constexpr unsigned kUnknownFile = 0x80040001U;
inline constexpr unsigned kBadSentence = 0x80040002U;
inline constexpr unsigned kBusy = 0x80040003U;      // another process held the store too long
inline constexpr unsigned kBadValue = 0x80040004U;  // a value that the store cannot hold
inline constexpr unsigned kIoFailure = 0x80040005U;
inline constexpr unsigned kFailed = 0x80004005U;  // anything else

// A call on a store object has failed.
class StoreError : public std::runtime_error {
 public:
  StoreError(unsigned code, const std::string& message)
      : std::runtime_error(message), code_(code) {}
  unsigned code() const { return code_; }

 private:
  unsigned code_;
};

}  // namespace store
