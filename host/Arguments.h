// The command line of the demo host.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

namespace host {

struct Arguments {
  // The store's file, or a server's by "odbc:"; "" for the one that was opened last, or the one
  // that the user then chooses.
  std::string store;
  bool create = false;  // the store is to be made first
  long rights = 2;      // level of the right to edit: 2 is full rights, anything else consultation
  std::string record;   // file that the host's doings are written to, "" for none
};

// The command line asks for no start: it is wrong, or asks for help.
class NoStart : public std::runtime_error {
 public:
  NoStart(int exitCode, const std::string& text) : std::runtime_error(text), exitCode_(exitCode) {}
  int exitCode() const { return exitCode_; }

 private:
  int exitCode_;
};

// The words without the program's own name, UTF-8. Throws NoStart: 0 with the help text, 2 with
// what is wrong.
Arguments parseArguments(std::vector<std::string> words);

}  // namespace host
