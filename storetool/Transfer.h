// Import and export between a store and text files, the format told by the extension: ".jsonl" or
// ".csv". A text file is named after the store file it goes into.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "multivalue/Database.h"
#include "storetool/TextFormat.h"

namespace storetool {

// Told now and then what part of the work is done, from 0 to 1.
using ProgressListener = std::function<void(double done)>;

struct Imported {
  long long records = 0;
  std::vector<std::string> newFiles;  // of the store, in the order of their import
};

// Imports files, and of folders all files with one of the extensions, sorted by name. Store files
// that do not exist are created; records that exist are replaced. All is done in one transaction:
// when anything throws, nothing has been imported. A text file is never in memory as a whole.
// Throws FormatError ("path, line 3: ...") and StoreError.
Imported importFiles(multivalue::Database& database, const std::vector<std::string>& paths,
                     const ProgressListener& listener, const TextFormat& format = {});

// Writes a store file's records in the order of their keys, one in memory at a time. Gives their
// number. The file gets its name when it is whole; until then, and when anything throws, one that
// is there stays. Throws FormatError and StoreError.
long long exportFile(multivalue::Database& database, std::string_view file, const std::string& path,
                     const ProgressListener& listener, const TextFormat& format = {});

}  // namespace storetool
