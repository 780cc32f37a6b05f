#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

#include "toolkit/Desktop.h"

namespace toolkit::win32 {

// The system's printers with their ports, in its order.
std::vector<PrinterInfo> systemPrinters();

// The name of the system's default printer; empty when there is none.
std::wstring defaultPrinterName();

// A printer in the system's GDI, measured at its own resolution. Throws std::runtime_error when the
// system refuses it.
std::unique_ptr<Printer> makeGdiPrinter(const std::string& deviceName);

}  // namespace toolkit::win32
