#include "tests/windows/container/Sinks.h"

#include "tests/windows/container/BoxWatcher.h"

namespace container {

std::string EventSink::toldOf(DISPID id, const DISPPARAMS& given) {
  std::string told = std::to_string(id);
  for (UINT i = given.cArgs; i > 0; --i) {
    const VARIANT& argument = given.rgvarg[i - 1];
    told += ' ';
    switch (argument.vt) {
      case VT_BSTR:
        told += narrow(argument.bstrVal == nullptr ? L"" : argument.bstrVal);
        break;
      case VT_BOOL:
        told += argument.boolVal != VARIANT_FALSE ? "true" : "false";
        break;
      case VT_I4:
        told += std::to_string(argument.lVal);
        break;
      default:
        told += "type " + std::to_string(argument.vt);
        break;
    }
  }
  return told;
}

}  // namespace container
