#include <unistd.h>

#include <iostream>

#include "storetool/CommandLine.h"

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
  return storetool::runCommandLine(arguments, std::cout, std::cerr, isatty(STDERR_FILENO) != 0);
}
