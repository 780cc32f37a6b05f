#include "host/StoreChoice.h"

#include <commdlg.h>

#include <vector>

namespace host {

StoreChoice chooseStore(HWND owner) {
  constexpr std::size_t kLongest = 32768;
  std::vector<wchar_t> path(kLongest);
  OPENFILENAMEW dialog{};
  dialog.lStructSize = sizeof dialog;
  dialog.hwndOwner = owner;
  dialog.lpstrTitle = L"Ouvrir ou créer un magasin";
  dialog.lpstrFilter = L"Magasins (*.store)\0*.store\0Tous les fichiers\0*.*\0";
  dialog.lpstrDefExt = L"store";
  dialog.lpstrFile = path.data();
  dialog.nMaxFile = static_cast<DWORD>(path.size());
  dialog.Flags =
      OFN_EXPLORER | OFN_CREATEPROMPT | OFN_PATHMUSTEXIST | OFN_NOCHANGEDIR | OFN_HIDEREADONLY;
  if (GetOpenFileNameW(&dialog) == FALSE) return {};
  return {path.data(), GetFileAttributesW(path.data()) == INVALID_FILE_ATTRIBUTES};
}

}  // namespace host
