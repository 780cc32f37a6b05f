// The command line of a local store.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace storetool {

// What tessaline-store gives back to the shell.
enum ExitCode : int {
  kDone = 0,
  kNothingFound = 1,  // show: no record has the identifier
  kWrongUsage = 2,    // unknown command or option, argument missing
  kBadRecord = 3,     // a line that cannot be imported, a record that cannot be exported
  kRefused = 4,       // unknown file, bad sentence, a value the store cannot hold
  kStoreBusy = 5,     // another process held the store too long
  kCannotAccess = 6,  // the store or a file cannot be read or written
  kFaulty = 7,        // the store is not whole
};

// Runs one command; arguments are UTF-8, without the program's name. `progress` shows a bar on the
// error stream.
int runCommandLine(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err,
                   bool progress);

}  // namespace storetool
