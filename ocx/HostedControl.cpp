#include "ocx/HostedControl.h"

#include <vector>

namespace ocx {

using Microsoft::WRL::ComPtr;

void HostedControl::tellInfoChanged() {
  const ComPtr<IOleControlSite> site = place_.controlSite();
  if (infoChanged_ && site != nullptr && place_.active()) {
    infoChanged_ = false;
    site->OnControlInfoChanged();
  }
}

// Each letter in both cases: IsAccelerator tells them apart.
HACCEL HostedControl::tableOf(const std::vector<char32_t>& letters) {
  const auto known = tables_.find(letters);
  if (known != tables_.end()) return known->second.get();
  std::vector<ACCEL> keys;
  for (const char32_t letter : letters) {
    const auto upper = static_cast<WORD>(letter);
    const auto lower = static_cast<WORD>(
        reinterpret_cast<ULONG_PTR>(CharLowerW(reinterpret_cast<LPWSTR>(ULONG_PTR{upper}))));
    keys.push_back({FALT, upper, static_cast<WORD>(keys.size() + 1)});
    keys.push_back({FALT, lower, static_cast<WORD>(keys.size() + 1)});
  }
  const HACCEL table = CreateAcceleratorTableW(keys.data(), static_cast<int>(keys.size()));
  if (table != nullptr) tables_[letters].reset(table);
  return table;
}

HRESULT HostedControl::giveControlInfo(CONTROLINFO* information) {
  if (information == nullptr) return E_POINTER;
  const std::vector<char32_t> letters = surface_.mnemonics();
  information->hAccel = letters.empty() ? nullptr : tableOf(letters);
  information->cAccel =
      static_cast<USHORT>(information->hAccel == nullptr ? 0 : 2 * letters.size());
  information->dwFlags = CTRLINFO_EATS_RETURN;
  if (surface_.cancelable()) information->dwFlags |= CTRLINFO_EATS_ESCAPE;
  return S_OK;
}

HRESULT HostedControl::mnemonic(const MSG* message) {
  if (message == nullptr) return E_POINTER;
  place_.mnemonic(static_cast<char32_t>(message->wParam));
  return S_OK;
}

HRESULT HostedControl::ambientsChanged() {
  place_.readAmbients();
  view_.changed();
  return S_OK;
}

}  // namespace ocx
