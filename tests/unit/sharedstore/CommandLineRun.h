// tessaline-store as a test calls it.
#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "storetool/CommandLine.h"

struct Outcome {
  int code = -1;
  std::string out;
  std::string err;
};

inline Outcome runStoreTool(const std::vector<std::string>& arguments) {
  std::ostringstream out;
  std::ostringstream err;
  const int code = storetool::runCommandLine(arguments, out, err, false);
  return {code, out.str(), err.str()};
}
