#include "com/Registration.h"

#include <ole2.h>

#include <algorithm>
#include <map>

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

namespace {

// What was there before: keys that were not, and each value's former contents.
struct Before {
  std::vector<std::wstring> created;  // parents first
  std::map<std::pair<std::wstring, std::wstring>, std::optional<RegistryValue>> values;
};

// The journal as it stands in the registry: its default value lists the created keys; a value named
// "=key|name" holds the former contents, "+key|name" says that there were none.
constexpr wchar_t kFormer = L'=';
constexpr wchar_t kNone = L'+';

RegistryValue listValue(const std::vector<std::wstring>& texts) {
  std::wstring all;
  for (const std::wstring& text : texts) {
    all += text;
    all += L'\0';
  }
  RegistryValue value = registryText(all);
  value.type = REG_MULTI_SZ;
  return value;
}

std::vector<std::wstring> textsOf(const RegistryValue& value) {
  std::vector<std::wstring> texts;
  std::wstring text;
  for (std::size_t at = 0; at + 1 < value.data.size(); at += sizeof(wchar_t)) {
    const auto unit = static_cast<wchar_t>(value.data[at] | (value.data[at + 1] << 8));
    if (unit != L'\0') {
      text += unit;
    } else if (!text.empty()) {
      texts.push_back(std::move(text));
      text.clear();
    }
  }
  return texts;
}

Before readJournal(RegistryRoot& root, const std::wstring& journal) {
  Before before;
  if (!root.exists(journal)) return before;
  for (const std::wstring& name : root.names(journal)) {
    const std::optional<RegistryValue> value = root.read(journal, name);
    if (!value) continue;
    const std::size_t bar = name.rfind(L'|');
    if (name.empty()) {
      before.created = textsOf(*value);
    } else if (bar != std::wstring::npos) {
      before.values[{name.substr(1, bar - 1), name.substr(bar + 1)}] =
          name.front() == kFormer ? value : std::nullopt;
    }
  }
  return before;
}

void writeJournal(RegistryRoot& root, const std::wstring& journal, const Before& before) {
  root.write(journal, L"", listValue(before.created));
  for (const auto& [place, former] : before.values) {
    const wchar_t mark = former ? kFormer : kNone;
    root.write(journal, mark + place.first + L"|" + place.second,
               former.value_or(RegistryValue{REG_NONE, {}}));
  }
}

void noteKey(RegistryRoot& root, const std::wstring& key, std::vector<std::wstring>& created) {
  for (std::size_t end = key.find(L'\\');; end = key.find(L'\\', end + 1)) {
    const std::wstring part = key.substr(0, end);
    if (std::find(created.begin(), created.end(), part) == created.end() && !root.exists(part)) {
      created.push_back(part);
    }
    if (end == std::wstring::npos) return;
  }
}

Before look(RegistryRoot& root, const RegistryTable& table) {
  Before before = readJournal(root, table.journal);
  for (const RegistryEntry& entry : table.entries) {
    noteKey(root, entry.key, before.created);
    const std::pair place(entry.key, entry.name);
    if (entry.value && !before.values.contains(place)) {
      before.values[place] = root.read(entry.key, entry.name);
    }
  }
  return before;
}

void createMissing(RegistryRoot& root, const std::vector<std::wstring>& keys) {
  for (const std::wstring& key : keys) {
    if (!root.exists(key)) root.create(key);
  }
}

// The journal goes after everything else, so that a refusal leaves it for the next attempt.
void putBack(RegistryRoot& root, const std::wstring& journal, const Before& before) {
  for (const auto& [place, former] : before.values) {
    if (former) {
      root.write(place.first, place.second, *former);
    } else {
      root.erase(place.first, place.second);
    }
  }
  for (auto key = before.created.rbegin(); key != before.created.rend(); ++key) {
    root.eraseIfEmpty(*key);
  }
  if (root.exists(journal)) {
    for (const std::wstring& name : root.names(journal)) root.erase(journal, name);
    root.eraseIfEmpty(journal);
  }
}

void takeBack(RegistryRoot& root, const std::wstring& journal, const Before& before) noexcept {
  try {
    putBack(root, journal, before);
  } catch (const Error&) {
    // What refused the table may refuse this too; the journal stays where it could be written.
    return;
  }
}

void write(RegistryRoot& root, const RegistryTable& table, const Before& before) {
  createMissing(root, {table.journal});
  writeJournal(root, table.journal, before);
  createMissing(root, before.created);
  for (const RegistryEntry& entry : table.entries) {
    if (entry.value) root.write(entry.key, entry.name, *entry.value);
  }
}

}  // namespace

void applyTable(RegistryRoot& root, const RegistryTable& table) {
  const Before before = look(root, table);
  try {
    write(root, table, before);
  } catch (const Error&) {
    takeBack(root, table.journal, before);
    throw;
  }
}

void undoTable(RegistryRoot& root, const RegistryTable& table) {
  if (root.exists(table.journal)) putBack(root, table.journal, readJournal(root, table.journal));
}

void applyToFirst(const std::vector<RegistryRoot*>& roots, const RegistryTable& table) {
  for (RegistryRoot* root : roots) {
    try {
      applyTable(*root, table);
      return;
    } catch (const Error& refusal) {
      if (refusal.code() != E_ACCESSDENIED || root == roots.back()) throw;
    }
  }
}

void undoInAll(const std::vector<RegistryRoot*>& roots, const RegistryTable& table) {
  std::exception_ptr first;
  for (RegistryRoot* root : roots) {
    try {
      undoTable(*root, table);
    } catch (const Error&) {
      first = first ? first : std::current_exception();
    }
  }
  if (first) std::rethrow_exception(first);
}

void registerLibrary(const RegistryTable& table) {
  WindowsRegistry machine(HKEY_LOCAL_MACHINE, L"Software\\Classes");
  WindowsRegistry user(HKEY_CURRENT_USER, L"Software\\Classes");
  applyToFirst({&machine, &user}, table);
}

void unregisterLibrary(const RegistryTable& table) {
  WindowsRegistry machine(HKEY_LOCAL_MACHINE, L"Software\\Classes");
  WindowsRegistry user(HKEY_CURRENT_USER, L"Software\\Classes");
  undoInAll({&machine, &user}, table);
}

std::wstring guidText(const GUID& guid) {
  constexpr int kLength = 39;
  std::wstring text(kLength, L'\0');
  text.resize(static_cast<std::size_t>(StringFromGUID2(guid, text.data(), kLength) - 1));
  return text;
}

namespace {

// The type library marshaler of Windows.
constexpr const wchar_t* kAutomationMarshaler = L"{00020424-0000-0000-C000-000000000046}";
constexpr const wchar_t* kPlatform = sizeof(void*) == 8 ? L"win64" : L"win32";

}  // namespace

std::vector<RegistryEntry> typeLibraryEntries(const GUID& library, const std::wstring& version,
                                              const std::wstring& name, const std::wstring& file) {
  const std::wstring key = L"TypeLib\\" + guidText(library) + L"\\" + version;
  const std::wstring folder = file.substr(0, file.find_last_of(L'\\'));
  return {{key, L"", registryText(name)},
          {key + L"\\FLAGS", L"", registryText(L"0")},
          {key + L"\\0\\" + kPlatform, L"", registryText(file)},
          {key + L"\\HELPDIR", L"", registryText(folder)}};
}

std::vector<RegistryEntry> interfaceEntries(const GUID& interfaceId, const std::wstring& name,
                                            const GUID& library, const std::wstring& version) {
  const std::wstring key = L"Interface\\" + guidText(interfaceId);
  return {{key, L"", registryText(name)},
          {key + L"\\ProxyStubClsid32", L"", registryText(kAutomationMarshaler)},
          {key + L"\\TypeLib", L"", registryText(guidText(library))},
          {key + L"\\TypeLib", L"Version", registryText(version)}};
}

}  // namespace com
