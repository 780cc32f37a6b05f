// What child processes do on a store beside a test.
#pragma once

#include <unistd.h>

#include <stdexcept>
#include <string>

#include "multivalue/Database.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/StoreText.h"

// Has begun a transaction and written record "1" of TABLES in it when it sends 1; stays so until it
// is killed.
inline void holdWritten(multivalue::Database& database, const std::string& text, int pipe) {
  const auto transaction = database.begin();
  database.write("TABLES", "1", text);
  send(pipe, 1);
  pause();
}

// Adds 1 to the number that body "001" is, so many times, each by a save of its own that is
// repeated when somebody else has come in between.
inline void countUp(multivalue::Database& database, int rounds) {
  const auto file = database.OpenFile("ORGPRISECHARGE");
  for (int saved = 0; saved < rounds;) {
    const auto record = file->ReadRecord("001");
    record->fields().setText(std::to_string(std::stoi(record->fields().text()) + 1));
    const unsigned code = errorOf([&] { record->DBWrite(); });
    if (code != 0 && code != store::kChanged) throw std::runtime_error("another error");
    saved += code == 0;
  }
}
