#include <windows.h>

#include <io.h>

#include <iostream>

#include "storetool/CommandLine.h"
#include "text/Utf8.h"

// Arguments come as UTF-16 and are UTF-8 from here on, on the console too.
extern "C" int wmain(int argc, wchar_t** argv) {
  SetConsoleOutputCP(CP_UTF8);
  std::vector<std::string> arguments;
  for (int i = 1; i < argc; ++i) {
    const std::wstring_view argument(argv[i]);
    arguments.push_back(text::fromUtf16(std::u16string(argument.begin(), argument.end())));
  }
  return storetool::runCommandLine(arguments, std::cout, std::cerr, _isatty(2) != 0);
}
