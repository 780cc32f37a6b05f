// What a registration remembers in the registry, so that it can be undone.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "com/Registry.h"

namespace com {

using RegistryPlace = std::pair<std::wstring, std::wstring>;  // a key, and a value's name

struct Journal {
  std::vector<std::wstring> created;  // keys that were not there before, parents first
  // What stood there before; nothing where there was no value.
  std::map<RegistryPlace, std::optional<RegistryValue>> former;
  // What has been written; an older version has not noted it.
  std::map<RegistryPlace, RegistryValue> written;
  std::wstring file;  // of the copy that was registered last; "" when an older version did
};

// Both widths of a library register themselves below one root. Of what they share one journal tells
// what was there before the first of them; each width has one for what is its own, which also tells
// what it has written, shared or not.
struct Journals {
  Journal shared;
  std::map<std::wstring, Journal> own;  // by platform, of the widths that are registered
};

inline constexpr const wchar_t* kPlatforms[] = {L"win64", L"win32"};

// Whose is a key? Of 64-bit Windows each width has a CLSID and an Interface of its own, while names
// and type libraries are shared, but for the key of the platform that holds the library's file.
bool isShared(std::wstring_view key);
// Is it the library's file of that other width?
bool isOfPlatform(std::wstring_view key, std::wstring_view platform);

// Of an older version, which kept all in one journal, too: taken apart by the platforms named in
// it.
Journals readJournals(RegistryRoot& root, const std::wstring& key);
// Also removes what is there and not in them.
void writeJournals(RegistryRoot& root, const std::wstring& key, const Journals& journals);

}  // namespace com
