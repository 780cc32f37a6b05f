// What a container keeps for the control between two sessions: its size.
#pragma once

#include <ocidl.h>
#include <ole2.h>

namespace ocx {

struct Saved {
  SIZEL extent{};  // hundredths of a millimetre
};

inline constexpr ULONG kSavedBytes = 16;  // in a stream, whatever the contents

// com::Error for anything that these functions did not write: nothing read is trusted.
Saved readSaved(IStream& stream);
void writeSaved(const Saved& saved, IStream& stream);

// Properties that are absent keep the value of `defaults`; one of a wrong kind is refused.
Saved readSaved(IPropertyBag& bag, IErrorLog* log, const Saved& defaults);
void writeSaved(const Saved& saved, IPropertyBag& bag);

// The one stream in a storage.
Saved readSaved(IStorage& storage);
void writeSaved(const Saved& saved, IStorage& storage);

}  // namespace ocx
