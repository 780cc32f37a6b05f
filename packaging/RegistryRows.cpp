// registry_rows x64|x86: what the two libraries of that width write to the registry. A line a
// row: library, "shared" or "own" of the width, key, value's name, value, separated by tabs; the
// value is "-" for a key alone. The folder that the libraries stand in is called {FOLDER}.
#include <cstdio>
#include <stdexcept>
#include <string>
#include <string_view>

#include "com/ComBorder.h"
#include "com/Module.h"
#include "com/Registration.h"
#include "com/RegistrationJournal.h"
#include "com/Variant.h"
#include "ocx/ControlRegistration.h"
#include "storecom/StoreRegistration.h"

namespace com {
const wchar_t* errorSource() { return L"registry_rows"; }
}  // namespace com

namespace {

std::string valueOf(const com::RegistryEntry& entry) {
  if (!entry.value) return "-";
  if (entry.value->type != REG_SZ) throw std::runtime_error("a value that is no text");
  return com::utf8(com::textOf(*entry.value));
}

void print(const char* library, const com::RegistryTable& table) {
  for (const com::RegistryEntry& entry : table.entries) {
    std::printf("%s\t%s\t%s\t%s\t%s\n", library, com::isShared(entry.key) ? "shared" : "own",
                com::utf8(entry.key).c_str(), com::utf8(entry.name).c_str(),
                valueOf(entry).c_str());
  }
}

}  // namespace

int main(int count, char** words) {
  const std::string_view asked = count == 2 ? words[1] : "";
  if (asked != "x64" && asked != "x86") {
    std::fputs("usage: registry_rows x64|x86\n", stderr);
    return 2;
  }
  const com::Width width = asked == "x64" ? com::Width::Bits64 : com::Width::Bits32;
  try {
    print("Tessaline.ocx", ocx::controlTable(L"{FOLDER}\\Tessaline.ocx", width));
    print("TessalineStore.dll", storecom::storeTable(L"{FOLDER}\\TessalineStore.dll", width));
    return 0;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
    return 1;
  }
}
