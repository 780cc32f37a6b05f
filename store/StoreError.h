#pragma once

#include <stdexcept>
#include <string>
#include <utility>

#include "text/Discreet.h"

namespace store {

// Codes are HRESULT values, as the store's objects give them.
inline constexpr unsigned kRecordNotFound = 0x8004000BU;
inline constexpr unsigned kUnknownFile = 0x80040001U;
inline constexpr unsigned kBadSentence = 0x80040002U;
inline constexpr unsigned kBusy = 0x80040003U;      // another process held the store too long
inline constexpr unsigned kBadValue = 0x80040004U;  // a value that the store cannot hold
inline constexpr unsigned kIoFailure = 0x80040005U;
// What is stored is not what was read: somebody else has changed, created or deleted the record.
inline constexpr unsigned kChanged = 0x80040006U;
// Whether a write was done is not known: the connection was lost before its answer. What is stored
// has to be read again.
inline constexpr unsigned kOutcomeUnknown = 0x80040007U;
inline constexpr unsigned kFailed = 0x80004005U;  // anything else

// A call on a store object has failed.
class StoreError : public std::runtime_error, public text::Discreet {
 public:
  // `member`: what was called, where that is known.
  StoreError(unsigned code, const std::string& message, std::string member = {})
      : std::runtime_error(message), code_(code), member_(std::move(member)) {}
  unsigned code() const { return code_; }
  const std::string& member() const { return member_; }
  // "ReadRecord 0x80040003"; the code alone without a member.
  std::string withoutText() const override;

 private:
  unsigned code_;
  std::string member_;
};

}  // namespace store
