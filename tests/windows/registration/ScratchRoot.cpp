#include "tests/windows/registration/ScratchRoot.h"

#include "com/ComBorder.h"

namespace {

constexpr const wchar_t* kScratch = L"Software\\TessalineScratch\\";

void collect(HKEY key, const std::wstring& path, std::map<std::wstring, std::wstring>& all) {
  constexpr DWORD kLongest = 16384;
  for (DWORD index = 0;; ++index) {
    std::wstring name(kLongest, L'\0');
    std::wstring data(kLongest, L'\0');
    DWORD length = kLongest;
    auto bytes = static_cast<DWORD>(kLongest * sizeof(wchar_t));
    if (RegEnumValueW(key, index, name.data(), &length, nullptr, nullptr,
                      reinterpret_cast<BYTE*>(data.data()), &bytes) != ERROR_SUCCESS) {
      break;
    }
    all[path + L"|" + name.substr(0, length)] = data.substr(0, bytes / sizeof(wchar_t));
  }
  for (DWORD index = 0;; ++index) {
    std::wstring name(kLongest, L'\0');
    DWORD length = kLongest;
    if (RegEnumKeyExW(key, index, name.data(), &length, nullptr, nullptr, nullptr, nullptr) !=
        ERROR_SUCCESS) {
      break;
    }
    const std::wstring below = path + name.substr(0, length) + L"\\";
    all[below];
    HKEY child = nullptr;
    if (RegOpenKeyExW(key, name.c_str(), 0, KEY_READ, &child) == ERROR_SUCCESS) {
      collect(child, below, all);
      RegCloseKey(child);
    }
  }
}

}  // namespace

ScratchRoot::ScratchRoot(const std::wstring& name)
    : path_(kScratch + name), registry_(HKEY_CURRENT_USER, path_) {
  RegDeleteTreeW(HKEY_CURRENT_USER, path_.c_str());
  HKEY root = nullptr;
  RegCreateKeyExW(HKEY_CURRENT_USER, path_.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &root,
                  nullptr);
  RegCloseKey(root);
}

ScratchRoot::~ScratchRoot() { RegDeleteTreeW(HKEY_CURRENT_USER, path_.c_str()); }

void ScratchRoot::refuseFrom(int change, HRESULT code) {
  changes_ = 0;
  refused_ = change;
  onlyOne_ = false;
  code_ = code;
}

void ScratchRoot::refuseOnly(int change) {
  refuseFrom(change);
  onlyOne_ = true;
}

void ScratchRoot::change() {
  ++changes_;
  if (refused_ != 0 && (onlyOne_ ? changes_ == refused_ : changes_ >= refused_)) {
    throw com::Error(code_, "refused");
  }
}

std::map<std::wstring, std::wstring> ScratchRoot::contents() {
  std::map<std::wstring, std::wstring> all;
  HKEY root = nullptr;
  if (RegOpenKeyExW(HKEY_CURRENT_USER, path_.c_str(), 0, KEY_READ, &root) == ERROR_SUCCESS) {
    collect(root, L"", all);
    RegCloseKey(root);
  }
  return all;
}

void ScratchRoot::putText(const std::wstring& key, const std::wstring& name,
                          const std::wstring& text) {
  registry_.create(key);
  registry_.write(key, name, com::registryText(text));
}

void ScratchRoot::create(const std::wstring& key) {
  change();
  registry_.create(key);
}

void ScratchRoot::eraseIfEmpty(const std::wstring& key) {
  change();
  registry_.eraseIfEmpty(key);
}

std::vector<std::wstring> ScratchRoot::names(const std::wstring& key) {
  return registry_.names(key);
}

std::optional<com::RegistryValue> ScratchRoot::read(const std::wstring& key,
                                                    const std::wstring& name) {
  return registry_.read(key, name);
}

void ScratchRoot::write(const std::wstring& key, const std::wstring& name,
                        const com::RegistryValue& value) {
  change();
  registry_.write(key, name, value);
}

void ScratchRoot::erase(const std::wstring& key, const std::wstring& name) {
  change();
  registry_.erase(key, name);
}
