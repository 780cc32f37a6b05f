// Self-registration as data: a table of keys and values, applied to any root and undone to exactly
// what was there before.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

namespace com {

struct RegistryValue {
  DWORD type = REG_SZ;
  std::vector<BYTE> data;
  bool operator==(const RegistryValue&) const = default;
};

RegistryValue registryText(const std::wstring& text);

// One value of a key; without a value, the key alone. Keys are relative to the classes root; the
// empty name is the key's default value.
struct RegistryEntry {
  std::wstring key;
  std::wstring name;
  std::optional<RegistryValue> value;
};

struct RegistryTable {
  // A key of the library's own, directly below the root, that keeps what must come back when the
  // table is undone.
  std::wstring journal;
  std::vector<RegistryEntry> entries;
};

// A classes root. Every function throws Error with the registry's code when it is refused
// (E_ACCESSDENIED above all).
class RegistryRoot {
 public:
  RegistryRoot() = default;
  RegistryRoot(const RegistryRoot&) = delete;
  RegistryRoot& operator=(const RegistryRoot&) = delete;
  virtual ~RegistryRoot() = default;

  virtual bool exists(const std::wstring& key) = 0;
  virtual void create(const std::wstring& key) = 0;  // its parent exists
  // Removes a key that holds neither values nor keys; any other stays.
  virtual void eraseIfEmpty(const std::wstring& key) = 0;
  virtual std::vector<std::wstring> names(const std::wstring& key) = 0;
  virtual std::optional<RegistryValue> read(const std::wstring& key, const std::wstring& name) = 0;
  virtual void write(const std::wstring& key, const std::wstring& name,
                     const RegistryValue& value) = 0;  // the key exists
  virtual void erase(const std::wstring& key, const std::wstring& name) = 0;
};

// The registry below a key of Windows ("Software\\Classes").
class WindowsRegistry final : public RegistryRoot {
 public:
  WindowsRegistry(HKEY hive, std::wstring path) : hive_(hive), path_(std::move(path)) {}

  bool exists(const std::wstring& key) override;
  void create(const std::wstring& key) override;
  void eraseIfEmpty(const std::wstring& key) override;
  std::vector<std::wstring> names(const std::wstring& key) override;
  std::optional<RegistryValue> read(const std::wstring& key, const std::wstring& name) override;
  void write(const std::wstring& key, const std::wstring& name,
             const RegistryValue& value) override;
  void erase(const std::wstring& key, const std::wstring& name) override;

 private:
  std::wstring below(const std::wstring& key) const { return path_ + L"\\" + key; }

  HKEY hive_;
  std::wstring path_;
};

// Writes the whole table, or nothing: a refusal half-way takes back what was written and is thrown.
// Applied again (from another folder, say), what was there before the first time stays remembered.
void applyTable(RegistryRoot& root, const RegistryTable& table);

// Puts back what was there before the table was applied. Nothing happens where it was not.
// After a refusal it can be run again.
void undoTable(RegistryRoot& root, const RegistryTable& table);

// Applies the table to the first root that does not refuse access.
void applyToFirst(const std::vector<RegistryRoot*>& roots, const RegistryTable& table);
// Undoes it in each; the first refusal is thrown after all were tried.
void undoInAll(const std::vector<RegistryRoot*>& roots, const RegistryTable& table);

// What a library's DllRegisterServer and DllUnregisterServer do: the machine's classes, the user's
// own when those are refused.
void registerLibrary(const RegistryTable& table);
void unregisterLibrary(const RegistryTable& table);

// "{...}"
std::wstring guidText(const GUID& guid);

// The entries that tell of a type library: its file, its version ("1.0"), the platform's key.
std::vector<RegistryEntry> typeLibraryEntries(const GUID& library, const std::wstring& version,
                                              const std::wstring& name, const std::wstring& file);
// The entries that let its dual interface cross apartments through the automation marshaler.
std::vector<RegistryEntry> interfaceEntries(const GUID& interfaceId, const std::wstring& name,
                                            const GUID& library, const std::wstring& version);

}  // namespace com
