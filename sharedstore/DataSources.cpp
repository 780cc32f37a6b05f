#include "sharedstore/DataSources.h"

#ifdef _WIN32
#include <windows.h>
#endif
#include <odbcinst.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

#include "text/Utf8.h"

namespace sharedstore {

namespace {

std::vector<SQLWCHAR> zeroEnded(const std::string& utf8) {
  const std::u16string units = text::toUtf16(utf8);
  std::vector<SQLWCHAR> wide(units.begin(), units.end());
  wide.push_back(0);
  return wide;
}

}  // namespace

std::string dataSourceSetting(const std::string& source, const std::string& setting) {
  const std::vector<SQLWCHAR> section = zeroEnded(source);
  const std::vector<SQLWCHAR> name = zeroEnded(setting);
  const std::vector<SQLWCHAR> nothing = zeroEnded("");
  const std::vector<SQLWCHAR> file = zeroEnded("odbc.ini");
  std::array<SQLWCHAR, 4096> value{};
  SQLGetPrivateProfileStringW(section.data(), name.data(), nothing.data(), value.data(),
                              static_cast<int>(value.size()), file.data());
  const auto end = std::find(value.begin(), value.end() - 1, SQLWCHAR{0});
  return text::fromUtf16(std::u16string(value.begin(), end));
}

}  // namespace sharedstore
