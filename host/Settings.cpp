#include "host/Settings.h"

#include <array>

namespace host {

namespace {

constexpr const wchar_t* kKey = L"Software\\Tessaline\\Démonstration";
constexpr const wchar_t* kStore = L"Magasin";
constexpr const wchar_t* kPlacement = L"Fenêtre";

}  // namespace

std::wstring Settings::store() const {
  std::array<wchar_t, 2048> text{};
  DWORD size = sizeof text;
  if (RegGetValueW(HKEY_CURRENT_USER, kKey, kStore, RRF_RT_REG_SZ, nullptr, text.data(), &size) !=
      ERROR_SUCCESS) {
    return {};
  }
  return text.data();
}

void Settings::setStore(const std::wstring& address) {
  RegSetKeyValueW(HKEY_CURRENT_USER, kKey, kStore, REG_SZ, address.c_str(),
                  static_cast<DWORD>((address.size() + 1) * sizeof(wchar_t)));
}

std::optional<WINDOWPLACEMENT> Settings::placement() const {
  WINDOWPLACEMENT placement{};
  DWORD size = sizeof placement;
  if (RegGetValueW(HKEY_CURRENT_USER, kKey, kPlacement, RRF_RT_REG_BINARY, nullptr, &placement,
                   &size) != ERROR_SUCCESS ||
      size != sizeof placement || placement.length != sizeof placement) {
    return std::nullopt;
  }
  return placement;
}

void Settings::setPlacement(const WINDOWPLACEMENT& placement) {
  RegSetKeyValueW(HKEY_CURRENT_USER, kKey, kPlacement, REG_BINARY, &placement, sizeof placement);
}

}  // namespace host
