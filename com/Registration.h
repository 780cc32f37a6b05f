// Self-registration as data: a table of keys and values, applied to any root and undone to exactly
// what was there before.
//
// The two widths of a library register themselves beside each other. A table's keys below CLSID and
// Interface, and the type library's key of its platform, are the width's own: undoing it puts them
// back. All other keys (names, the type library itself) are shared: they stay as long as the other
// width is registered, and are put back with the last of the two.
#pragma once

#include <string>
#include <vector>

#include "com/Registry.h"

namespace com {

// One value of a key; without a value, the key alone. Keys are relative to the classes root; the
// empty name is the key's default value.
struct RegistryEntry {
  std::wstring key;
  std::wstring name;
  std::optional<RegistryValue> value;
};

enum class Width { Bits64, Bits32 };
inline constexpr Width kOwnWidth = sizeof(void*) == 8 ? Width::Bits64 : Width::Bits32;
// As type libraries call it: "win64", "win32".
std::wstring platformOf(Width width);

struct RegistryTable {
  // A key of the library's own, directly below the root, that keeps what must come back when the
  // table is undone.
  std::wstring journal;
  std::vector<RegistryEntry> entries;
  std::wstring file;  // the library's full path: whose registration it is
  Width width = kOwnWidth;
};

// Writes the whole table, or nothing: a refusal half-way takes back what was written and is thrown.
// Applied again (from another folder, say), what was there before the first time stays remembered.
void applyTable(RegistryRoot& root, const RegistryTable& table);

// Puts back what was there before the table was applied; a value that somebody else has changed
// since stays. Nothing happens where it was not, or where a copy in another folder has been
// registered since. After a refusal it can be run again.
void undoTable(RegistryRoot& root, const RegistryTable& table);

// Applies the table to the first root that does not refuse access.
void applyToFirst(const std::vector<RegistryRoot*>& roots, const RegistryTable& table);
// Undoes it in each; the first refusal is thrown after all were tried.
void undoInAll(const std::vector<RegistryRoot*>& roots, const RegistryTable& table);

// What a library's DllRegisterServer and DllUnregisterServer do: the machine's classes, the user's
// own when those are refused.
void registerLibrary(const RegistryTable& table);
void unregisterLibrary(const RegistryTable& table);
// What DllInstall does: "user" means the user's own classes alone, nothing (or null) the same as
// above. Error with E_INVALIDARG for any other command line.
void installLibrary(bool install, const wchar_t* commandLine, const RegistryTable& table);

// "{...}"
std::wstring guidText(const GUID& guid);

// The entries that tell of a type library: its file, its version ("1.0"), the platform's key.
// `flags` are its LIBFLAGS.
std::vector<RegistryEntry> typeLibraryEntries(const GUID& library, const std::wstring& version,
                                              const std::wstring& name, const std::wstring& file,
                                              unsigned flags = 0, Width width = kOwnWidth);
// The entries that let an interface cross apartments by the type library: a dual interface through
// the automation marshaler, a dispinterface through IDispatch's own.
enum class Interface { Dual, Dispatch };
std::vector<RegistryEntry> interfaceEntries(const GUID& interfaceId, const std::wstring& name,
                                            const GUID& library, const std::wstring& version,
                                            Interface kind = Interface::Dual);

}  // namespace com
