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

HRESULT HostedControl::giveControlInfo(CONTROLINFO* information) {
  if (information == nullptr) return E_POINTER;
  std::vector<ACCEL> keys;
  for (const char32_t letter : surface_.mnemonics()) {
    const auto upper = static_cast<WORD>(letter);
    const auto lower = static_cast<WORD>(
        reinterpret_cast<ULONG_PTR>(CharLowerW(reinterpret_cast<LPWSTR>(ULONG_PTR{upper}))));
    keys.push_back({FALT, upper, static_cast<WORD>(keys.size() + 1)});
    keys.push_back({FALT, lower, static_cast<WORD>(keys.size() + 1)});
  }
  const auto count = static_cast<USHORT>(keys.size());
  mnemonics_.reset(keys.empty() ? nullptr : CreateAcceleratorTableW(keys.data(), count));
  information->hAccel = mnemonics_.get();
  information->cAccel = mnemonics_ == nullptr ? USHORT{0} : count;
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
