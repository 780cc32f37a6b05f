// A classes root of the registry, as far as a registration needs one.
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
// The characters of a text, those that end it left out.
std::wstring textOf(const RegistryValue& value);

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

}  // namespace com
