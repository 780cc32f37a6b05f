#include "com/Registry.h"

#include "com/ComBorder.h"

namespace com {

namespace {

void checkWin32(LSTATUS status, const char* what) {
  if (status != ERROR_SUCCESS) throw Error(HRESULT_FROM_WIN32(static_cast<DWORD>(status)), what);
}

class Key {
 public:
  Key() = default;
  Key(const Key&) = delete;
  Key& operator=(const Key&) = delete;
  ~Key() {
    if (key_ != nullptr) RegCloseKey(key_);
  }
  HKEY get() const { return key_; }
  HKEY* out() { return &key_; }

 private:
  HKEY key_ = nullptr;
};

}  // namespace

bool WindowsRegistry::exists(const std::wstring& key) {
  Key found;
  const LSTATUS status = RegOpenKeyExW(hive_, below(key).c_str(), 0, KEY_READ, found.out());
  if (status != ERROR_FILE_NOT_FOUND) checkWin32(status, "a registry key cannot be opened");
  return status == ERROR_SUCCESS;
}

void WindowsRegistry::create(const std::wstring& key) {
  Key created;
  checkWin32(RegCreateKeyExW(hive_, below(key).c_str(), 0, nullptr, 0, KEY_WRITE, nullptr,
                             created.out(), nullptr),
             "a registry key cannot be created");
}

void WindowsRegistry::eraseIfEmpty(const std::wstring& key) {
  DWORD keys = 0;
  DWORD values = 0;
  {
    Key found;
    const LSTATUS status = RegOpenKeyExW(hive_, below(key).c_str(), 0, KEY_READ, found.out());
    if (status == ERROR_FILE_NOT_FOUND) return;
    checkWin32(status, "a registry key cannot be opened");
    checkWin32(RegQueryInfoKeyW(found.get(), nullptr, nullptr, nullptr, &keys, nullptr, nullptr,
                                &values, nullptr, nullptr, nullptr, nullptr),
               "a registry key cannot be read");
  }
  if (keys == 0 && values == 0) {
    checkWin32(RegDeleteKeyW(hive_, below(key).c_str()), "a registry key cannot be removed");
  }
}

std::vector<std::wstring> WindowsRegistry::names(const std::wstring& key) {
  constexpr DWORD kLongestName = 16384;
  Key found;
  checkWin32(RegOpenKeyExW(hive_, below(key).c_str(), 0, KEY_READ, found.out()),
             "a registry key cannot be opened");
  std::vector<std::wstring> names;
  for (DWORD index = 0;; ++index) {
    std::wstring name(kLongestName, L'\0');
    DWORD length = kLongestName;
    const LSTATUS status =
        RegEnumValueW(found.get(), index, name.data(), &length, nullptr, nullptr, nullptr, nullptr);
    if (status == ERROR_NO_MORE_ITEMS) return names;
    checkWin32(status, "a registry key cannot be read");
    names.push_back(name.substr(0, length));
  }
}

std::optional<RegistryValue> WindowsRegistry::read(const std::wstring& key,
                                                   const std::wstring& name) {
  Key found;
  LSTATUS status = RegOpenKeyExW(hive_, below(key).c_str(), 0, KEY_READ, found.out());
  if (status == ERROR_FILE_NOT_FOUND) return std::nullopt;
  checkWin32(status, "a registry key cannot be opened");
  RegistryValue value;
  DWORD size = 0;
  status = RegQueryValueExW(found.get(), name.c_str(), nullptr, &value.type, nullptr, &size);
  if (status == ERROR_FILE_NOT_FOUND) return std::nullopt;
  checkWin32(status, "a registry value cannot be read");
  value.data.resize(size);
  checkWin32(
      RegQueryValueExW(found.get(), name.c_str(), nullptr, &value.type, value.data.data(), &size),
      "a registry value cannot be read");
  value.data.resize(size);
  return value;
}

void WindowsRegistry::write(const std::wstring& key, const std::wstring& name,
                            const RegistryValue& value) {
  Key found;
  checkWin32(RegOpenKeyExW(hive_, below(key).c_str(), 0, KEY_WRITE, found.out()),
             "a registry key cannot be opened");
  checkWin32(RegSetValueExW(found.get(), name.c_str(), 0, value.type, value.data.data(),
                            static_cast<DWORD>(value.data.size())),
             "a registry value cannot be written");
}

void WindowsRegistry::erase(const std::wstring& key, const std::wstring& name) {
  Key found;
  LSTATUS status = RegOpenKeyExW(hive_, below(key).c_str(), 0, KEY_WRITE, found.out());
  if (status != ERROR_FILE_NOT_FOUND) {
    checkWin32(status, "a registry key cannot be opened");
    status = RegDeleteValueW(found.get(), name.c_str());
  }
  if (status != ERROR_FILE_NOT_FOUND) checkWin32(status, "a registry value cannot be removed");
}

RegistryValue registryText(const std::wstring& text) {
  const auto* bytes = reinterpret_cast<const BYTE*>(text.c_str());
  return {REG_SZ, {bytes, bytes + (text.size() + 1) * sizeof(wchar_t)}};
}

std::wstring textOf(const RegistryValue& value) {
  std::wstring text;
  for (std::size_t at = 0; at + 1 < value.data.size(); at += sizeof(wchar_t)) {
    text += static_cast<wchar_t>(value.data[at] | (value.data[at + 1] << 8));
  }
  while (!text.empty() && text.back() == L'\0') text.pop_back();
  return text;
}

}  // namespace com
