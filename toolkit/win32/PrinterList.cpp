#include "toolkit/win32/PrinterList.h"

#include <winspool.h>

#include "toolkit/win32/WideText.h"

namespace toolkit::win32 {

std::vector<PrinterInfo> systemPrinters() {
  constexpr DWORD kWhich = PRINTER_ENUM_LOCAL | PRINTER_ENUM_CONNECTIONS;
  DWORD needed = 0;
  DWORD count = 0;
  EnumPrintersW(kWhich, nullptr, 2, nullptr, 0, &needed, &count);
  if (needed == 0) return {};
  // Structures, then the texts they point to.
  std::vector<PRINTER_INFO_2W> room(needed / sizeof(PRINTER_INFO_2W) + 1);
  const auto size = static_cast<DWORD>(room.size() * sizeof(PRINTER_INFO_2W));
  if (!EnumPrintersW(kWhich, nullptr, 2, reinterpret_cast<BYTE*>(room.data()), size, &needed,
                     &count)) {
    return {};
  }
  std::vector<PrinterInfo> printers;
  for (DWORD i = 0; i < count; ++i) {
    const PRINTER_INFO_2W& printer = room[i];
    printers.push_back({narrow(printer.pPrinterName ? printer.pPrinterName : L""),
                        narrow(printer.pPortName ? printer.pPortName : L"")});
  }
  return printers;
}

std::wstring defaultPrinterName() {
  DWORD length = 0;
  GetDefaultPrinterW(nullptr, &length);
  if (length == 0) return {};
  std::wstring name(length, L'\0');
  if (!GetDefaultPrinterW(name.data(), &length)) return {};
  name.resize(length - 1);
  return name;
}

}  // namespace toolkit::win32
